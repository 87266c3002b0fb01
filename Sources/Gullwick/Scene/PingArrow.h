#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Textures.h"

#include <glm/vec3.hpp>

namespace gull {

/// The arrow that appears on the sand for a moment and points toward a treasure.
class PingArrow {
  public:
    /// Adds the arrow to `parent`, hidden, in the moving layer.
    PingArrow(Node& parent, Textures& textures);

    /// Both are points of the sand.
    void show(const glm::dvec3& from, const glm::dvec3& to, double time);
    void update(double time);
    void hide();

  private:
    Node& pivot_;
    Node& arrow_;
    std::shared_ptr<Material> material_;
    double start_ = -100;
};

}  // namespace gull
