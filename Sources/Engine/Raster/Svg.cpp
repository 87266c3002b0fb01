#include "Engine/Raster/Svg.h"

#include "Engine/Log/Require.h"
#include "Engine/Raster/CanvasImpl.h"

#include <cairo-svg.h>

namespace gull {

namespace {

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::string drawnAsSvg(double width, double height, const std::function<void(Canvas&)>& draw) {
    Canvas canvas(width, height);
    std::string text;
    cairo_surface_t* surface = cairo_svg_surface_create_for_stream(append, &text, width, height);
    canvas.impl_->drawOn(surface);
    draw(canvas);
    cairo_surface_finish(surface);
    const cairo_status_t status = cairo_surface_status(surface);
    require(status == CAIRO_STATUS_SUCCESS, "drawnAsSvg: {}", cairo_status_to_string(status));
    return text;
}

}  // namespace gull
