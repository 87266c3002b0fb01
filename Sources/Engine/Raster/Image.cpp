#include "Engine/Raster/Image.h"

#include <cstdio>
#include <cstdlib>

namespace gull {

Image::Image(int imageWidth, int imageHeight) : width(imageWidth), height(imageHeight) {
    if (width < 0 || height < 0) {
        std::fprintf(stderr, "Image: a size of %d by %d pixels\n", width, height);
        std::abort();
    }
    pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 0);
}

}  // namespace gull
