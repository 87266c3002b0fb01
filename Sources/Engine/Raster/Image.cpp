#include "Engine/Raster/Image.h"

#include "Engine/Log/Require.h"

namespace gull {

Image::Image(int imageWidth, int imageHeight) : width(imageWidth), height(imageHeight) {
    require(width >= 0 && height >= 0, "Image: a size of {} by {} pixels", width, height);
    pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 0);
}

}  // namespace gull
