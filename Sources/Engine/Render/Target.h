#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/PixelArea.h"

#include <vector>

namespace gull {

/// Pixel formats that targets are made of. bgra8: rgba8 with its bytes in the order of windows, where the
/// driver agrees.
enum class Format { none, r8, rgba8, bgra8, rgba16f, depth16, depth24 };

/// A framebuffer with its attachments: textures. A multisampled one is averaged by ResolvePass.
class Target {
  public:
    struct Description {
        std::vector<Format> colours;
        Format depth = Format::none;
        int samples = 1;
        unsigned sharedDepth = 0;  ///< a depth texture of that size, to be used instead of one of its own
    };

    Target() = default;
    /// Throws std::runtime_error when the context cannot draw into such a target.
    Target(const PixelSize& size, const Description& description);

    explicit operator bool() const { return static_cast<bool>(framebuffer_); }
    const PixelSize& size() const { return size_; }
    unsigned framebuffer() const { return framebuffer_.name(); }
    /// Texture names; a multisampled target's hold all samples, and its depth is none.
    unsigned colour(std::size_t index = 0) const { return colours_[index].name(); }
    unsigned depth() const { return depth_.name(); }

    /// Binds it for drawing with the viewport at its whole size.
    void bind() const;

  private:
    PixelSize size_;
    GlFramebuffer framebuffer_;
    std::vector<GlTexture> colours_;
    GlTexture depth_;
    GlRenderbuffer samplesDepth_;  ///< of a multisampled target
};

/// A picture of a few pixels that holds `value` in every channel, alpha 1: what stands in where there is
/// none. No side is a power of two, as hardly any picture's is: a rasteriser in software compiles programs
/// anew where that differs.
Target plainTarget(Format format, float value);

}  // namespace gull
