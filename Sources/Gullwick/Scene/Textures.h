#pragma once

#include "Engine/Stage/Texture.h"
#include "Gullwick/Scene/Look.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace gull {

/// All textures of the scene, made by code. Asking for one is cheap: its pixels are drawn on first use. Each
/// is made once and cached under a text key, so a beach seen before costs nothing.
class Textures {
  public:
    using Ref = std::shared_ptr<Texture>;

    /// An equirectangular panorama of `width` by width / 2 pixels. `key` identifies the beach.
    Ref sky(const BeachLook& look, int width, const std::string& key);
    /// 16 x 512: clear and turquoise at the shore (bottom), deep and opaque out at sea. Looks that differ
    /// only in the blue of the water share one picture.
    Ref waterColour(const BeachLook& look);

    Ref sandDetail();   ///< tiles
    Ref sandNormal();   ///< tiles
    Ref waterNormal();  ///< tiles
    Ref foam();         ///< tiles across
    Ref ring();
    Ref arrow();
    Ref puff();
    Ref sparkle();

    Ref doubloonColour();
    Ref doubloonNormal();
    Ref watchDial();
    Ref compassRose();
    Ref canLabel();
    Ref planks();

    /// A tiling normal map of grain: `size` pixels square, `blur` passes of smoothing, bumps of `strength`.
    Ref grainNormal(int size, std::uint64_t seed, int blur, double strength);

  private:
    Ref kept(const std::string& key, std::function<Image()> make);

    std::map<std::string, Ref> store_;
};

}  // namespace gull
