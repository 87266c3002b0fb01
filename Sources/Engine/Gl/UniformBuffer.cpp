#include "Engine/Gl/UniformBuffer.h"

#include <epoxy/gl.h>

namespace gull {

void UniformBuffer::upload(const void* bytes, std::size_t size) {
    glBindBuffer(GL_UNIFORM_BUFFER, buffer_.name());
    glBufferData(GL_UNIFORM_BUFFER, static_cast<GLsizeiptr>(size), bytes, GL_STREAM_DRAW);
}

}  // namespace gull
