#include "Engine/Compositor/OverlayLayers.h"

#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

namespace gull {

namespace {

/// Adds a pixel to a side that is a power of two: for such textures a software rasteriser would compile the
/// program once more.
PixelSize storedSize(const OverlayLayer& layer) {
    const auto side = [](int length) {
        return std::has_single_bit(static_cast<unsigned>(length)) ? length + 1 : length;
    };
    return {side(layer.place.width), side(layer.place.height)};
}

}  // namespace

bool OverlayLayers::Drawn::looksLike(const Drawn& other) const {
    return id == other.id && place == other.place && opacity == other.opacity && wash == other.wash;
}

PixelArea OverlayLayers::onFramebuffer(const PixelRect& place, const PixelRect& part) const {
    const int top = place.y + part.y;
    const PixelArea area{place.x + part.x, size_.height - top - part.height, part.width, part.height};
    return area.intersection(PixelArea::whole(size_));
}

OverlayLayers::Drawn OverlayLayers::asDrawn(const OverlayLayer& layer) const {
    Drawn drawn{layer.id, layer.place, layer.opacity, layer.wash, {}};
    if (layer.opacity <= 0) return drawn;
    if (layer.isWash()) {
        drawn.parts.push_back(onFramebuffer(layer.place, {0, 0, layer.place.width, layer.place.height}));
    } else {
        for (const PixelRect& part : layer.coverage) drawn.parts.push_back(onFramebuffer(layer.place, part));
    }
    return drawn;
}

std::vector<PixelArea> OverlayLayers::show(std::span<const OverlayLayer> layers, const PixelSize& size) {
    std::vector<PixelArea> changes;
    const auto add = [&](const std::vector<PixelArea>& parts) {
        changes.insert(changes.end(), parts.begin(), parts.end());
    };
    if (!(size_ == size)) {
        size_ = size;
        changes.push_back(PixelArea::whole(size));
    }
    layers_ = layers;
    for (std::size_t i = 0; i < std::max(layers.size(), drawn_.size()); ++i) {
        if (i >= layers.size()) {
            add(drawn_[i].parts);
            continue;
        }
        const OverlayLayer& layer = layers[i];
        upload(layer);
        Drawn drawn = asDrawn(layer);
        if (i >= drawn_.size()) {
            add(drawn.parts);
            drawn_.push_back(std::move(drawn));
        } else if (drawn.looksLike(drawn_[i])) {
            for (const PixelRect& part : layer.changes)
                if (layer.opacity > 0) changes.push_back(onFramebuffer(layer.place, part));
            drawn_[i].parts = std::move(drawn.parts);
        } else {
            add(drawn_[i].parts);
            add(drawn.parts);
            drawn_[i] = std::move(drawn);
        }
    }
    drawn_.resize(layers.size());
    return changes;
}

void OverlayLayers::draw(const DrawTarget& target, std::span<const PixelArea> areas) {
    for (std::size_t i = 0; i < layers_.size(); ++i) {
        const OverlayLayer& layer = layers_[i];
        vertices_.clear();
        for (const PixelArea& part : drawn_[i].parts) {
            for (const PixelArea& area : areas) {
                const PixelArea visible = part.intersection(area);
                if (visible.empty()) continue;
                if (layer.isWash())
                    addGradient(layer, visible);
                else
                    addBitmap(layer, visible);
            }
        }
        if (!vertices_.empty()) drawVertices(target, layer);
    }
}

void OverlayLayers::drawVertices(const DrawTarget& target, const OverlayLayer& layer) {
    const bool isFaded = !layer.isWash() && layer.opacity < 1;
    ProgramKey key{ProgramKind::bitmap};
    key.features.set(Feature::plainColour, layer.isWash());
    key.features.set(Feature::faded, isFaded);
    DrawState state;
    state.target = target;
    state.program = &context_.programs.get(key);
    if (!layer.isWash()) state.textures = {{unitSource, {bitmaps_[layer.id].texture.name()}}};
    if (isFaded) state.uniforms = {{"opacity", static_cast<float>(layer.opacity)}};
    state.blending = Blending::over;
    const VertexRange all{0, context_.streams.bitmaps.upload(vertices_)};
    state.vertexArray = context_.streams.bitmaps.vertexArray();
    context_.device.draw(state, {&all, 1});
}

void OverlayLayers::upload(const OverlayLayer& layer) {
    if (layer.pixels == nullptr) return;
    Bitmap& bitmap = bitmaps_[layer.id];
    const PixelSize size = storedSize(layer);
    const bool isNew = !bitmap.texture || !(bitmap.size == size);
    if (!isNew && layer.changes.empty()) return;
    if (isNew) bitmap = {makeTexture(context_.device, size, Format::bgra8, Filter::nearest), size};
    const PixelRect whole{0, 0, layer.place.width, layer.place.height};
    for (const PixelRect& part : isNew ? std::span(&whole, 1) : layer.changes)
        uploadBitmapPart(bitmap.texture, {part.x, part.y, part.width, part.height},
                         layer.pixels + static_cast<std::ptrdiff_t>(part.y) * layer.strideBytes + part.x * 4,
                         layer.strideBytes);
}

void OverlayLayers::addGradient(const OverlayLayer& layer, const PixelArea& area) {
    const auto valueOf = [&](const GradientStop& stop) {
        const double a = stop.colour.a * layer.opacity;
        return Value{static_cast<float>(stop.colour.r * a), static_cast<float>(stop.colour.g * a),
                     static_cast<float>(stop.colour.b * a), static_cast<float>(a)};
    };
    const auto rowOf = [&](const GradientStop& stop) {
        return size_.height - layer.place.y - static_cast<int>(std::lround(stop.offset * layer.place.height));
    };
    for (std::size_t i = 0; i + 1 < layer.wash.size(); ++i) {
        const int top = rowOf(layer.wash[i]);
        const int bottom = rowOf(layer.wash[i + 1]);
        const PixelArea part = area.intersection({area.x, bottom, area.width, top - bottom});
        if (part.empty()) continue;
        const Value above = valueOf(layer.wash[i]);
        const Value below = valueOf(layer.wash[i + 1]);
        addRectangle(part, [&](int, int y) {
            const float share = static_cast<float>(y - bottom) / static_cast<float>(top - bottom);
            Value value;
            for (std::size_t k = 0; k < value.size(); ++k)
                value[k] = below[k] + (above[k] - below[k]) * share;
            return value;
        });
    }
}

void OverlayLayers::addBitmap(const OverlayLayer& layer, const PixelArea& area) {
    const int top = size_.height - layer.place.y;
    const PixelSize stored = storedSize(layer);
    addRectangle(area, [&](int x, int y) {
        return Value{static_cast<float>(x - layer.place.x) / static_cast<float>(stored.width),
                     static_cast<float>(top - y) / static_cast<float>(stored.height)};
    });
}

template <class ValueAt>
void OverlayLayers::addRectangle(const PixelArea& area, const ValueAt& valueAt) {
    const int left = area.x, right = area.right(), bottom = area.y, top = area.top();
    for (const auto& [x, y] : {std::pair(left, bottom),
                               {right, bottom},
                               {right, top},
                               {left, bottom},
                               {right, top},
                               {left, top}}) {
        vertices_.push_back(static_cast<float>(2.0 * x / size_.width - 1));
        vertices_.push_back(static_cast<float>(2.0 * y / size_.height - 1));
        const Value value = valueAt(x, y);
        vertices_.insert(vertices_.end(), value.begin(), value.end());
    }
}

}  // namespace gull
