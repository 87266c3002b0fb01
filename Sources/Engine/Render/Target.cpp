#include "Engine/Render/Target.h"

#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <stdexcept>

namespace gull {

namespace {

struct GlFormat {
    GLenum internal;
    GLenum layout;
    GLenum type;
};

GlFormat glFormat(Format format) {
    switch (format) {
        case Format::r8:
            return {GL_R8, GL_RED, GL_UNSIGNED_BYTE};
        case Format::rgba8:
            return {GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE};
        case Format::bgra8:
            return {GL_RGBA, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV};
        case Format::rgba16f:
            return {GL_RGBA16F, GL_RGBA, GL_HALF_FLOAT};
        case Format::depth16:
            return {GL_DEPTH_COMPONENT16, GL_DEPTH_COMPONENT, GL_UNSIGNED_SHORT};
        case Format::depth24:
            return {GL_DEPTH_COMPONENT24, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT};
        case Format::none:
            break;
    }
    return {GL_NONE, GL_NONE, GL_NONE};
}

GlTexture makeTexture(const PixelSize& size, Format format, bool smooth) {
    GlTexture texture = GlTexture::make();
    GlFormat gl = glFormat(format);
    glActiveTexture(GL_TEXTURE0 + unitUpload);
    glBindTexture(GL_TEXTURE_2D, texture.name());
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(gl.internal), size.width, size.height, 0, gl.layout,
                 gl.type, nullptr);
    GLint filter = smooth ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    return texture;
}

}  // namespace

Target::Target(const PixelSize& size, const Description& description)
    : size_(size), framebuffer_(GlFramebuffer::make()) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.name());
    auto attach = [&](GLenum point, Format format, bool smooth) {
        if (description.samples > 1 && point == GL_DEPTH_ATTACHMENT) {
            samplesDepth_ = GlRenderbuffer::make();
            glBindRenderbuffer(GL_RENDERBUFFER, samplesDepth_.name());
            glRenderbufferStorageMultisample(GL_RENDERBUFFER, description.samples, glFormat(format).internal,
                                             size.width, size.height);
            glFramebufferRenderbuffer(GL_FRAMEBUFFER, point, GL_RENDERBUFFER, samplesDepth_.name());
            return GlTexture();
        }
        if (description.samples > 1) {
            GlTexture texture = GlTexture::make();
            glActiveTexture(GL_TEXTURE0 + unitUpload);
            glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, texture.name());
            glTexImage2DMultisample(GL_TEXTURE_2D_MULTISAMPLE, description.samples, glFormat(format).internal,
                                    size.width, size.height, GL_TRUE);
            glFramebufferTexture2D(GL_FRAMEBUFFER, point, GL_TEXTURE_2D_MULTISAMPLE, texture.name(), 0);
            return texture;
        }
        GlTexture texture = makeTexture(size, format, smooth);
        glFramebufferTexture2D(GL_FRAMEBUFFER, point, GL_TEXTURE_2D, texture.name(), 0);
        return texture;
    };

    std::vector<GLenum> points;
    for (Format format : description.colours) {
        points.push_back(GL_COLOR_ATTACHMENT0 + static_cast<GLenum>(points.size()));
        colours_.push_back(attach(points.back(), format, true));
    }
    if (description.depth != Format::none) depth_ = attach(GL_DEPTH_ATTACHMENT, description.depth, false);
    if (description.sharedDepth != 0)
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, description.sharedDepth,
                               0);
    if (points.empty()) {
        glDrawBuffer(GL_NONE);
        glReadBuffer(GL_NONE);
    } else {
        glDrawBuffers(static_cast<GLsizei>(points.size()), points.data());
    }
    if (GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER); status != GL_FRAMEBUFFER_COMPLETE)
        throw std::runtime_error(fmt::format("OpenGL refuses a {} x {} drawing target (status {:#x})",
                                             size.width, size.height, status));
}

void Target::bind() const {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.name());
    glViewport(0, 0, size_.width, size_.height);
}

Target plainTarget(Format format, float value) {
    Target target({3, 3}, {{format}});
    target.bind();
    glDisable(GL_SCISSOR_TEST);
    glClearColor(value, value, value, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    return target;
}

}  // namespace gull
