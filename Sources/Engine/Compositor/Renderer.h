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

/// Draws a Stage with the current OpenGL context (4.1 core, or 3.3 with separate shader objects). The same
/// context must be current at every call, including the destructor. Single-threaded.
///
/// A frame consists of layers: everything that stands still is drawn and lit once and kept; each frame
/// restores it and draws water and moving things over it.
class Renderer {
  public:
    /// Throws std::runtime_error with a readable message when the context lacks something (its version is too
    /// old). So does any call that needs a program that does not compile.
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
    /// Draws `stage` into the whole of the framebuffer object `framebuffer` (0: the window's). Until the
    /// static layer reaches its final quality, the frame shows the best picture available.
    void draw(const Stage& stage, const PixelSize& size, unsigned framebuffer,
              BuildMode mode = BuildMode::gradual);
    /// Reports how many seconds of work the last frame took, including the overlay and presenting. On a
    /// software rasteriser this sets how much of the sea is redrawn per frame.
    void frameTook(double seconds);
    /// Waits until everything asked for is drawn.
    void finish();
    /// Compiles programs that play will ask for, for about `budget` seconds (at least one program). True when
    /// all are compiled.
    bool warmUp(double budget);
    /// True when the last draw() showed the static layer at final quality.
    bool settled() const;
    /// True when nothing but the water changed in the last draw(); always false in the full tier.
    bool onlyWaterMoved() const;

    /// Blends `layers`, back to front, over the framebuffer drawn last. A layer's changes count from the last
    /// call.
    void drawOverlay(std::span<const OverlayLayer> layers);

    /// Says whether the framebuffer still holds the last frame, overlay included (after a buffer swap a
    /// window's does not). If so, the next draw() changes only what differs; otherwise, or if not told, it
    /// draws everything.
    void setPicturePreserved(bool preserved);
    /// The areas where the framebuffer differs from the previous frame, counted from the top left; valid
    /// until the next draw().
    std::vector<PixelRect> changes() const;

    /// Draws `stage` off screen at the full tier, 4x multisampled, in one go, and returns the picture. A
    /// stage without background gives a transparent one. Does not touch the window's static layer.
    Image snapshot(const Stage& stage, const PixelSize& size);
    /// The pixels of the framebuffer drawn last.
    Image readBack(const PixelSize& size);

    /// Releases everything kept for stages and textures that no longer exist.
    void collectGarbage();
    /// For tests: the programs requested so far.
    std::vector<ProgramKey> programs() const;
    /// For tests: before each draw call, sets all state to useless values. See GraphicsDevice.
    void setSpoiling(bool spoiling);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
