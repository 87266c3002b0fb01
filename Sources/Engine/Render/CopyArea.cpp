#include "Engine/Render/CopyArea.h"

#include "Engine/Render/GlObjects.h"

#include <epoxy/gl.h>

namespace gull {

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
