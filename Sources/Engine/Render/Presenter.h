#pragma once

#include "Engine/Render/CopyPass.h"
#include "Engine/Render/DirtySquares.h"

#include <vector>

namespace gull {

/// The framebuffer that is shown, and which parts of it change from frame to frame. One that keeps what was
/// drawn into it gets only those parts again.
///
/// A frame: begin(); one of copy(), stretch() and bend(), perhaps fade(); then uncover() for what lies over
/// the picture.
class Presenter {
  public:
    explicit Presenter(const CopyPass& pass) : pass_(pass) {}

    /// Whether the framebuffer still holds the frame before when the next one begins; false after each
    /// begin().
    void setKept(bool kept) { kept_ = kept; }

    /// Leaves `framebuffer`, of `size`, bound.
    void begin(unsigned framebuffer, const PixelSize& size);
    /// Brings `picture`, a texture of the framebuffer's size, onto it; `changes` is where it differs from
    /// what the same texture held in the frame before.
    void copy(unsigned picture, const std::vector<PixelArea>& changes);
    /// Brings a picture of another size onto all of it.
    void stretch(unsigned picture);
    /// Brings a picture onto all of it as CopyPass::drawBent does.
    void bend(unsigned picture, const glm::dmat3& toPicture);
    /// Blends a picture of any size over all of it.
    void fade(unsigned picture, double opacity);
    /// Brings the bare picture back in `areas`, where what lies over it changed, and returns all that changed
    /// in this frame: there it is to be laid over anew. The areas returned do not overlap.
    const std::vector<PixelArea>& uncover(const std::vector<PixelArea>& areas);
    /// What the last frame changed.
    const std::vector<PixelArea>& changes() const { return changes_; }

    unsigned framebuffer() const { return framebuffer_; }
    const PixelSize& size() const { return squares_.size(); }

  private:
    void redrawn();

    const CopyPass& pass_;
    DirtySquares squares_;
    std::vector<PixelArea> changes_;
    unsigned picture_ = 0;  ///< that the framebuffer shows; 0: another one
    unsigned framebuffer_ = 0;
    bool kept_ = false;
};

}  // namespace gull
