#pragma once

#include "Engine/Render/FrameBlock.h"

#include <compare>
#include <cstdint>
#include <initializer_list>

namespace gull {

/// The pairs of vertex and fragment shader.
enum class ProgramKind : std::uint8_t {
    surface,      ///< a lit surface
    mattSurface,  ///< the same lit and tone mapped at its vertices
    sky,
    particles,
    depth,          ///< depth alone, from the camera
    sunDepth,       ///< depth alone, from the sun
    areaDepth,      ///< gives rectangles of a picture one depth
    farthestDepth,  ///< depth in coarse pixels, the farthest of each one's
    contactShadows,
    contactShadowBlur,
    brightPass,  ///< anything bright enough to bloom, at a quarter of the size
    bloomBlur,
    toneMapping,    ///< scene light to the screen's colours
    resolve,        ///< the mean of four samples
    paint,          ///< the multiply maps of still surfaces
    movingCover,    ///< how far moving things cover the sun
    relight,        ///< the static layer under moving shadows and lamps
    lightChange,    ///< what these change in the tone-mapped picture
    waterOverlay,   ///< half-resolution water over the picture, on its own geometry
    edgeSmoothing,  ///< smooths the edges of shapes in a tone-mapped picture
    bitmap,         ///< rectangles of a bitmap or of plain colour
};

/// Additional work that a variant of a program does.
enum class Feature : std::uint8_t {
    diffuseMap,
    normalMap,
    multiplyMap,
    paintable,  ///< notes how much of the light a multiply map may dim later
    water,      ///< a wide, smooth, blended surface
    additive,
    sunShadow,
    contactShadows,
    bloom,
    staticOutput,      ///< into the static layer's four targets
    displayOutput,     ///< tone mapped
    waterOutput,       ///< water to be blended over the tone-mapped picture later
    noToneMapping,     ///< for cameras without it
    waterDepth,        ///< looks up how deep the water is
    roughness,         ///< per vertex
    uniformsPerPixel,  ///< reads uniforms where others get flat varyings: for many small triangles
    sparkle,
    movingShadow,
    rectangles,  ///< works within rectangles of the picture
    fewTaps,     ///< of a soft shadow edge
    paint,       ///< multiplied by the paint layer
    faded,
    plainColour,
    edges,  ///< of what stands before the water
    count,
};

/// A set of features.
class Features {
  public:
    constexpr Features() = default;
    constexpr Features(std::initializer_list<Feature> features) {
        for (const Feature feature : features) set(feature);
    }
    constexpr void set(Feature feature, bool on = true) {
        if (on) bits_ |= 1U << static_cast<unsigned>(feature);
    }
    constexpr bool has(Feature feature) const { return (bits_ >> static_cast<unsigned>(feature) & 1U) != 0; }
    auto operator<=>(const Features&) const = default;

  private:
    static_assert(static_cast<unsigned>(Feature::count) <= 32);
    std::uint32_t bits_ = 0;
};

/// How a surface answers light, as the shaders number it.
enum class LightModel : std::uint8_t { constant = 0, lambert = 1, physicallyBased = 2 };

/// Identifies a program of the renderer; equal keys mean the same program.
struct ProgramKey {
    ProgramKind kind = ProgramKind::surface;
    Features features = {};
    LightModel lighting = LightModel::constant;
    int lamps = 0;  ///< one of FrameBlock::lampPrograms

    auto operator<=>(const ProgramKey&) const = default;
};

}  // namespace gull
