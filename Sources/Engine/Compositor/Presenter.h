#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Gl/DrawState.h"

#include <glm/mat3x3.hpp>
#include <vector>

namespace gull {

struct RenderContext;

/// The framebuffer on display, and which of its parts change from frame to frame. If it preserves its
/// contents, only those parts are drawn again.
///
/// A frame: begin(); one of copy(), stretch() and bend(), perhaps fade(); then uncover() for anything on top
/// of the picture.
class Presenter {
  public:
    explicit Presenter(RenderContext& context) : context_(context) {}

    /// Says whether the framebuffer still holds the previous frame when the next one begins. begin() resets
    /// it to false.
    void setPreserved(bool preserved) { preserved_ = preserved; }

    /// Starts a frame on `framebuffer`, of `size`.
    void begin(unsigned framebuffer, const PixelSize& size);
    /// Copies `picture`, a texture of the framebuffer's size; `changes` is where it differs from the same
    /// texture in the previous frame.
    void copy(TextureRef picture, const std::vector<PixelArea>& changes);
    /// Stretches a picture of another size over all of it.
    void stretch(TextureRef picture);
    /// Draws a picture over all of it as bendPicture() does.
    void bend(TextureRef picture, const glm::dmat3& toPicture);
    /// Blends a picture of any size over all of it.
    void fade(TextureRef picture, double opacity);
    /// Restores the bare picture in `areas`, where something on top of it changed, and returns everything
    /// that changed in this frame: the areas where the overlay must be drawn again. They do not overlap.
    const std::vector<PixelArea>& uncover(const std::vector<PixelArea>& areas);
    /// The areas that the last frame changed.
    const std::vector<PixelArea>& changes() const { return changes_; }

    DrawTarget target() const { return {framebuffer_, PixelArea::whole(size()), {}}; }
    const PixelSize& size() const { return squares_.size(); }

  private:
    void redrawn();

    RenderContext& context_;
    DirtySquares squares_;
    std::vector<PixelArea> changes_;
    TextureRef picture_;  ///< the one shown by the framebuffer; empty: another one
    unsigned framebuffer_ = 0;
    bool preserved_ = false;
};

}  // namespace gull
