#pragma once

#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/PixelRect.h"

#include <span>
#include <vector>

namespace gull {

/// One of the overlay layers stacked on a picture: a plain gradient or a bitmap. The bitmap is identified by
/// `id`, so whoever shows it only fetches what changed; fading and moving a layer change neither. A plain
/// value that borrows its pixels.
struct OverlayLayer {
    using Area = PixelRect;

    int id = 0;          ///< small, and the same from picture to picture
    Area place;          ///< on the picture; may extend beyond it
    double opacity = 1;  ///< 0 to 1
    /// The colours of a gradient from top to bottom, at least two stops. Without stops the layer is a bitmap.
    std::vector<GradientStop> wash;
    /// Premultiplied B G R A, row 0 at the top, as large as `place`.
    const unsigned char* pixels = nullptr;
    int strideBytes = 0;
    std::span<const Area> changes;   ///< parts of the bitmap that differ from the previous picture
    std::span<const Area> coverage;  ///< parts outside of which the bitmap is clear; no two overlap

    bool isWash() const { return !wash.empty(); }
};

}  // namespace gull
