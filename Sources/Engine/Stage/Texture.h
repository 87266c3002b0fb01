#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Raster/PixelRect.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace gull {

/// An image used by materials; texture coordinate (0, 0) is its lower left corner, (1, 1) its upper right
/// one. What its values mean follows from its use: colours are sRGB, normals linear. Its pixels are drawn on
/// first use, so a stage that nobody renders costs no drawing. A texture may change later, in whole or in
/// part; the owner of a copy compares `version()` and asks what changed since.
class Texture {
  public:
    /// `make` is called by the first image() and again after forgetPixels(); it must return the same image
    /// each time.
    explicit Texture(std::function<Image()> make);
    explicit Texture(Image image);

    /// Unique in the process, never reused.
    std::uint64_t id() const { return id_; }
    const Image& image() const;
    /// True while the pixels exist.
    bool isDrawn() const { return drawn_; }
    /// Frees the pixels if they can be drawn again; for callers that hold a copy elsewhere. Does nothing to a
    /// texture that was changed.
    void forgetPixels() const;

    /// Replaces the pixels; the size stays.
    void replace(Image image);
    /// Copies `rect` of `source` (an image of the same size) into this texture.
    void update(const Image& source, const PixelRect& rect);
    /// Starts at 1 and increases with every change.
    std::uint64_t version() const { return version_; }
    /// The union of the changes after `version`, or the whole picture if `version` is too old; empty if
    /// nothing changed.
    PixelRect changedSince(std::uint64_t version) const;

  private:
    struct Change {
        std::uint64_t version;
        PixelRect rect;
    };
    void changed(const PixelRect& rect);

    std::uint64_t id_;
    std::uint64_t version_ = 1;
    mutable bool drawn_ = false;
    mutable Image image_;
    mutable std::function<Image()> make_;
    std::vector<Change> changes_;
};

}  // namespace gull
