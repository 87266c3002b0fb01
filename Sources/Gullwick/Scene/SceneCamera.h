#pragma once

#include "Engine/Stage/Stage.h"

#include <array>
#include <glm/vec3.hpp>
#include <optional>

namespace gull {

/// The camera of the scene: it stands before the plot, flies in when a beach opens and shakes at a dig. The
/// environment variables GW_CAM, GW_LOOK ("x,y,z") and GW_FOV (degrees) move it for screenshots.
class SceneCamera {
  public:
    /// Adds the camera to `stage` and makes it the point of view. `stage` must outlive it.
    explicit SceneCamera(Stage& stage);

    /// Fits the distance to a view of this width / height.
    void frame(double aspect);
    /// Moves the camera to its pose at scene time `time`.
    void place(double time, double introStart, double shake);
    void setExposure(double stops) { camera_->exposureOffset = stops; }

    const Node& node() const { return node_; }
    const Camera& lens() const { return *camera_; }

    /// The three comma-separated numbers in the text of an environment variable. Pieces that are not numbers
    /// are skipped. Empty unless exactly three are left, none of them beyond 10000.
    static std::optional<glm::dvec3> parseTriple(const char* text);
    /// The degrees in the text of an environment variable; empty unless all of it is a number from 0 to 180.
    static std::optional<double> parseAngle(const char* text);

  private:
    void readEnvironment();

    Stage& stage_;
    Node& node_;
    std::shared_ptr<Camera> camera_;
    glm::dvec3 look_;
    glm::dvec3 offset_;    ///< from the look point to the camera, for the view's aspect
    glm::dvec3 fullView_;  ///< the same for a wide view
};

}  // namespace gull
