#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Gl/DrawState.h"

#include <glm/mat3x3.hpp>
#include <vector>

namespace gull {

struct RenderContext;

/// The framebuffer that is shown, and which parts of it change from frame to frame. One that keeps what was
/// drawn into it gets only those parts again.
///
/// A frame: begin(); one of copy(), stretch() and bend(), perhaps fade(); then uncover() for what lies over
/// the picture.
class Presenter {
  public:
    explicit Presenter(RenderContext& context) : context_(context) {}

    /// Whether the framebuffer still holds the frame before when the next one begins; false after each
    /// begin().
    void setPreserved(bool preserved) { preserved_ = preserved; }

    /// The frame goes to `framebuffer`, of `size`.
    void begin(unsigned framebuffer, const PixelSize& size);
    /// Brings `picture`, a texture of the framebuffer's size, onto it; `changes` is where it differs from
    /// what the same texture held in the frame before.
    void copy(TextureRef picture, const std::vector<PixelArea>& changes);
    /// Brings a picture of another size onto all of it.
    void stretch(TextureRef picture);
    /// Brings a picture onto all of it as bendPicture() does.
    void bend(TextureRef picture, const glm::dmat3& toPicture);
    /// Blends a picture of any size over all of it.
    void fade(TextureRef picture, double opacity);
    /// Brings the bare picture back in `areas`, where what lies over it changed, and returns all that changed
    /// in this frame: there it must be laid over again. The areas returned do not overlap.
    const std::vector<PixelArea>& uncover(const std::vector<PixelArea>& areas);
    /// What the last frame changed.
    const std::vector<PixelArea>& changes() const { return changes_; }

    DrawTarget target() const { return {framebuffer_, PixelArea::whole(size()), {}}; }
    const PixelSize& size() const { return squares_.size(); }

  private:
    void redrawn();

    RenderContext& context_;
    DirtySquares squares_;
    std::vector<PixelArea> changes_;
    TextureRef picture_;  ///< that the framebuffer shows; none: another one
    unsigned framebuffer_ = 0;
    bool preserved_ = false;
};

}  // namespace gull
