#include "Engine/Stage/Camera.h"

#include <glm/ext/matrix_clip_space.hpp>
#include <glm/matrix.hpp>
#include <glm/trigonometric.hpp>

namespace gull {

namespace {

glm::dmat4 clipFromWorld(const Camera& camera, const glm::dmat4& cameraWorld, const glm::dvec2& size) {
    return camera.projection(size.x / size.y) * glm::inverse(cameraWorld);
}

}  // namespace

glm::dmat4 Camera::projection(double aspect) const {
    if (orthographicScale) {
        const double half = *orthographicScale;
        return glm::ortho(-half * aspect, half * aspect, -half, half, zNear, zFar);
    }
    return glm::perspective(glm::radians(fieldOfView), aspect, zNear, zFar);
}

glm::dvec3 project(const Camera& camera, const glm::dmat4& cameraWorld, const glm::dvec3& world,
                   const glm::dvec2& size) {
    const glm::dvec4 clip = clipFromWorld(camera, cameraWorld, size) * glm::dvec4(world, 1);
    const glm::dvec3 device = glm::dvec3(clip) / clip.w;
    return {(device.x * 0.5 + 0.5) * size.x, (0.5 - device.y * 0.5) * size.y, device.z * 0.5 + 0.5};
}

glm::dvec3 unproject(const Camera& camera, const glm::dmat4& cameraWorld, const glm::dvec3& point,
                     const glm::dvec2& size) {
    const glm::dvec4 device(point.x / size.x * 2 - 1, 1 - point.y / size.y * 2, point.z * 2 - 1, 1);
    const glm::dvec4 world = glm::inverse(clipFromWorld(camera, cameraWorld, size)) * device;
    return glm::dvec3(world) / world.w;
}

}  // namespace gull
