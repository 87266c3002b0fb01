#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Stage/Texture.h"
#include "GullCore/Beach.h"

#include <memory>

namespace gull {

/// The bitmap that is multiplied onto the sand of the plot: each sweep of the coil leaves a faint stamp, each
/// dig a dark hole. The plot's seaward edge is the top row; a margin of 2 pixels stays free all round.
class TrailCanvas {
  public:
    static constexpr int width = 640;   ///< pixels
    static constexpr int height = 400;  ///< pixels

    /// White, and dirty.
    TrailCanvas();

    /// Wipes everything away.
    void reset();
    /// A soft mark that never darkens what was swept before.
    void sweep(const PlotPoint& at);
    /// A hole: darker than any sweep, and no sweep lightens it.
    void hole(const PlotPoint& at);

    /// True when the bitmap changed since it was last handed over.
    bool dirty() const { return dirty_.width > 0; }
    /// Copies what changed into texture() and returns where that is (row 0 at the top); nothing changed: an
    /// empty rectangle.
    PixelRect upload();
    /// What the sand wears; lasts as long as the canvas.
    const std::shared_ptr<Texture>& texture() const { return texture_; }

  private:
    struct Stamp;
    void stamp(const PlotPoint& at, const Stamp& shape);

    Image image_;
    std::shared_ptr<Texture> texture_;
    PixelRect dirty_;
};

}  // namespace gull
