#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Textures.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace gull {

/// The metal detector that follows the finger: a coil that stays close to the sand and leans with the motion,
/// a shaft that points to the player's hand, and a lit ring, a lamp and a glow on the sand that show the
/// signal.
class DetectorRig {
  public:
    /// Adds the rig to `parent`, in the moving layer, showing no signal.
    DetectorRig(Node& parent, Textures& textures);

    /// `at`: the point of the sand under the coil. `velocity`: of the coil, as scaled by the frame step.
    /// `lift`: height above the usual hover height, world units.
    void place(const glm::dvec3& at, const glm::dvec2& velocity, double dt, double lift);
    /// `strength` 0 to 1.
    void setSignal(double strength, const Colour& tint);

    Node& root() { return root_; }

  private:
    void buildCoil(Textures& textures);
    void buildShaft();

    Node& root_;
    Node& tilt_;  ///< the coil, turned to the slope
    Node& yaw_;   ///< the shaft, turned to the player
    Node& glow_;
    std::shared_ptr<Material> led_;
    std::shared_ptr<Material> glowMaterial_;
    std::shared_ptr<Light> light_;
    glm::dvec2 lean_{0, 0};
};

}  // namespace gull
