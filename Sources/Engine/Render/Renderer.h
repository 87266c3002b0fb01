#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Raster/PixelRect.h"
#include "Engine/Raster/Sheet.h"
#include "Engine/Stage/Stage.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gull {

/// How much work a frame may cost. `full`: multisampled, everything at full resolution. `fast`: the same
/// picture for machines without a GPU; see Docs/architecture.md.
enum class RenderTier { full, fast };

/// What the current OpenGL context is, for diagnosis and for the choice of tier.
struct GraphicsInfo {
    std::string vendor;
    std::string renderer;
    std::string version;
    bool isSoftware = false;  ///< a rasteriser on the CPU
    int maximumSize = 0;      ///< of a picture's side, pixels
};

/// Draws a Stage with whichever OpenGL context (4.1 core, or 3.3 with separate shader objects) is current;
/// the same one must be current at every call, the destructor's included. Single-threaded.
///
/// A frame is two layers: what rests is drawn once, lit, and kept; each frame restores it and draws what
/// moves.
class Renderer {
  public:
    struct Size {
        int width = 0;  ///< pixels
        int height = 0;
        bool operator==(const Size&) const = default;
    };

    /// Compiles what every frame needs. Throws std::runtime_error with a readable message when the context
    /// lacks something (its version is too old) or a program does not compile.
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    static GraphicsInfo graphicsInfo();

    /// Takes effect at once, but that what is kept stays until it is drawn anew.
    void setTier(RenderTier tier);
    RenderTier tier() const;

    /// Fills the framebuffer object `framebuffer` (0: the window's) with two plain colours, `above` down to
    /// `share` of its height: something to look at until the first picture is there.
    void sketch(const Size& size, unsigned framebuffer, const Colour& above, const Colour& below,
                double share);
    /// Draws `stage` into the framebuffer object `framebuffer` (0: the window's), whole size, and leaves it
    /// bound. While the kept layer is not up to date at its final quality the frame shows the best there is
    /// and goes on building it within a few milliseconds a frame; `wait` builds it to the end first.
    void draw(const Stage& stage, const Size& size, unsigned framebuffer, bool wait = false);
    /// Tells how many seconds of work the last frame took, overlay and the way to the screen included. Where
    /// the processor draws, what drifts then takes more or less of the next ones.
    void frameTook(double seconds);
    /// Draws `stage` once more where nobody sees it, over the kept layer drawn last: what is in it now and
    /// was not before gets its programs compiled. Works for about `budget` seconds; true when all of it was
    /// drawn, else the next call, with the same in the stage, goes on. Needs a kept layer.
    bool rehearse(const Stage& stage, double budget);
    /// True when the last draw() showed the kept layer at final quality.
    bool settled() const;

    /// Blends `sheets`, back to front, over the framebuffer drawn last. A sheet's changes are those since the
    /// last call.
    void drawOverlay(std::span<const Sheet> sheets);

    /// Tells whether the framebuffer still holds what was drawn into it last, sheets included (after a swap
    /// of buffers a window's does not). Then the next draw() changes only what differs; otherwise, or untold,
    /// it draws all.
    void setPictureKept(bool kept);
    /// Where the framebuffer differs from the frame before, from the top left; valid until the next draw().
    std::vector<PixelRect> changes() const;

    /// Draws `stage` off screen at the full tier, 4x multisampled, complete, and returns the picture. A stage
    /// without background gives a transparent one. The kept layer of the window is left alone.
    Image snapshot(const Stage& stage, const Size& size);
    /// The pixels of the framebuffer drawn last.
    Image readBack(const Size& size);

    /// Forgets everything kept for stages and textures that no longer exist.
    void collectGarbage();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
