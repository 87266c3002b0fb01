#include "Engine/Render/PicturePass.h"

#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <utility>
#include <vector>

namespace gull {

namespace {

/// Pieces of a bent picture along each side.
constexpr int bentPieces = 8;

/// Two triangles for each of `areas` of a picture of that size, as drawRectangles() wants them.
std::vector<float> cornersOf(const DrawTarget& target, std::span<const PixelArea> areas) {
    const auto width = static_cast<float>(target.viewport.width);
    const auto height = static_cast<float>(target.viewport.height);
    std::vector<float> corners;
    corners.reserve(areas.size() * 24);
    for (const PixelArea& area : areas) {
        const float left = static_cast<float>(area.x) / width;
        const float right = static_cast<float>(area.right()) / width;
        const float low = static_cast<float>(area.y) / height;
        const float high = static_cast<float>(area.top()) / height;
        for (const auto& [x, y] :
             {std::pair(left, low), {right, low}, {right, high}, {left, low}, {right, high}, {left, high}})
            corners.insert(corners.end(), {2 * x - 1, 2 * y - 1, x, y});
    }
    return corners;
}

/// `corners`: four numbers for each triangle corner, x and y in clip space, then the place on the picture.
void drawRectangles(RenderContext& context, const DrawTarget& target, TextureRef picture, unsigned sampler,
                    const std::vector<float>& corners, Blending blending = Blending::off,
                    double opacity = 1) {
    if (corners.empty()) return;
    ProgramKey key{ProgramKind::bitmap};
    key.features.set(Feature::faded, opacity < 1);
    DrawState state;
    state.target = target;
    state.program = &context.programs.get(key);
    state.textures = {{unitSource, picture, sampler}};
    state.blending = blending;
    if (opacity < 1) state.uniforms = {{"opacity", static_cast<float>(opacity)}};
    const VertexRange all{0, context.streams.places.upload(corners)};
    state.vertexArray = context.streams.places.vertexArray();
    context.device.draw(state, {&all, 1});
}

}  // namespace

void copyPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 std::span<const PixelArea> areas) {
    drawRectangles(context, target, picture, context.streams.exact.name(), cornersOf(target, areas));
}

void blendPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                  std::span<const PixelArea> areas) {
    drawRectangles(context, target, picture, context.streams.smooth.name(), cornersOf(target, areas),
                   Blending::over);
}

void stretchPicture(RenderContext& context, const DrawTarget& target, TextureRef picture, double opacity) {
    drawRectangles(context, target, picture, context.streams.smooth.name(),
                   {-1, -1, 0, 0, 1, -1, 1, 0, 1, 1, 1, 1, -1, -1, 0, 0, 1, 1, 1, 1, -1, 1, 0, 1},
                   opacity < 1 ? Blending::over : Blending::off, opacity);
}

void bendPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 const glm::dmat3& toPicture) {
    const int width = target.viewport.width, height = target.viewport.height;
    const auto place = [&](double x, double y) {
        const glm::dvec3 p = toPicture * glm::dvec3(x / width, y / height, 1);
        return glm::dvec2(p) / p.z;
    };
    std::vector<float> corners;
    for (int row = 0; row < bentPieces; ++row) {
        for (int column = 0; column < bentPieces; ++column) {
            // On whole pixels. Each piece is only moved and stretched, because slanted sides would cost twice
            // as much.
            const int left = width * column / bentPieces, right = width * (column + 1) / bentPieces;
            const int low = height * row / bentPieces, high = height * (row + 1) / bentPieces;
            const double x = (left + right) / 2.0, y = (low + high) / 2.0;
            const double fromX[] = {place(left, y).x, place(right, y).x};
            const double fromY[] = {place(x, low).y, place(x, high).y};
            for (const auto& [u, v] : {std::pair(0, 0), {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}})
                for (const double value : {2.0 * (u ? right : left) / width - 1,
                                           2.0 * (v ? high : low) / height - 1, fromX[u], fromY[v]})
                    corners.push_back(static_cast<float>(value));
        }
    }
    drawRectangles(context, target, picture, context.streams.smooth.name(), corners);
}

}  // namespace gull
