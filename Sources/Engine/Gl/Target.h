#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Gl/GlObjects.h"
#include "Engine/Gl/PixelArea.h"
#include "Engine/Gl/TextureRef.h"
#include "Engine/Gl/Textures.h"

#include <vector>

namespace gull {

class GraphicsDevice;

/// A framebuffer with its attachments: textures that later passes read.
class Target {
  public:
    struct Description {
        std::vector<Format> colours;
        Format depth = Format::none;
        int samples = 1;
        TextureRef sharedDepth = {};  ///< a depth texture of that size, used instead of one of its own
    };

    /// An empty target, to be replaced.
    Target() = default;
    /// Throws std::runtime_error when the context cannot draw into such a target.
    Target(GraphicsDevice& device, const PixelSize& size, const Description& description);

    explicit operator bool() const { return static_cast<bool>(framebuffer_); }
    const PixelSize& size() const { return size_; }
    unsigned framebuffer() const { return framebuffer_.name(); }
    /// Linearly filtered. A multisampled target's texture holds all samples.
    TextureRef colour(std::size_t index = 0) const;
    /// Its own depth texture, unfiltered; a multisampled target has none.
    TextureRef depth() const { return {depth_.name(), TextureRef::Kind::flat}; }

    /// Draws into all of it.
    DrawTarget whole() const { return {framebuffer(), PixelArea::whole(size_), {}}; }
    /// The first colour without the other attachments. A software rasteriser compiles a program for the
    /// formats of all attachments; with this target, a pass over the picture compiles only once.
    DrawTarget firstColour() const;

  private:
    GlTexture attach(GraphicsDevice& device, unsigned point, Format format, int samples);
    void checkComplete() const;

    PixelSize size_;
    GlFramebuffer framebuffer_;
    GlFramebuffer firstColour_;
    std::vector<GlTexture> colours_;
    GlTexture depth_;
    GlRenderbuffer samplesDepth_;  ///< of a multisampled target
    bool multisampled_ = false;
};

/// Replaces `target` unless it has this size already; true when it was replaced.
bool ensureSize(GraphicsDevice& device, Target& target, const PixelSize& size,
                const Target::Description& description);

/// A 16-bit depth texture, `size` texels a side, whose lookups compare (less or equal passes).
Target makeShadowMap(GraphicsDevice& device, int size);

/// A picture of a few pixels with `value` in every channel and alpha 1: a stand-in that changes nothing. Its
/// sides are not powers of two, because those of most pictures are not, and a software rasteriser compiles a
/// program again for power-of-two textures.
Target plainTarget(GraphicsDevice& device, Format format, float value);

}  // namespace gull
