#include "Engine/Raster/Png.h"

#include <cairo.h>

#include <algorithm>
#include <cstring>

namespace gull {

namespace {

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    auto& bytes = *static_cast<std::vector<std::uint8_t>*>(closure);
    bytes.insert(bytes.end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

struct Reader {
    const std::vector<std::uint8_t>& bytes;
    std::size_t position = 0;
};

cairo_status_t take(void* closure, unsigned char* data, unsigned int length) {
    auto& reader = *static_cast<Reader*>(closure);
    if (reader.bytes.size() - reader.position < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, reader.bytes.data() + reader.position, length);
    reader.position += length;
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> encodePng(const Image& image) {
    if (image.empty()) return std::nullopt;
    bool opaque = true;
    for (std::size_t i = 3; i < image.pixels.size(); i += 4) opaque = opaque && image.pixels[i] == 255;

    cairo_surface_t* surface = cairo_image_surface_create(opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
                                                          image.width, image.height);
    std::optional<std::vector<std::uint8_t>> result;
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
        const int stride = cairo_image_surface_get_stride(surface);
        unsigned char* data = cairo_image_surface_get_data(surface);
        for (int y = 0; y < image.height; ++y) {
            const std::uint8_t* from = image.at(0, y);
            unsigned char* to = data + static_cast<std::ptrdiff_t>(y) * stride;
            for (int x = 0; x < image.width; ++x, from += 4, to += 4) {
                const std::uint32_t pixel = static_cast<std::uint32_t>(from[3]) << 24 |
                                            static_cast<std::uint32_t>(from[0]) << 16 |
                                            static_cast<std::uint32_t>(from[1]) << 8 | from[2];
                std::memcpy(to, &pixel, 4);
            }
        }
        cairo_surface_mark_dirty(surface);
        std::vector<std::uint8_t> bytes;
        if (cairo_surface_write_to_png_stream(surface, append, &bytes) == CAIRO_STATUS_SUCCESS) {
            result = std::move(bytes);
        }
    }
    cairo_surface_destroy(surface);
    return result;
}

std::optional<Image> decodePng(const std::vector<std::uint8_t>& bytes) {
    Reader reader{bytes};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(take, &reader);
    std::optional<Image> result;
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
        const cairo_format_t format = cairo_image_surface_get_format(surface);
        if (format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24) {
            Image image(cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface));
            const int stride = cairo_image_surface_get_stride(surface);
            const unsigned char* data = cairo_image_surface_get_data(surface);
            for (int y = 0; y < image.height; ++y) {
                const unsigned char* from = data + static_cast<std::ptrdiff_t>(y) * stride;
                std::uint8_t* to = image.at(0, y);
                for (int x = 0; x < image.width; ++x, from += 4, to += 4) {
                    std::uint32_t pixel = 0;
                    std::memcpy(&pixel, from, 4);
                    to[0] = static_cast<std::uint8_t>(pixel >> 16);
                    to[1] = static_cast<std::uint8_t>(pixel >> 8);
                    to[2] = static_cast<std::uint8_t>(pixel);
                    to[3] = format == CAIRO_FORMAT_RGB24 ? 255 : static_cast<std::uint8_t>(pixel >> 24);
                }
            }
            result = std::move(image);
        }
    }
    cairo_surface_destroy(surface);
    return result;
}

}  // namespace gull
