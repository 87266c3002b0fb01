#pragma once

#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/PixelRect.h"

#include <span>
#include <vector>

namespace gull {

/// One of the sheets that lie one over the other on a picture: a wash of colour, or a bitmap that is told
/// from the others by its number, so that whoever shows it need only fetch what changed. Fading and moving
/// a sheet changes neither. A plain value that borrows what it shows.
struct Sheet {
    using Area = PixelRect;

    int id = 0;          ///< small, and the same from picture to picture
    Area place;          ///< on the picture, whose edges it may cross
    double opacity = 1;  ///< 0 to 1
    /// Of a wash: its colours from top to bottom, two stops at least. A sheet without any is a bitmap.
    std::vector<GradientStop> wash;
    /// Premultiplied B G R A, row 0 at the top, as large as `place`.
    const unsigned char* pixels = nullptr;
    int strideBytes = 0;
    std::span<const Area> changes;   ///< parts of the bitmap that differ from the picture before
    std::span<const Area> coverage;  ///< parts outside of which the bitmap is clear; no two overlap

    bool isWash() const { return !wash.empty(); }
};

}  // namespace gull
