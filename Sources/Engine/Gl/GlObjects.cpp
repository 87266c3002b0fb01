#include "Engine/Gl/GlObjects.h"

#include <epoxy/gl.h>

namespace gull {

unsigned createGlName(StateKeeper& keeper, GlKind kind) {
    keeper.forgetState();
    GLuint name = 0;
    switch (kind) {
        case GlKind::texture:
            glGenTextures(1, &name);
            break;
        case GlKind::buffer:
            glGenBuffers(1, &name);
            break;
        case GlKind::vertexArray:
            glGenVertexArrays(1, &name);
            break;
        case GlKind::framebuffer:
            glGenFramebuffers(1, &name);
            break;
        case GlKind::renderbuffer:
            glGenRenderbuffers(1, &name);
            break;
        case GlKind::sampler:
            glGenSamplers(1, &name);
            break;
    }
    return name;
}

void deleteGlName(GlKind kind, unsigned name) {
    switch (kind) {
        case GlKind::texture:
            glDeleteTextures(1, &name);
            break;
        case GlKind::buffer:
            glDeleteBuffers(1, &name);
            break;
        case GlKind::vertexArray:
            glDeleteVertexArrays(1, &name);
            break;
        case GlKind::framebuffer:
            glDeleteFramebuffers(1, &name);
            break;
        case GlKind::renderbuffer:
            glDeleteRenderbuffers(1, &name);
            break;
        case GlKind::sampler:
            glDeleteSamplers(1, &name);
            break;
    }
}

}  // namespace gull
