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

    /// An empty one, to be replaced.
    Target() = default;
    /// Throws std::runtime_error when the context cannot draw into such a target.
    Target(GraphicsDevice& device, const PixelSize& size, const Description& description);

    explicit operator bool() const { return static_cast<bool>(framebuffer_); }
    const PixelSize& size() const { return size_; }
    unsigned framebuffer() const { return framebuffer_.name(); }
    /// Smooth between pixels; a multisampled target's holds all samples.
    TextureRef colour(std::size_t index = 0) const;
    /// Its own depth texture, not smooth; a multisampled target has none.
    TextureRef depth() const { return {depth_.name(), TextureRef::Kind::flat}; }

    /// All of it.
    DrawTarget whole() const { return {framebuffer(), PixelArea::whole(size_), {}}; }
    /// The first colour without the other attachments. A software rasteriser compiles a program for the
    /// formats of all attachments; through this a pass over the picture is compiled once.
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

/// A depth texture whose looks compare (less or equal passes), `size` texels a side. 16 bits.
Target makeShadowMap(GraphicsDevice& device, int size);

/// A picture of a few pixels that holds `value` in every channel, alpha 1: a stand-in that changes nothing.
/// No side is a power of two, as hardly any picture's is: a software rasteriser compiles programs again where
/// that differs.
Target plainTarget(GraphicsDevice& device, Format format, float value);

}  // namespace gull
