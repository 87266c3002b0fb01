#include "Engine/Render/AreaPass.h"

#include <epoxy/gl.h>

namespace gull {

AreaPass::AreaPass() : array_(GlVertexArray::make()), buffer_(GlBuffer::make()) {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 2 * sizeof(float), nullptr);
    glBindVertexArray(0);
}

void AreaPass::draw(const std::vector<PixelArea>& areas) {
    if (areas.empty()) return;
    corners_.clear();
    for (const PixelArea& area : areas) {
        auto left = static_cast<float>(area.x), right = static_cast<float>(area.right());
        auto bottom = static_cast<float>(area.y), top = static_cast<float>(area.top());
        for (float v : {left, bottom, right, bottom, right, top, left, bottom, right, top, left, top})
            corners_.push_back(v);
    }
    glDisable(GL_CULL_FACE);
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(corners_.size() * sizeof(float)), corners_.data(),
                 GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(corners_.size() / 2));
}

}  // namespace gull
