#pragma once

#include "Engine/Compositor/RenderTier.h"
#include "Engine/Gl/GraphicsInfo.h"
#include "Engine/Raster/Image.h"
#include "Engine/Raster/OverlayLayer.h"
#include "Engine/Raster/PixelRect.h"
#include "Engine/Raster/PixelSize.h"
#include "Engine/Render/ProgramKey.h"
#include "Engine/Stage/Stage.h"

#include <memory>
#include <span>
#include <vector>

namespace gull {

/// Draws a Stage with whichever OpenGL context (4.1 core, or 3.3 with separate shader objects) is current;
/// the same one must be current at every call, the destructor's included. Single-threaded.
///
/// A frame is layers: what stands still is drawn once, lit, and kept; each frame restores it and draws water
/// and moving things over it.
class Renderer {
  public:
    /// Throws std::runtime_error with a readable message when the context lacks something (its version is too
    /// old); so does any call that needs a program that does not compile.
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// Takes effect immediately; the static layer keeps its quality until it is rebuilt.
    void setTier(RenderTier tier);
    RenderTier tier() const;

    /// Fills the framebuffer object `framebuffer` (0: the window's) with two plain colours, `above` down to
    /// `share` of its height: something to look at until the first picture is there.
    void fillPlaceholder(const PixelSize& size, unsigned framebuffer, const Colour& above,
                         const Colour& below, double share);
    /// Draws `stage` into the framebuffer object `framebuffer` (0: the window's), whole size. While the
    /// static layer is not up to date at its final quality the frame shows the best there is.
    void draw(const Stage& stage, const PixelSize& size, unsigned framebuffer,
              BuildMode mode = BuildMode::gradual);
    /// Tells how many seconds of work the last frame took, overlay and the way to the screen included. On a
    /// software rasteriser this sets how much of the sea is redrawn per frame.
    void frameTook(double seconds);
    /// Compiles programs that play will ask for and that are not there yet, for about `budget` seconds (at
    /// least one program); true when none is left.
    bool warmUp(double budget);
    /// True when the last draw() showed the static layer at final quality.
    bool settled() const;

    /// Blends `layers`, back to front, over the framebuffer drawn last. A layer's changes are those since the
    /// last call.
    void drawOverlay(std::span<const OverlayLayer> layers);

    /// Tells whether the framebuffer still holds what was drawn into it last, overlay included (after a swap
    /// of buffers a window's does not). Then the next draw() changes only what differs; otherwise, or untold,
    /// it draws all.
    void setPicturePreserved(bool preserved);
    /// Where the framebuffer differs from the frame before, from the top left; valid until the next draw().
    std::vector<PixelRect> changes() const;

    /// Draws `stage` off screen at the full tier, 4x multisampled, complete, and returns the picture. A stage
    /// without background gives a transparent one. The window's static layer is left alone.
    Image snapshot(const Stage& stage, const PixelSize& size);
    /// The pixels of the framebuffer drawn last.
    Image readBack(const PixelSize& size);

    /// Forgets everything kept for stages and textures that no longer exist.
    void collectGarbage();
    /// For tests: the programs that have been asked for.
    std::vector<ProgramKey> programs() const;
    /// For tests: before each draw call, sets all state to something useless. See GraphicsDevice.
    void setSpoiling(bool spoiling);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
