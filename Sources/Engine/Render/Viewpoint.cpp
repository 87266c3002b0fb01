#include "Engine/Render/Viewpoint.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_inverse.hpp>

namespace gull {

Viewpoint Viewpoint::of(const Stage& stage, const PixelSize& size) {
    Viewpoint view;
    view.size = size;
    glm::dmat4 world(1);
    if (stage.pointOfView) {
        world = stage.pointOfView->worldTransform();
        if (stage.pointOfView->camera) view.camera = *stage.pointOfView->camera;
    }
    view.projection = view.camera.projection(static_cast<double>(size.width) / size.height);
    return view.standingAt(world);
}

Viewpoint Viewpoint::standingAt(const glm::dmat4& cameraWorld) const {
    Viewpoint view = *this;
    view.world = cameraWorld;
    view.viewProjection = projection * glm::inverse(cameraWorld);
    view.eye = glm::dvec3(cameraWorld[3]);
    return view;
}

Viewpoint::Ray Viewpoint::ray(double x, double y) const {
    const glm::dvec2 at(2 * x / size.width - 1, 2 * y / size.height - 1);
    const glm::dmat4 toWorld = glm::inverse(viewProjection);
    const glm::dvec4 near = toWorld * glm::dvec4(at, -1, 1), far = toWorld * glm::dvec4(at, 1, 1);
    const glm::dvec3 from = glm::dvec3(near) / near.w;
    return {from, glm::dvec3(far) / far.w - from};
}

bool Viewpoint::seesHorizon() const {
    for (const int x : {0, size.width})
        for (const int y : {0, size.height})
            if (ray(x, y).way.y >= 0) return true;
    return false;
}

PixelArea Viewpoint::area(const Box& box, const glm::dmat4& model) const {
    if (box.empty()) return {};
    glm::dmat4 toClip = viewProjection * model;
    double left = 1e9, right = -1e9, bottom = 1e9, top = -1e9;
    bool partlyBehind = false;
    unsigned outside = ~0U;  // sides of the frustum that all corners are outside of
    for (int corner = 0; corner < 8; ++corner) {
        glm::dvec4 p(corner & 1 ? box.max.x : box.min.x, corner & 2 ? box.max.y : box.min.y,
                     corner & 4 ? box.max.z : box.min.z, 1);
        glm::dvec4 clip = toClip * p;
        unsigned beyond = 0;
        for (int axis = 0; axis < 3; ++axis) {
            if (clip[axis] < -clip.w) beyond |= 1U << (2 * axis);
            if (clip[axis] > clip.w) beyond |= 2U << (2 * axis);
        }
        outside &= beyond;
        if (clip.w <= 1e-3) {
            partlyBehind = true;
            continue;
        }
        left = std::min(left, clip.x / clip.w);
        right = std::max(right, clip.x / clip.w);
        bottom = std::min(bottom, clip.y / clip.w);
        top = std::max(top, clip.y / clip.w);
    }
    if (outside != 0) return {};
    if (partlyBehind) return PixelArea::whole(size);
    // Clamped first: far outside the view, the numbers would not fit an int.
    auto pixel = [](double ndc, int count) { return (std::clamp(ndc, -4.0, 4.0) * 0.5 + 0.5) * count; };
    int x0 = static_cast<int>(std::floor(pixel(left, size.width))) - 1;
    int x1 = static_cast<int>(std::ceil(pixel(right, size.width))) + 1;
    int y0 = static_cast<int>(std::floor(pixel(bottom, size.height))) - 1;
    int y1 = static_cast<int>(std::ceil(pixel(top, size.height))) + 1;
    return PixelArea{x0, y0, x1 - x0, y1 - y0}.intersection(PixelArea::whole(size));
}

}  // namespace gull
