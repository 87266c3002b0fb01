#include "Engine/Render/Overlay.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

Overlay::Overlay(const ScreenPass& screen)
    : screen_(screen), program_("overlay", shaders::fullScreen, shaders::overlayFragment) {}

void Overlay::draw(const unsigned char* pixels, int strideBytes, const PixelSize& size,
                   std::vector<PixelRect> changed, const std::vector<PixelRect>& coverage) {
    if (!texture_ || !(size_ == size)) {
        texture_ = GlTexture::make();
        size_ = size;
        bindTexture(unitUpload, texture_.name());
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size.width, size.height, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                     nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        changed = {{0, 0, size.width, size.height}};
    }
    for (const PixelRect& dirty : changed) {
        if (dirty.width <= 0 || dirty.height <= 0) continue;
        bindTexture(unitUpload, texture_.name());
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, strideBytes / 4);
        glTexSubImage2D(GL_TEXTURE_2D, 0, dirty.x, dirty.y, dirty.width, dirty.height, GL_BGRA,
                        GL_UNSIGNED_INT_8_8_8_8_REV, pixels + dirty.y * strideBytes + dirty.x * 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    }
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    bindTexture(unitSource, texture_.name());
    program_.use();
    glEnable(GL_SCISSOR_TEST);
    for (const PixelRect& part : coverage) {
        glScissor(part.x, size.height - part.y - part.height, part.width, part.height);
        screen_.draw(program_);
    }
    glDisable(GL_SCISSOR_TEST);
}

}  // namespace gull
