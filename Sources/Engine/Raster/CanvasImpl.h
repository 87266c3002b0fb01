#pragma once

#include "Engine/Raster/Blur.h"
#include "Engine/Raster/Canvas.h"

#include <list>
#include <memory>
#include <vector>

// Cairo's types by name only: its headers stay in the sources.
struct _cairo;
struct _cairo_surface;

namespace gull {

/// The implementation of Canvas, private to this room. Drawing goes to `context`: the canvas itself or the
/// innermost open group.
struct Canvas::Impl {
    /// A layer or a shadow. Its drawing is recorded, so that only the pixels it touches are blurred or
    /// blended at its end.
    struct Group {
        _cairo* outer = nullptr;  ///< where the group ends up
        _cairo_surface* recording = nullptr;
        double opacity = 1;
        bool shadow = false;
        Colour shadowColour;
        double radius = 0;
        double dx = 0;
        double dy = 0;
    };

    /// A shadow drawn earlier: its shape and the blurred result.
    struct KeptShadow {
        double sigma = 0;
        AlphaPlane shape;
        AlphaPlane blurred;
    };
    static constexpr std::size_t keptShadows = 24;

    /// An image at the size it was last drawn at, identified by a hash of its pixels.
    struct KeptImage {
        std::uint64_t hash = 0;
        int sourceHeight = 0;
        int width = 0;
        int height = 0;
        _cairo_surface* surface = nullptr;
    };
    static constexpr std::size_t keptImages = 48;

    Impl(double canvasWidth, double canvasHeight, double pixelsPerPoint);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    /// Draws there from now on, at the same scale; `target` belongs to this object then. Only where it is a
    /// bitmap do the canvas's pixels exist.
    void drawOn(_cairo_surface* target);
    void beginGroup(Group group);
    Group endGroup(bool shadow);
    /// The blurred form of a drawn shape, cached or newly made.
    const AlphaPlane& blurredShape(const AlphaPlane& drawn, double sigma);
    void castShadow(const Group& group);
    /// Draws the recorded group onto the outer context.
    void paint(const Group& group);
    void drawImage(const Image& image, const Rect& rect, double opacity);
    /// Belongs to this canvas; valid until the next call.
    _cairo_surface* scaledImage(const Image& image, int pixelWidth, int pixelHeight);

    double width;
    double height;
    double scale;
    _cairo_surface* surface = nullptr;
    _cairo* context = nullptr;
    std::vector<Group> groups;
    AlphaPlane shape;               ///< scratch
    std::list<KeptShadow> shadows;  ///< most recently used first
    std::list<KeptImage> images;    ///< likewise
};

}  // namespace gull
