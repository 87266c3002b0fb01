#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Stage/Texture.h"
#include "GullCore/Beach.h"

#include <memory>

namespace gull {

/// The bitmap that is multiplied onto the sand of the plot: each sweep of the coil leaves a faint stamp, each
/// dig a dark hole. The seaward edge of the plot is the top row; a margin of 2 pixels stays white on all
/// sides.
class TrailCanvas {
  public:
    static constexpr int width = 640;   ///< pixels
    static constexpr int height = 400;  ///< pixels

    /// Initially white, and dirty.
    TrailCanvas();

    /// Erases all marks.
    void reset();
    /// A soft mark that never darkens what was swept before.
    void sweep(const PlotPoint& at);
    /// A hole: darker than any sweep, and no sweep lightens it.
    void hole(const PlotPoint& at);

    /// True when the bitmap changed since it was last handed over.
    bool dirty() const { return dirty_.width > 0; }
    /// Copies the changes into texture() and returns their bounds (row 0 at the top), empty if nothing
    /// changed.
    PixelRect upload();
    /// The texture for the sand; lives as long as the canvas.
    const std::shared_ptr<Texture>& texture() const { return texture_; }

  private:
    struct Stamp;
    void stamp(const PlotPoint& at, const Stamp& shape);

    Image image_;
    std::shared_ptr<Texture> texture_;
    PixelRect dirty_;
};

}  // namespace gull
