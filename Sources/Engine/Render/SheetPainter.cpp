#include "Engine/Render/SheetPainter.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <cmath>
#include <cstddef>

namespace gull {

SheetPainter::SheetPainter()
    : wash_("sheet of colour", shaders::sheetVertex, shaders::sheetFragment, {"WASH"}),
      bitmap_("sheet", shaders::sheetVertex, shaders::sheetFragment),
      fadedBitmap_("fading sheet", shaders::sheetVertex, shaders::sheetFragment, {"FADED"}),
      array_(GlVertexArray::make()),
      buffer_(GlBuffer::make()) {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, sizeof(Vertex), nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 4, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                          reinterpret_cast<const void*>(offsetof(Vertex, value)));
}

void SheetPainter::draw(std::span<const Sheet> sheets, const PixelSize& size) {
    size_ = size;
    for (const Sheet& sheet : sheets) upload(sheet);
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    for (const Sheet& sheet : sheets) {
        if (sheet.opacity <= 0) continue;
        vertices_.clear();
        if (sheet.isWash()) {
            addWash(sheet);
            drawVertices(wash_);
        } else if (sheet.pixels != nullptr) {
            addBitmap(sheet);
            bindTexture(unitSource, kept_[sheet.id].texture.name());
            const bool isFaded = sheet.opacity < 1;
            const Program& program = isFaded ? fadedBitmap_ : bitmap_;
            program.use();
            if (isFaded) program.set("opacity", static_cast<float>(sheet.opacity));
            drawVertices(program);
        }
    }
}

void SheetPainter::upload(const Sheet& sheet) {
    if (sheet.pixels == nullptr) return;
    Kept& kept = kept_[sheet.id];
    const PixelSize size{sheet.place.width, sheet.place.height};
    const bool isNew = !kept.texture || !(kept.size == size);
    if (!isNew && sheet.changes.empty()) return;
    if (isNew) {
        kept = {GlTexture::make(), size};
        bindTexture(unitUpload, kept.texture.name());
        // Without a size in its name the format may be the one that the bytes come in.
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, size.width, size.height, 0, GL_BGRA,
                     GL_UNSIGNED_INT_8_8_8_8_REV, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
    const Sheet::Area whole{0, 0, size.width, size.height};
    bindTexture(unitUpload, kept.texture.name());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, sheet.strideBytes / 4);
    for (const Sheet::Area& part : isNew ? std::span(&whole, 1) : sheet.changes) {
        glTexSubImage2D(GL_TEXTURE_2D, 0, part.x, part.y, part.width, part.height, GL_BGRA,
                        GL_UNSIGNED_INT_8_8_8_8_REV,
                        sheet.pixels + static_cast<std::ptrdiff_t>(part.y) * sheet.strideBytes + part.x * 4);
    }
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

void SheetPainter::addWash(const Sheet& sheet) {
    const auto valueOf = [&](const GradientStop& stop) {
        const double a = stop.colour.a * sheet.opacity;
        return Value{static_cast<float>(stop.colour.r * a), static_cast<float>(stop.colour.g * a),
                     static_cast<float>(stop.colour.b * a), static_cast<float>(a)};
    };
    const auto rowOf = [&](const GradientStop& stop) {
        return sheet.place.y + static_cast<int>(std::lround(stop.offset * sheet.place.height));
    };
    for (std::size_t i = 0; i + 1 < sheet.wash.size(); ++i) {
        const Value above = valueOf(sheet.wash[i]);
        const Value below = valueOf(sheet.wash[i + 1]);
        const int top = rowOf(sheet.wash[i]);
        addRectangle({sheet.place.x, top, sheet.place.width, rowOf(sheet.wash[i + 1]) - top},
                     {above, above, below, below});
    }
}

void SheetPainter::addBitmap(const Sheet& sheet) {
    const auto width = static_cast<float>(sheet.place.width);
    const auto height = static_cast<float>(sheet.place.height);
    for (const Sheet::Area& part : sheet.coverage) {
        const float left = static_cast<float>(part.x) / width;
        const float top = static_cast<float>(part.y) / height;
        const float right = static_cast<float>(part.x + part.width) / width;
        const float bottom = static_cast<float>(part.y + part.height) / height;
        addRectangle({sheet.place.x + part.x, sheet.place.y + part.y, part.width, part.height},
                     {Value{left, top}, {right, top}, {left, bottom}, {right, bottom}});
    }
}

void SheetPainter::addRectangle(const Sheet::Area& area, const std::array<Value, 4>& corners) {
    const auto across = [&](int x) { return static_cast<float>(2.0 * x / size_.width - 1); };
    const auto up = [&](int y) { return static_cast<float>(1 - 2.0 * y / size_.height); };
    const Vertex topLeft{across(area.x), up(area.y), corners[0]};
    const Vertex topRight{across(area.x + area.width), up(area.y), corners[1]};
    const Vertex bottomLeft{across(area.x), up(area.y + area.height), corners[2]};
    const Vertex bottomRight{across(area.x + area.width), up(area.y + area.height), corners[3]};
    for (const Vertex& vertex : {bottomLeft, bottomRight, topRight, bottomLeft, topRight, topLeft}) {
        vertices_.push_back(vertex);
    }
}

void SheetPainter::drawVertices(const Program& program) {
    program.use();
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(Vertex)),
                 vertices_.data(), GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices_.size()));
}

}  // namespace gull
