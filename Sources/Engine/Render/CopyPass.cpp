#include "Engine/Render/CopyPass.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

namespace {
constexpr int floatsPerVertex = 4;
}

CopyPass::CopyPass()
    : program_("copy", shaders::sheetVertex, shaders::sheetFragment),
      exact_(GlSampler::make()),
      array_(GlVertexArray::make()),
      buffer_(GlBuffer::make()) {
    glSamplerParameteri(exact_.name(), GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glSamplerParameteri(exact_.name(), GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glSamplerParameteri(exact_.name(), GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glSamplerParameteri(exact_.name(), GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    const GLsizei stride = floatsPerVertex * sizeof(float);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<const void*>(2 * sizeof(float)));
    glBindVertexArray(0);
}

void CopyPass::draw(unsigned picture, const PixelSize& size, std::span<const PixelArea> areas) {
    vertices_.clear();
    for (const PixelArea& area : areas) {
        auto left = static_cast<float>(area.x) / static_cast<float>(size.width);
        auto right = static_cast<float>(area.right()) / static_cast<float>(size.width);
        auto bottom = static_cast<float>(area.y) / static_cast<float>(size.height);
        auto top = static_cast<float>(area.top()) / static_cast<float>(size.height);
        const float corners[][2] = {{left, bottom}, {right, bottom}, {right, top},
                                    {left, bottom}, {right, top},    {left, top}};
        for (const auto& [s, t] : corners)
            for (float value : {s * 2 - 1, t * 2 - 1, s, t}) vertices_.push_back(value);
    }
    if (vertices_.empty()) return;
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_SCISSOR_TEST);
    bindTexture(unitSource, picture);
    glBindSampler(unitSource, exact_.name());
    program_.use();
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(float)), vertices_.data(),
                 GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices_.size()) / floatsPerVertex);
}

}  // namespace gull
