#include "Engine/Raster/CanvasImpl.h"

#include "Engine/Log/Require.h"
#include "Engine/Raster/Resample.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace gull {

namespace {

/// How far a flattened curve may deviate from the true one, pixels. The usual tenth shows on small circles.
constexpr double curveTolerance = 0.03;

struct PixelBox {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool empty() const { return width <= 0 || height <= 0; }
};

/// The extent of the recorded drawing, grown by `margin` and clipped to what `outer` shows.
PixelBox inkBox(cairo_surface_t* recording, cairo_t* outer, int margin) {
    double x = 0, y = 0, width = 0, height = 0;
    cairo_recording_surface_ink_extents(recording, &x, &y, &width, &height);
    if (width <= 0 || height <= 0) return {};
    cairo_matrix_t matrix;
    cairo_get_matrix(outer, &matrix);
    cairo_identity_matrix(outer);
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(outer, &left, &top, &right, &bottom);
    cairo_set_matrix(outer, &matrix);
    const double x0 = std::max(std::floor(x), std::floor(left) - margin) - margin;
    const double y0 = std::max(std::floor(y), std::floor(top) - margin) - margin;
    const double x1 = std::min(std::ceil(x + width), std::ceil(right) + margin) + margin;
    const double y1 = std::min(std::ceil(y + height), std::ceil(bottom) + margin) + margin;
    return {static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1 - x0), static_cast<int>(y1 - y0)};
}

cairo_surface_t* imageOf(const Image& image) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height);
    unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < image.height; ++y) {
        const std::uint8_t* from = image.at(0, y);
        unsigned char* to = data + static_cast<std::ptrdiff_t>(y) * stride;
        for (int x = 0; x < image.width; ++x, from += 4, to += 4) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
            to[3] = from[3];
        }
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

/// A hash of the pixels, four words in parallel, since an icon is hashed whenever it is drawn.
std::uint64_t fingerprint(const Image& image) {
    std::array<std::uint64_t, 4> lanes{1, 2, 3, static_cast<std::uint64_t>(image.width)};
    auto mix = [](std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * 0xD6E8FEB86659FD93ULL;
        return hash ^ (hash >> 32);
    };
    const std::size_t size = image.pixels.size();
    std::size_t i = 0;
    for (; i + 32 <= size; i += 32) {
        std::array<std::uint64_t, 4> words;
        std::memcpy(words.data(), &image.pixels[i], 32);
        for (std::size_t lane = 0; lane < 4; ++lane) lanes[lane] = mix(lanes[lane], words[lane]);
    }
    for (; i < size; ++i) lanes[0] = mix(lanes[0], image.pixels[i]);
    return mix(mix(lanes[0], lanes[1]), mix(lanes[2], lanes[3]));
}

}  // namespace

Canvas::Impl::Impl(double canvasWidth, double canvasHeight, double pixelsPerPoint)
    : width(canvasWidth), height(canvasHeight), scale(pixelsPerPoint) {
    const double pixelWidth = std::ceil(width * scale);
    const double pixelHeight = std::ceil(height * scale);
    const bool sane = pixelWidth >= 0 && pixelHeight >= 0 && pixelWidth < 32768 && pixelHeight < 32768;
    surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, sane ? static_cast<int>(pixelWidth) : -1,
                                         sane ? static_cast<int>(pixelHeight) : -1);
    const cairo_status_t status = cairo_surface_status(surface);
    require(status == CAIRO_STATUS_SUCCESS, "Canvas: no bitmap of {} by {} points at scale {}: {}", width,
            height, scale, cairo_status_to_string(status));
    drawOn(surface);
}

void Canvas::Impl::drawOn(cairo_surface_t* target) {
    cairo_destroy(context);
    if (target != surface) cairo_surface_destroy(surface);
    surface = target;
    context = cairo_create(surface);
    cairo_set_tolerance(context, curveTolerance);
    cairo_scale(context, scale, scale);
}

Canvas::Impl::~Impl() {
    for (KeptImage& kept : images) cairo_surface_destroy(kept.surface);
    while (!groups.empty()) {
        cairo_destroy(context);
        cairo_surface_destroy(groups.back().recording);
        context = groups.back().outer;
        groups.pop_back();
    }
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}

void Canvas::Impl::beginGroup(Group group) {
    group.outer = context;
    group.recording = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr);
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    context = cairo_create(group.recording);
    cairo_set_tolerance(context, curveTolerance);
    cairo_set_matrix(context, &matrix);
    groups.push_back(group);
}

Canvas::Impl::Group Canvas::Impl::endGroup(bool shadow) {
    require(!groups.empty() && groups.back().shadow == shadow,
            "Canvas: end of a {} that was not begun ({} groups open)", shadow ? "shadow" : "layer",
            groups.size());
    cairo_destroy(context);
    Group group = groups.back();
    groups.pop_back();
    context = group.outer;
    cairo_new_path(context);
    return group;
}

const AlphaPlane& Canvas::Impl::blurredShape(const AlphaPlane& drawn, double sigma) {
    for (auto kept = shadows.begin(); kept != shadows.end(); ++kept) {
        if (kept->sigma == sigma && kept->shape.width == drawn.width && kept->shape.height == drawn.height &&
            kept->shape.values == drawn.values) {
            shadows.splice(shadows.begin(), shadows, kept);
            return shadows.front().blurred;
        }
    }
    if (shadows.size() < keptShadows) {
        shadows.emplace_front();
    } else {
        shadows.splice(shadows.begin(), shadows, std::prev(shadows.end()));
    }
    KeptShadow& kept = shadows.front();
    kept.sigma = sigma;
    kept.shape = drawn;
    kept.blurred = drawn;
    blur(kept.blurred, sigma);
    return kept.blurred;
}

void Canvas::Impl::castShadow(const Group& group) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    const double pixels = std::sqrt(std::abs(cairo_matrix_t(matrix).xx * matrix.yy - matrix.xy * matrix.yx));
    const double sigma = group.radius * pixels / 2;
    const PixelBox box = inkBox(group.recording, context, blurReach(sigma) + 1);
    if (box.empty()) return;

    // The stride of an image surface is a multiple of 4 bytes: make the plane as wide.
    shape.reset(cairo_format_stride_for_width(CAIRO_FORMAT_A8, box.width), box.height);
    cairo_surface_t* mask = cairo_image_surface_create_for_data(shape.values.data(), CAIRO_FORMAT_A8,
                                                                shape.width, shape.height, shape.width);
    cairo_t* drawing = cairo_create(mask);
    cairo_set_source_surface(drawing, group.recording, -box.x, -box.y);
    cairo_paint(drawing);
    cairo_destroy(drawing);
    cairo_surface_finish(mask);
    cairo_surface_destroy(mask);

    const AlphaPlane& soft = blurredShape(shape, sigma);
    cairo_surface_t* shadow = cairo_image_surface_create_for_data(
        const_cast<unsigned char*>(soft.values.data()), CAIRO_FORMAT_A8, soft.width, soft.height, soft.width);
    cairo_save(context);
    double dx = group.dx;
    double dy = group.dy;
    cairo_user_to_device_distance(context, &dx, &dy);
    cairo_identity_matrix(context);
    cairo_set_source_rgba(context, group.shadowColour.r, group.shadowColour.g, group.shadowColour.b,
                          group.shadowColour.a);
    cairo_mask_surface(context, shadow, box.x + std::round(dx), box.y + std::round(dy));
    cairo_restore(context);
    // An outer group that is being recorded copies the surface here, before its memory is freed.
    cairo_surface_finish(shadow);
    cairo_surface_destroy(shadow);
}

void Canvas::Impl::paint(const Group& group) {
    const PixelBox box = inkBox(group.recording, context, 0);
    if (!box.empty() && group.opacity > 0) {
        cairo_save(context);
        cairo_identity_matrix(context);
        cairo_rectangle(context, box.x, box.y, box.width, box.height);
        cairo_clip(context);
        cairo_set_source_surface(context, group.recording, 0, 0);
        if (group.opacity < 1) {
            cairo_paint_with_alpha(context, group.opacity);
        } else {
            cairo_paint(context);
        }
        cairo_restore(context);
    }
    cairo_surface_destroy(group.recording);
}

cairo_surface_t* Canvas::Impl::scaledImage(const Image& image, int pixelWidth, int pixelHeight) {
    const std::uint64_t hash = fingerprint(image);
    for (auto kept = images.begin(); kept != images.end(); ++kept) {
        if (kept->hash == hash && kept->sourceHeight == image.height && kept->width == pixelWidth &&
            kept->height == pixelHeight) {
            images.splice(images.begin(), images, kept);
            return kept->surface;
        }
    }
    if (images.size() >= keptImages) {
        cairo_surface_destroy(images.back().surface);
        images.pop_back();
    }
    const bool same = pixelWidth == image.width && pixelHeight == image.height;
    cairo_surface_t* scaled = imageOf(same ? image : resampled(image, pixelWidth, pixelHeight));
    images.push_front({hash, image.height, pixelWidth, pixelHeight, scaled});
    return scaled;
}

void Canvas::Impl::drawImage(const Image& image, const Rect& rect, double opacity) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    cairo_save(context);
    if (matrix.xy == 0 && matrix.yx == 0 && matrix.xx > 0 && matrix.yy > 0) {
        // Upright: the picture is resized once, cached and placed on whole pixels.
        const int w = std::max(1, static_cast<int>(std::lround(rect.width * matrix.xx)));
        const int h = std::max(1, static_cast<int>(std::lround(rect.height * matrix.yy)));
        const double x = std::round(rect.x * matrix.xx + matrix.x0);
        const double y = std::round(rect.y * matrix.yy + matrix.y0);
        cairo_identity_matrix(context);
        cairo_set_source_surface(context, scaledImage(image, w, h), x, y);
        cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    } else {
        cairo_translate(context, rect.x, rect.y);
        cairo_scale(context, rect.width / image.width, rect.height / image.height);
        cairo_set_source_surface(context, scaledImage(image, image.width, image.height), 0, 0);
        cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    }
    cairo_paint_with_alpha(context, std::min(opacity, 1.0));
    cairo_restore(context);
}

}  // namespace gull
