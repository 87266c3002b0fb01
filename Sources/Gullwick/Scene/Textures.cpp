#include "Gullwick/Scene/Textures.h"

#include "Gullwick/Scene/ItemFaces.h"
#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/PlankTexture.h"
#include "Gullwick/Scene/SkyTexture.h"
#include "Gullwick/Scene/SurfaceTextures.h"

#include <fmt/format.h>

#include <utility>

namespace gull {

using Encoding = Texture::Encoding;

Textures::Ref Textures::kept(const std::string& key, Encoding encoding, std::function<Image()> make) {
    Ref& texture = store_[key];
    if (!texture) texture = std::make_shared<Texture>(encoding, std::move(make));
    return texture;
}

Textures::Ref Textures::sky(const BeachLook& look, int width, const std::string& key) {
    return kept(fmt::format("sky-{}-{}", key, width), Encoding::srgb,
                [look, width] { return skyPanorama(look, width); });
}

Textures::Ref Textures::waterColour(const BeachLook& look) {
    return kept(fmt::format("water-{}-{}", look.water.r, look.water.g), Encoding::srgb,
                [look] { return SurfaceTextures::waterColour(look); });
}

Textures::Ref Textures::sandDetail() {
    return kept("sandDetail", Encoding::srgb, SurfaceTextures::sandDetail);
}
Textures::Ref Textures::sandNormal() {
    return kept("sandNormal", Encoding::linear, SurfaceTextures::sandNormal);
}
Textures::Ref Textures::waterNormal() {
    return kept("waterNormal", Encoding::linear, SurfaceTextures::waterNormal);
}
Textures::Ref Textures::foam() {
    return kept("foam", Encoding::srgb, SurfaceTextures::foam);
}
Textures::Ref Textures::ring() {
    return kept("ring", Encoding::srgb, SurfaceTextures::ring);
}
Textures::Ref Textures::arrow() {
    return kept("arrow", Encoding::srgb, SurfaceTextures::arrow);
}
Textures::Ref Textures::puff() {
    return kept("puff", Encoding::srgb, SurfaceTextures::puff);
}
Textures::Ref Textures::sparkle() {
    return kept("sparkle", Encoding::srgb, SurfaceTextures::sparkle);
}

Textures::Ref Textures::doubloonColour() {
    return kept("doubloonC", Encoding::srgb, ItemFaces::doubloonColour);
}
Textures::Ref Textures::doubloonNormal() {
    return kept("doubloonN", Encoding::linear, ItemFaces::doubloonNormal);
}
Textures::Ref Textures::watchDial() {
    return kept("watchDial", Encoding::srgb, ItemFaces::watchDial);
}
Textures::Ref Textures::compassRose() {
    return kept("compass", Encoding::srgb, ItemFaces::compassRose);
}
Textures::Ref Textures::canLabel() {
    return kept("can", Encoding::srgb, ItemFaces::canLabel);
}
Textures::Ref Textures::planks() {
    return kept("planks", Encoding::srgb, plankTexture);
}

Textures::Ref Textures::grainNormal(int size, std::uint64_t seed, int blur, double strength) {
    return kept(fmt::format("grain-{}-{}-{}-{}", size, seed, blur, strength), Encoding::linear,
                [=] { return Noise::normalMap(Noise::grainHeights(size, seed, blur), size, strength); });
}

}  // namespace gull
