#include "Engine/Gl/Vertices.h"

#include <epoxy/gl.h>

namespace gull {

namespace {

/// Describes the layout of the buffer bound to GL_ARRAY_BUFFER to the bound vertex array.
void setAttributes(std::size_t stride, std::initializer_list<VertexAttribute> attributes) {
    for (const auto& [location, components, offset] : attributes) {
        glEnableVertexAttribArray(location);
        glVertexAttribPointer(location, components, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride),
                              reinterpret_cast<const void*>(offset));
    }
}

}  // namespace

VertexStream::VertexStream(StateKeeper& keeper, std::size_t stride,
                           std::initializer_list<VertexAttribute> attributes)
    : stride_(stride), array_(keeper), buffer_(keeper) {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    setAttributes(stride, attributes);
    glBindVertexArray(0);
}

std::uint32_t VertexStream::upload(const std::vector<float>& values) {
    const std::size_t bytes = values.size() * sizeof(float);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes), values.data(), GL_STREAM_DRAW);
    return static_cast<std::uint32_t>(bytes / stride_);
}

IndexedVertices::IndexedVertices(StateKeeper& keeper, std::span<const std::byte> vertices, std::size_t stride,
                                 std::initializer_list<VertexAttribute> attributes,
                                 const std::vector<std::uint32_t>& indices)
    : array_(keeper), vertices_(keeper), indices_(keeper) {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, vertices_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size()), vertices.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices_.name());
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(indices.size() * sizeof(std::uint32_t)),
                 indices.data(), GL_STATIC_DRAW);
    setAttributes(stride, attributes);
    glBindVertexArray(0);
    keeper.forgetState();
}

}  // namespace gull
