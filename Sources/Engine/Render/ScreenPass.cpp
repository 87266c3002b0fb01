#include "Engine/Render/ScreenPass.h"

#include <epoxy/gl.h>

namespace gull {

ScreenPass::ScreenPass() : array_(GlVertexArray::make()) {}

void ScreenPass::draw(const Program& program, float depth) const {
    program.set("depth", depth);
    glDisable(GL_CULL_FACE);
    glBindVertexArray(array_.name());
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

void bindTexture(int unit, unsigned texture) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, texture);
    glBindSampler(static_cast<GLuint>(unit), 0);
}

}  // namespace gull
