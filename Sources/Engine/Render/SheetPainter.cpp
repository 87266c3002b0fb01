#include "Engine/Render/SheetPainter.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

namespace gull {

namespace {

/// A pixel more where a side is a power of two: for such textures a rasteriser in software would compile the
/// program once more.
PixelSize storedSize(const Sheet& sheet) {
    const auto side = [](int length) {
        return std::has_single_bit(static_cast<unsigned>(length)) ? length + 1 : length;
    };
    return {side(sheet.place.width), side(sheet.place.height)};
}

}  // namespace

SheetPainter::SheetPainter(VertexStages& stages)
    : wash_(stages, "sheet of colour", {shaders::sheetVertex}, {shaders::sheetFragment, {"WASH"}}),
      bitmap_(stages, "sheet", {shaders::sheetVertex}, {shaders::sheetFragment}),
      fadedBitmap_(stages, "fading sheet", {shaders::sheetVertex}, {shaders::sheetFragment, {"FADED"}}),
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

bool SheetPainter::Drawn::looksLike(const Drawn& other) const {
    return id == other.id && place == other.place && opacity == other.opacity && wash == other.wash;
}

PixelArea SheetPainter::onFramebuffer(const PixelRect& place, const PixelRect& part) const {
    const int top = place.y + part.y;
    const PixelArea area{place.x + part.x, size_.height - top - part.height, part.width, part.height};
    return area.intersection(PixelArea::whole(size_));
}

SheetPainter::Drawn SheetPainter::asDrawn(const Sheet& sheet) const {
    Drawn drawn{sheet.id, sheet.place, sheet.opacity, sheet.wash, {}};
    if (sheet.opacity <= 0) return drawn;
    if (sheet.isWash()) {
        drawn.parts.push_back(onFramebuffer(sheet.place, {0, 0, sheet.place.width, sheet.place.height}));
    } else {
        for (const PixelRect& part : sheet.coverage) drawn.parts.push_back(onFramebuffer(sheet.place, part));
    }
    return drawn;
}

std::vector<PixelArea> SheetPainter::show(std::span<const Sheet> sheets, const PixelSize& size) {
    std::vector<PixelArea> changes;
    const auto add = [&](const std::vector<PixelArea>& parts) {
        changes.insert(changes.end(), parts.begin(), parts.end());
    };
    if (!(size_ == size)) {
        size_ = size;
        changes.push_back(PixelArea::whole(size));
    }
    sheets_ = sheets;
    for (std::size_t i = 0; i < std::max(sheets.size(), drawn_.size()); ++i) {
        if (i >= sheets.size()) {
            add(drawn_[i].parts);
            continue;
        }
        const Sheet& sheet = sheets[i];
        upload(sheet);
        Drawn drawn = asDrawn(sheet);
        if (i >= drawn_.size()) {
            add(drawn.parts);
            drawn_.push_back(std::move(drawn));
        } else if (drawn.looksLike(drawn_[i])) {
            for (const PixelRect& part : sheet.changes)
                if (sheet.opacity > 0) changes.push_back(onFramebuffer(sheet.place, part));
            drawn_[i].parts = std::move(drawn.parts);
        } else {
            add(drawn_[i].parts);
            add(drawn.parts);
            drawn_[i] = std::move(drawn);
        }
    }
    drawn_.resize(sheets.size());
    return changes;
}

void SheetPainter::draw(std::span<const PixelArea> areas) {
    if (areas.empty()) return;
    glViewport(0, 0, size_.width, size_.height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const Sheet& sheet = sheets_[i];
        vertices_.clear();
        for (const PixelArea& part : drawn_[i].parts) {
            for (const PixelArea& area : areas) {
                const PixelArea visible = part.intersection(area);
                if (visible.empty()) continue;
                if (sheet.isWash())
                    addWash(sheet, visible);
                else
                    addBitmap(sheet, visible);
            }
        }
        if (vertices_.empty()) continue;
        if (sheet.isWash()) {
            drawVertices(wash_);
        } else {
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
    const PixelSize size = storedSize(sheet);
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
    const Sheet::Area whole{0, 0, sheet.place.width, sheet.place.height};
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

void SheetPainter::addWash(const Sheet& sheet, const PixelArea& area) {
    const auto valueOf = [&](const GradientStop& stop) {
        const double a = stop.colour.a * sheet.opacity;
        return Value{static_cast<float>(stop.colour.r * a), static_cast<float>(stop.colour.g * a),
                     static_cast<float>(stop.colour.b * a), static_cast<float>(a)};
    };
    const auto rowOf = [&](const GradientStop& stop) {
        return size_.height - sheet.place.y - static_cast<int>(std::lround(stop.offset * sheet.place.height));
    };
    for (std::size_t i = 0; i + 1 < sheet.wash.size(); ++i) {
        const int top = rowOf(sheet.wash[i]);
        const int bottom = rowOf(sheet.wash[i + 1]);
        const PixelArea part = area.intersection({area.x, bottom, area.width, top - bottom});
        if (part.empty()) continue;
        const Value above = valueOf(sheet.wash[i]);
        const Value below = valueOf(sheet.wash[i + 1]);
        addRectangle(part, [&](int, int y) {
            const float share = static_cast<float>(y - bottom) / static_cast<float>(top - bottom);
            Value value;
            for (std::size_t k = 0; k < value.size(); ++k)
                value[k] = below[k] + (above[k] - below[k]) * share;
            return value;
        });
    }
}

void SheetPainter::addBitmap(const Sheet& sheet, const PixelArea& area) {
    const int top = size_.height - sheet.place.y;
    const PixelSize stored = storedSize(sheet);
    addRectangle(area, [&](int x, int y) {
        return Value{static_cast<float>(x - sheet.place.x) / static_cast<float>(stored.width),
                     static_cast<float>(top - y) / static_cast<float>(stored.height)};
    });
}

template <class ValueAt>
void SheetPainter::addRectangle(const PixelArea& area, const ValueAt& valueAt) {
    const auto corner = [&](int x, int y) {
        return Vertex{static_cast<float>(2.0 * x / size_.width - 1),
                      static_cast<float>(2.0 * y / size_.height - 1), valueAt(x, y)};
    };
    const Vertex lowerLeft = corner(area.x, area.y), lowerRight = corner(area.right(), area.y);
    const Vertex upperLeft = corner(area.x, area.top()), upperRight = corner(area.right(), area.top());
    for (const Vertex& vertex : {lowerLeft, lowerRight, upperRight, lowerLeft, upperRight, upperLeft})
        vertices_.push_back(vertex);
}

void SheetPainter::drawVertices(const Program& program) {
    program.use();
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(Vertex)),
                 vertices_.data(), GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices_.size()));
}

}  // namespace gull
