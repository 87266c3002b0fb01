#pragma once

#include "Engine/Render/Target.h"

namespace gull {

/// The fast tier's frame: the developed picture, the scene light that lies below the sea, and depth. Two
/// framebuffers share them, since the sea reads that light while it draws the picture.
class FrameTarget {
  public:
    FrameTarget() = default;
    explicit FrameTarget(const PixelSize& size);

    explicit operator bool() const { return static_cast<bool>(both_); }
    const PixelSize& size() const { return both_.size(); }
    const Target& both() const { return both_; }  ///< colours: picture, light
    /// Binds the picture and the depth alone.
    void bindPicture() const;

    unsigned picture() const { return both_.colour(0); }
    unsigned light() const { return both_.colour(1); }
    unsigned depth() const { return both_.depth(); }

  private:
    Target both_;
    GlFramebuffer pictureOnly_;
};

/// Copies `area` of one texture to the same place of another of its format and size, by the quickest way the
/// context has. `depth`: both are depth textures.
void copyArea(unsigned from, unsigned to, const PixelArea& area, bool depth);

}  // namespace gull
