#include "Engine/Render/CopyPass.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <utility>
#include <vector>

namespace gull {

namespace {

/// Of a bent picture, to a side.
constexpr int bentPieces = 8;

}  // namespace

CopyPass::CopyPass(VertexStages& stages)
    : program_(stages, "copy", {shaders::sheetVertex}, {shaders::sheetFragment}),
      faded_(stages, "fading copy", {shaders::sheetVertex}, {shaders::sheetFragment, {"FADED"}}),
      exact_(GlSampler::make()),
      smooth_(GlSampler::make()),
      array_(GlVertexArray::make()),
      buffer_(GlBuffer::make()) {
    for (const GlSampler* sampler : {&exact_, &smooth_}) {
        const GLint filter = sampler == &exact_ ? GL_NEAREST : GL_LINEAR;
        glSamplerParameteri(sampler->name(), GL_TEXTURE_MIN_FILTER, filter);
        glSamplerParameteri(sampler->name(), GL_TEXTURE_MAG_FILTER, filter);
        glSamplerParameteri(sampler->name(), GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glSamplerParameteri(sampler->name(), GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    const GLsizei stride = 4 * sizeof(float);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<const void*>(2 * sizeof(float)));
    glBindVertexArray(0);
}

void CopyPass::draw(unsigned picture, const PixelSize& size, std::span<const PixelArea> areas) const {
    std::vector<float> corners;
    corners.reserve(areas.size() * 24);
    for (const PixelArea& area : areas) {
        const float left = static_cast<float>(area.x) / static_cast<float>(size.width);
        const float right = static_cast<float>(area.right()) / static_cast<float>(size.width);
        const float low = static_cast<float>(area.y) / static_cast<float>(size.height);
        const float high = static_cast<float>(area.top()) / static_cast<float>(size.height);
        for (const auto& [x, y] :
             {std::pair(left, low), {right, low}, {right, high}, {left, low}, {right, high}, {left, high}})
            corners.insert(corners.end(), {2 * x - 1, 2 * y - 1, x, y});
    }
    begin(picture, size, exact_);
    drawTriangles(corners);
}

void CopyPass::stretch(unsigned picture, const PixelSize& size, double opacity) const {
    begin(picture, size, smooth_, opacity);
    drawTriangles({-1, -1, 0, 0, 1, -1, 1, 0, 1, 1, 1, 1, -1, -1, 0, 0, 1, 1, 1, 1, -1, 1, 0, 1});
}

void CopyPass::drawBent(unsigned picture, const PixelSize& size, const glm::dmat3& toPicture) const {
    auto place = [&](double x, double y) {
        const glm::dvec3 p = toPicture * glm::dvec3(x / size.width, y / size.height, 1);
        return glm::dvec2(p) / p.z;
    };
    std::vector<float> corners;
    for (int row = 0; row < bentPieces; ++row) {
        for (int column = 0; column < bentPieces; ++column) {
            // On whole pixels. Each piece is only moved and stretched: sides at an angle would cost twice as
            // much.
            const double left = size.width * column / bentPieces,
                         right = size.width * (column + 1) / bentPieces;
            const double low = size.height * row / bentPieces, high = size.height * (row + 1) / bentPieces;
            const double x = (left + right) / 2, y = (low + high) / 2;
            const double fromX[] = {place(left, y).x, place(right, y).x};
            const double fromY[] = {place(x, low).y, place(x, high).y};
            for (const auto& [u, v] : {std::pair(0, 0), {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}})
                for (double value : {(u ? right : left) / size.width * 2 - 1,
                                     (v ? high : low) / size.height * 2 - 1, fromX[u], fromY[v]})
                    corners.push_back(static_cast<float>(value));
        }
    }
    begin(picture, size, smooth_);
    drawTriangles(corners);
}

void CopyPass::drawTriangles(const std::vector<float>& corners) const {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(corners.size() * sizeof(float)), corners.data(),
                 GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(corners.size() / 4));
}

void CopyPass::begin(unsigned picture, const PixelSize& size, const GlSampler& sampler,
                     double opacity) const {
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_SCISSOR_TEST);
    bindTexture(unitSource, picture);
    glBindSampler(unitSource, sampler.name());
    if (opacity < 1) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        faded_.use();
        faded_.set("opacity", static_cast<float>(opacity));
    } else {
        glDisable(GL_BLEND);
        program_.use();
    }
}

}  // namespace gull
