#include "Gullwick/Scene/Textures.h"

#include "Gullwick/Scene/ItemFaces.h"
#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/PlankTexture.h"
#include "Gullwick/Scene/SkyTexture.h"
#include "Gullwick/Scene/SurfaceTextures.h"

#include <fmt/format.h>

#include <utility>

namespace gull {

Textures::Ref Textures::kept(const std::string& key, std::function<Image()> make) {
    Ref& texture = store_[key];
    if (!texture) texture = std::make_shared<Texture>(std::move(make));
    return texture;
}

Textures::Ref Textures::sky(const BeachLook& look, int width, const std::string& key) {
    return kept(fmt::format("sky-{}-{}", key, width), [look, width] { return skyPanorama(look, width); });
}

Textures::Ref Textures::waterColour(const BeachLook& look) {
    return kept(fmt::format("water-{}-{}", look.water.r, look.water.g),
                [look] { return SurfaceTextures::waterColour(look); });
}

Textures::Ref Textures::sandDetail() {
    return kept("sandDetail", SurfaceTextures::sandDetail);
}
Textures::Ref Textures::sandNormal() {
    return kept("sandNormal", SurfaceTextures::sandNormal);
}
Textures::Ref Textures::waterNormal() {
    return kept("waterNormal", SurfaceTextures::waterNormal);
}
Textures::Ref Textures::foam() {
    return kept("foam", SurfaceTextures::foam);
}
Textures::Ref Textures::ring() {
    return kept("ring", SurfaceTextures::ring);
}
Textures::Ref Textures::arrow() {
    return kept("arrow", SurfaceTextures::arrow);
}
Textures::Ref Textures::puff() {
    return kept("puff", SurfaceTextures::puff);
}
Textures::Ref Textures::sparkle() {
    return kept("sparkle", SurfaceTextures::sparkle);
}

Textures::Ref Textures::doubloonColour() {
    return kept("doubloonC", ItemFaces::doubloonColour);
}
Textures::Ref Textures::doubloonNormal() {
    return kept("doubloonN", ItemFaces::doubloonNormal);
}
Textures::Ref Textures::watchDial() {
    return kept("watchDial", ItemFaces::watchDial);
}
Textures::Ref Textures::compassRose() {
    return kept("compass", ItemFaces::compassRose);
}
Textures::Ref Textures::canLabel() {
    return kept("can", ItemFaces::canLabel);
}
Textures::Ref Textures::planks() {
    return kept("planks", plankTexture);
}

Textures::Ref Textures::grainNormal(int size, std::uint64_t seed, int blur, double strength) {
    return kept(fmt::format("grain-{}-{}-{}-{}", size, seed, blur, strength),
                [=] { return Noise::normalMap(Noise::grainHeights(size, seed, blur), size, strength); });
}

}  // namespace gull
