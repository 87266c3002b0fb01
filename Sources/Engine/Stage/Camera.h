#pragma once

#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <optional>

namespace gull {

/// A lens attached to a node, looking along the node's local -z.
struct Camera {
    double fieldOfView = 40;  ///< vertical, degrees
    double zNear = 0.5;
    double zFar = 260;
    std::optional<double>
        orthographicScale;  ///< half the picture's height in world units; overrides the lens

    bool hdr = true;            ///< false: no tone mapping, bloom, vignette or grading
    double exposureOffset = 0;  ///< stops
    double bloomIntensity = 0;
    double bloomThreshold = 1;
    double bloomBlurRadius = 4;  ///< pixels at a picture height of 800
    double vignettingIntensity = 0;
    double vignettingPower = 0;
    double contrast = 0;    ///< -1 to 1
    double saturation = 1;  ///< 0 grey, 1 as it is

    /// View space to clip space (OpenGL's: z from -1 to 1); `aspect` is width / height.
    glm::dmat4 projection(double aspect) const;
};

/// Projects a world position into a view of `size` (points, origin top left); z is the depth, 0 near to 1
/// far.
glm::dvec3 project(const Camera& camera, const glm::dmat4& cameraWorld, const glm::dvec3& world,
                   const glm::dvec2& size);
/// The inverse of project().
glm::dvec3 unproject(const Camera& camera, const glm::dmat4& cameraWorld, const glm::dvec3& point,
                     const glm::dvec2& size);

}  // namespace gull
