#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Stage/Stage.h"

#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>

namespace gull {

/// A camera, its place and the size of its picture.
struct Viewpoint {
    Camera camera;
    glm::dmat4 world{1};  ///< the camera's transform
    glm::dmat4 projection{1};
    glm::dmat4 viewProjection{1};
    glm::dvec3 eye{0};
    PixelSize size;

    /// From the stage's point of view; without one, from a default camera at the origin.
    static Viewpoint of(const Stage& stage, const PixelSize& size);
    /// The same lens at another place.
    Viewpoint standingAt(const glm::dmat4& cameraWorld) const;

    struct Ray {
        glm::dvec3 from, way;  ///< world space; `way` reaches to the far end of the view
    };
    /// The ray through a place of the picture, in pixels from its lower left corner.
    Ray ray(double x, double y) const;

    /// True if any of its rays goes level or upward.
    bool seesHorizon() const;

    /// The pixels that `box`, moved by `model`, may touch: none if all of it lies outside the view, the whole
    /// picture if part of it is behind the eye.
    PixelArea area(const Box& box, const glm::dmat4& model = glm::dmat4(1)) const;
};

}  // namespace gull
