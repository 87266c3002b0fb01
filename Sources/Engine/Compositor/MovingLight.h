#pragma once

#include "Engine/Compositor/StaticPictures.h"
#include "Engine/Gl/Target.h"
#include "Engine/Render/ProgramKey.h"
#include "Engine/Render/Viewpoint.h"

#include <array>
#include <vector>

namespace gull {

struct RenderContext;

/// The areas that the shadow and the lamps of moving things may reach.
struct MovingReach {
    /// By the marks of a ReliefGrid; no two areas overlap.
    std::array<std::vector<PixelArea>, 4> areas;
    bool shadow = false;  ///< whether anything casts one
    int lamps = 0;        ///< in programs, see FrameBlock::lampsInProgram()
};

/// Applies the shadow and the lamps of moving things to everything that stands still.
class MovingLight {
  public:
    /// Everything the passes read.
    struct Inputs {
        const Viewpoint& view;       ///< the static layer's
        unsigned frameUniforms = 0;  ///< with the lamps and the moving shadow's matrix
        StaticPictures ground;
        TextureRef movingShadow;  ///< empty: nothing casts one
        const MovingReach& reach;
    };

    explicit MovingLight(RenderContext& context) : context_(context) {}

    /// Fills `target` with the static layer's light and depth under moving shadows and lamps.
    void relight(const Inputs& inputs, const Target& target);
    /// Computes in coarse pixels how the tone-mapped picture changes within `part`: the colour to add, and
    /// in alpha the share of the picture to hide. The texture is valid until the next call.
    TextureRef findChange(const Inputs& inputs, const PixelArea& part);
    /// Applies the `change` to the static layer's picture that `target` shows, within `part`. Fast on a
    /// target without depth.
    void applyChange(TextureRef change, const MovingReach& reach, const PixelArea& part,
                     const DrawTarget& target);

  private:
    DrawState lightState(const Inputs& inputs, const ProgramKey& key) const;
    TextureRef findCover(const Inputs& inputs, const PixelSize& size);

    RenderContext& context_;
    Target covered_;  ///< how far moving things cover the sun
    Target change_;
};

/// The program for findChange() where these marks of a ReliefGrid are set.
ProgramKey lightChangeProgram(const MovingLight::Inputs& inputs, int marks);

}  // namespace gull
