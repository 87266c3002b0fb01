#include "Engine/Gl/GraphicsDevice.h"

#include "Engine/Gl/GlObjects.h"
#include "Engine/Gl/GraphicsInfo.h"
#include "Engine/Gl/UniformBuffer.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace gull {

namespace {

GLenum textureTarget(TextureRef::Kind kind) {
    switch (kind) {
        case TextureRef::Kind::cube:
            return GL_TEXTURE_CUBE_MAP;
        case TextureRef::Kind::multisampled:
            return GL_TEXTURE_2D_MULTISAMPLE;
        case TextureRef::Kind::flat:
            break;
    }
    return GL_TEXTURE_2D;
}

void enable(GLenum capability, bool on) {
    if (on)
        glEnable(capability);
    else
        glDisable(capability);
}

void setDepthTest(DepthTest test) {
    enable(GL_DEPTH_TEST, test != DepthTest::off);
    if (test == DepthTest::less) glDepthFunc(GL_LESS);
    if (test == DepthTest::lessOrEqual) glDepthFunc(GL_LEQUAL);
    if (test == DepthTest::greater) glDepthFunc(GL_GREATER);
    if (test == DepthTest::always) glDepthFunc(GL_ALWAYS);
}

void setBlending(Blending blending) {
    enable(GL_BLEND, blending != Blending::off);
    if (blending == Blending::over) glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    if (blending == Blending::add) glBlendFunc(GL_ONE, GL_ONE);
}

void setCulling(Culling culling) {
    enable(GL_CULL_FACE, culling != Culling::off);
    if (culling == Culling::off) return;
    glCullFace(GL_BACK);
    glFrontFace(culling == Culling::backMirrored ? GL_CW : GL_CCW);
}

void setScissor(const std::optional<PixelArea>& scissor) {
    enable(GL_SCISSOR_TEST, scissor.has_value());
    if (scissor) glScissor(scissor->x, scissor->y, scissor->width, scissor->height);
}

}  // namespace

GraphicsDevice::GraphicsDevice() {
    if (const std::string problem = contextProblem(); !problem.empty()) throw std::runtime_error(problem);
    copiesImages_ = epoxy_gl_version() >= 43 || epoxy_has_gl_extension("GL_ARB_copy_image");
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
}

void GraphicsDevice::draw(const DrawState& state, std::span<const VertexRange> vertices) {
    if (vertices.empty()) return;
    apply(state);
    for (const VertexRange& range : vertices)
        glDrawArrays(GL_TRIANGLES, static_cast<GLint>(range.first), static_cast<GLsizei>(range.count));
}

void GraphicsDevice::drawIndexed(const DrawState& state, std::span<const VertexRange> indices) {
    if (indices.empty()) return;
    apply(state);
    for (const VertexRange& range : indices)
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(range.count), GL_UNSIGNED_INT,
                       reinterpret_cast<const void*>(std::uintptr_t{range.first} * sizeof(std::uint32_t)));
}

void GraphicsDevice::clear(const DrawTarget& target, const ClearValues& values) {
    ContextState wanted = state_.value_or(ContextState());
    wanted.framebuffer = target.framebuffer;
    wanted.scissor = target.scissor;
    wanted.writesColour = wanted.writesDepth = true;
    applyFixed(wanted);
    GLbitfield buffers = 0;
    if (values.colour) {
        const auto& [red, green, blue, alpha] = *values.colour;
        glClearColor(red, green, blue, alpha);
        buffers |= GL_COLOR_BUFFER_BIT;
    }
    if (values.depth) {
        glClearDepth(*values.depth);
        buffers |= GL_DEPTH_BUFFER_BIT;
    }
    glClear(buffers);
}

void GraphicsDevice::copyColour(TextureRef from, TextureRef to, const PixelArea& area) {
    copy(from, to, area, false);
}
void GraphicsDevice::copyDepth(TextureRef from, TextureRef to, const PixelArea& area) {
    copy(from, to, area, true);
}

void GraphicsDevice::copy(TextureRef from, TextureRef to, const PixelArea& area, bool depth) {
    if (area.empty()) return;
    if (copiesImages_) {
        glCopyImageSubData(from.name, GL_TEXTURE_2D, 0, area.x, area.y, 0, to.name, GL_TEXTURE_2D, 0, area.x,
                           area.y, 0, area.width, area.height, 1);
        return;
    }
    GlFramebuffer source(*this), goal(*this);
    const GLenum point = depth ? GL_DEPTH_ATTACHMENT : GL_COLOR_ATTACHMENT0;
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source.name());
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, point, GL_TEXTURE_2D, from.name, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, goal.name());
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, point, GL_TEXTURE_2D, to.name, 0);
    glBlitFramebuffer(area.x, area.y, area.right(), area.top(), area.x, area.y, area.right(), area.top(),
                      depth ? GL_DEPTH_BUFFER_BIT : GL_COLOR_BUFFER_BIT, GL_NEAREST);
    forgetState();
}

Image GraphicsDevice::readColour(unsigned framebuffer, const PixelSize& size) {
    ContextState wanted = state_.value_or(ContextState());
    wanted.framebuffer = framebuffer;
    applyFixed(wanted);
    Image image(size.width, size.height);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
    const auto rowBytes = static_cast<std::ptrdiff_t>(size.width) * 4;
    for (int y = 0; y < size.height / 2; ++y)
        std::swap_ranges(image.pixels.begin() + y * rowBytes, image.pixels.begin() + (y + 1) * rowBytes,
                         image.pixels.begin() + (size.height - 1 - y) * rowBytes);
    return image;
}

void GraphicsDevice::readDepth(unsigned framebuffer, const PixelArea& area, int width,
                               std::vector<float>& depths) {
    ContextState wanted = state_.value_or(ContextState());
    wanted.framebuffer = framebuffer;
    applyFixed(wanted);
    const std::size_t first =
        static_cast<std::size_t>(area.y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(area.x);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, width);
    glReadPixels(area.x, area.y, area.width, area.height, GL_DEPTH_COMPONENT, GL_FLOAT, &depths[first]);
}

void GraphicsDevice::finish() {
    glFinish();
}

void GraphicsDevice::forgetState() {
    state_.reset();
    units_.fill(std::nullopt);
}

void GraphicsDevice::apply(const DrawState& state) {
    if (spoiling_) spoil(state);
    applyFixed(contextState(state));
    bindTextures(state.textures);
    state.program->set(state.uniforms);
}

void GraphicsDevice::applyFixed(const ContextState& wanted) {
    const std::uint32_t changes = stateChanges(state_, wanted);
    if (changes & framebufferPiece) glBindFramebuffer(GL_FRAMEBUFFER, wanted.framebuffer);
    if (changes & viewportPiece)
        glViewport(wanted.viewport.x, wanted.viewport.y, wanted.viewport.width, wanted.viewport.height);
    if (changes & scissorPiece) setScissor(wanted.scissor);
    if (changes & pipelinePiece) glBindProgramPipeline(wanted.pipeline);
    if (changes & vertexArrayPiece) glBindVertexArray(wanted.vertexArray);
    if (changes & frameUniformsPiece)
        glBindBufferBase(GL_UNIFORM_BUFFER, frameBlockBinding, wanted.frameUniforms);
    if (changes & depthTestPiece) setDepthTest(wanted.depthTest);
    if (changes & depthMaskPiece) glDepthMask(wanted.writesDepth ? GL_TRUE : GL_FALSE);
    if (changes & colourMaskPiece) {
        const GLboolean writes = wanted.writesColour ? GL_TRUE : GL_FALSE;
        glColorMask(writes, writes, writes, writes);
    }
    if (changes & blendingPiece) setBlending(wanted.blending);
    if (changes & cullingPiece) setCulling(wanted.culling);
    state_ = wanted;
}

void GraphicsDevice::bindTextures(const std::vector<TextureBinding>& textures) {
    for (const auto& [unit, texture, sampler] : textures) {
        std::optional<Unit>& bound = units_[static_cast<std::size_t>(unit)];
        if (!bound || !(bound->texture == texture)) {
            glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
            glBindTexture(textureTarget(texture.kind), texture.name);
        }
        if (!bound || bound->sampler != sampler) glBindSampler(static_cast<GLuint>(unit), sampler);
        bound = Unit{texture, sampler};
    }
}

void GraphicsDevice::spoil(const DrawState& state) {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glViewport(0, 0, 1, 1);
    setScissor(PixelArea{0, 0, 1, 1});
    glBindVertexArray(0);
    glBindBufferBase(GL_UNIFORM_BUFFER, frameBlockBinding, 0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_NEVER);
    glDepthMask(GL_FALSE);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_ZERO);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    for (int unit = 0; unit < unitCount; ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        for (const auto kind :
             {TextureRef::Kind::flat, TextureRef::Kind::cube, TextureRef::Kind::multisampled})
            glBindTexture(textureTarget(kind), 0);
        glBindSampler(static_cast<GLuint>(unit), 0);
    }
    state.program->spoilUniforms();
    forgetState();
}

}  // namespace gull
