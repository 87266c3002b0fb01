#include "Engine/Render/CopyPass.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

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
    // Clip space, then the place on the picture.
    const float corners[6][4] = {{-1, -1, 0, 0}, {1, -1, 1, 0}, {1, 1, 1, 1},
                                 {-1, -1, 0, 0}, {1, 1, 1, 1},  {-1, 1, 0, 1}};
    glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners, GL_STATIC_DRAW);
    const GLsizei stride = sizeof corners[0];
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, stride, nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<const void*>(2 * sizeof(float)));
    glBindVertexArray(0);
}

void CopyPass::draw(unsigned picture, const PixelSize& size) const {
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_SCISSOR_TEST);
    bindTexture(unitSource, picture);
    glBindSampler(unitSource, exact_.name());
    program_.use();
    glBindVertexArray(array_.name());
    glDrawArrays(GL_TRIANGLES, 0, 6);
}

}  // namespace gull
