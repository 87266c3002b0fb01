#include "Engine/Stage/Texture.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace gull {

namespace {

// How many changes are remembered. A reader that missed more gets the whole picture again.
constexpr std::size_t rememberedChanges = 64;

std::uint64_t nextId() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

PixelRect united(const PixelRect& a, const PixelRect& b) {
    if (a.width == 0 || a.height == 0) return b;
    const int left = std::min(a.x, b.x);
    const int top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.width, b.x + b.width) - left,
            std::max(a.y + a.height, b.y + b.height) - top};
}

}  // namespace

Texture::Texture(std::function<Image()> make) : id_(nextId()), make_(std::move(make)) {}

Texture::Texture(Image image) : id_(nextId()), drawn_(true), image_(std::move(image)) {}

const Image& Texture::image() const {
    if (!drawn_) {
        image_ = make_();
        drawn_ = true;
    }
    return image_;
}

void Texture::forgetPixels() const {
    if (!make_) return;
    image_ = Image();
    drawn_ = false;
}

void Texture::replace(Image image) {
    const Image& old = this->image();
    require(image.width == old.width && image.height == old.height,
            "a texture of {} x {} was replaced by one of {} x {}", old.width, old.height, image.width,
            image.height);
    image_ = std::move(image);
    changed({0, 0, image_.width, image_.height});
}

void Texture::update(const Image& source, const PixelRect& rect) {
    const Image& old = image();
    require(source.width == old.width && source.height == old.height,
            "a texture of {} x {} was updated from one of {} x {}", old.width, old.height, source.width,
            source.height);
    const int left = std::clamp(rect.x, 0, old.width);
    const int top = std::clamp(rect.y, 0, old.height);
    const int right = std::clamp(rect.x + rect.width, left, old.width);
    const int bottom = std::clamp(rect.y + rect.height, top, old.height);
    if (left == right || top == bottom) return;
    for (int y = top; y < bottom; ++y) {
        std::memcpy(image_.at(left, y), source.at(left, y), static_cast<std::size_t>(right - left) * 4);
    }
    changed({left, top, right - left, bottom - top});
}

void Texture::changed(const PixelRect& rect) {
    ++version_;
    make_ = nullptr;
    changes_.push_back({version_, rect});
    if (changes_.size() > rememberedChanges) changes_.erase(changes_.begin());
}

PixelRect Texture::changedSince(std::uint64_t version) const {
    if (version >= version_) return {};
    if (changes_.empty() || version + 1 < changes_.front().version) {
        return {0, 0, image().width, image().height};
    }
    PixelRect rect;
    for (const Change& change : changes_) {
        if (change.version > version) rect = united(rect, change.rect);
    }
    return rect;
}

}  // namespace gull
