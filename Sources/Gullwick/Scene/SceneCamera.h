#pragma once

#include "Engine/Stage/Stage.h"

#include <array>
#include <glm/vec3.hpp>
#include <optional>

namespace gull {

/// The eye of the scene: rests before the plot, flies in when a beach opens, shakes at a dig. GW_CAM, GW_LOOK
/// ("x,y,z") and GW_FOV (degrees) in the environment move it for screenshots.
class SceneCamera {
  public:
    /// Adds the camera to `stage` and makes it the point of view. `stage` must outlive it.
    explicit SceneCamera(Stage& stage);

    /// Fits the distance to a view of this width / height.
    void frame(double aspect);
    /// Where the camera is at scene time `time`.
    void place(double time, double introStart, double shake);
    void setExposure(double stops) { camera_->exposureOffset = stops; }

    const Node& node() const { return node_; }
    const Camera& lens() const { return *camera_; }

    /// The three numbers of an environment variable's text, separated by commas; pieces that are no numbers
    /// are skipped. Nothing unless exactly three are left, none beyond 10000.
    static std::optional<glm::dvec3> parseTriple(const char* text);
    /// The degrees of an environment variable's text; nothing unless all of it is a number between 0 and 180.
    static std::optional<double> parseAngle(const char* text);

  private:
    void readEnvironment();

    Stage& stage_;
    Node& node_;
    std::shared_ptr<Camera> camera_;
    glm::dvec3 look_;
    glm::dvec3 offset_;    ///< the camera from the look point, at the view's aspect
    glm::dvec3 fullView_;  ///< the same for a wide view
};

}  // namespace gull
