#include "Engine/Render/StandIns.h"

#include "Engine/Gl/GraphicsDevice.h"

#include <array>
#include <cstdint>

namespace gull {

namespace {

/// Two by two pixels, so that it has smaller mipmaps, as other textures do.
std::shared_ptr<Texture> plainTexture(const std::array<std::uint8_t, 4>& colour) {
    Image image(2, 2);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) image.pixels[i] = colour[i % 4];
    return std::make_shared<Texture>(std::move(image));
}

}  // namespace

StandIns::StandIns(GraphicsDevice& device)
    : black(plainTarget(device, Format::rgba16f, 0)),
      nothing(plainTarget(device, Format::rgba16f, 0)),
      white(plainTarget(device, Format::rgba8, 1)),
      openSky(plainTarget(device, Format::rgba8, 128.0F / 255)),
      farthestShadow(makeShadowMap(device, 3)),
      whiteMap(plainTexture({255, 255, 255, 255})),
      flatMap(plainTexture({128, 128, 255, 255})) {
    device.clear(nothing.whole(), {{{0, 0, 0, 0}}, {}});
    device.clear(farthestShadow.whole(), {{}, 1});
}

}  // namespace gull
