#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Raster/PixelRect.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace gull {

/// An image as a surface sees it; texture coordinate (0, 0) is its lower left corner, (1, 1) its upper right
/// one. Its pixels are drawn when somebody first asks for them, so a stage that
/// nobody renders costs no drawing. A texture may change afterwards, in whole or in part; whoever keeps a
/// copy elsewhere compares `version()` and asks what changed since.
class Texture {
  public:
    enum class Encoding { srgb, linear };  ///< linear: normal maps and other data

    /// `make` is called at the first image(), and again after forgetPixels(): it must make the same each
    /// time.
    Texture(Encoding encoding, std::function<Image()> make);
    Texture(Encoding encoding, Image image);

    Encoding encoding() const { return encoding_; }
    /// Unique in the process, never reused.
    std::uint64_t id() const { return id_; }
    const Image& image() const;
    /// True while the pixels exist.
    bool isDrawn() const { return drawn_; }
    /// Frees the pixels when they can be drawn again: whoever has a copy elsewhere needs them no more.
    /// Nothing happens to a texture that was changed.
    void forgetPixels() const;

    /// Replaces the pixels; the size stays.
    void replace(Image image);
    /// Copies `rect` of `source` (an image of the same size) into this texture.
    void update(const Image& source, const PixelRect& rect);
    /// 1 at first; rises with every change.
    std::uint64_t version() const { return version_; }
    /// The union of what changed after `version`, the whole picture when that is long ago; an empty rectangle
    /// when nothing did.
    PixelRect changedSince(std::uint64_t version) const;

  private:
    struct Change {
        std::uint64_t version;
        PixelRect rect;
    };
    void changed(const PixelRect& rect);

    Encoding encoding_;
    std::uint64_t id_;
    std::uint64_t version_ = 1;
    mutable bool drawn_ = false;
    mutable Image image_;
    mutable std::function<Image()> make_;
    std::vector<Change> changes_;
};

}  // namespace gull
