#include "Engine/Render/FrameTarget.h"

#include <epoxy/gl.h>

namespace gull {

FrameTarget::FrameTarget(const PixelSize& size)
    : both_(size, {{Format::rgba8, Format::rgba16f}, Format::depth24}), pictureOnly_(GlFramebuffer::make()) {
    glBindFramebuffer(GL_FRAMEBUFFER, pictureOnly_.name());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, picture(), 0);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, depth(), 0);
}

void FrameTarget::bindPicture() const {
    glBindFramebuffer(GL_FRAMEBUFFER, pictureOnly_.name());
    glViewport(0, 0, size().width, size().height);
}

void copyArea(unsigned from, unsigned to, const PixelArea& area, bool depth) {
    if (area.empty()) return;
    if (epoxy_gl_version() >= 43 || epoxy_has_gl_extension("GL_ARB_copy_image")) {
        glCopyImageSubData(from, GL_TEXTURE_2D, 0, area.x, area.y, 0, to, GL_TEXTURE_2D, 0, area.x, area.y, 0,
                           area.width, area.height, 1);
        return;
    }
    GlFramebuffer source = GlFramebuffer::make(), goal = GlFramebuffer::make();
    GLenum point = depth ? GL_DEPTH_ATTACHMENT : GL_COLOR_ATTACHMENT0;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source.name());
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, point, GL_TEXTURE_2D, from, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, goal.name());
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, point, GL_TEXTURE_2D, to, 0);
    glBlitFramebuffer(area.x, area.y, area.right(), area.top(), area.x, area.y, area.right(), area.top(),
                      depth ? GL_DEPTH_BUFFER_BIT : GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

}  // namespace gull
