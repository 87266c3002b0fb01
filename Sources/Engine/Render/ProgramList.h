#pragma once

#include "Engine/Render/ProgramKey.h"
#include "Engine/Stage/Material.h"

#include <vector>

namespace gull {

/// The passes that programs are made for.
enum class PassKind : std::uint8_t {
    staticLayer,  ///< the still picture of the window
    snapshot,     ///< a whole stage, and the full tier's flights
    icon,         ///< the same without water and contact shadows
    fullFrame,    ///< what the full tier draws over the static layer
    fastFrame,    ///< moving things of the fast tier
    waterLayer,   ///< the fast tier's foam and things in the water
    water,        ///< the fast tier's water at half resolution
    waterGlow,    ///< the sun's glitter for bloom
    flight,       ///< a whole stage drawn quickly
    picture,      ///< post-processing and copies
};

/// A program and what it draws.
struct ProgramUse {
    ProgramKey key;
    PassKind pass = PassKind::picture;
    Material material = {};  ///< of a surface: one of its kind, with stand-ins for maps
    int lamps = 0;           ///< that reach the surface
};

/// Every program that the renderer can be asked for, with each of its uses. It covers the kinds of materials
/// that stages are made of here; a stage with another kind gets its program when it is first drawn.
/// `map` stands in for the maps of materials.
std::vector<ProgramUse> programUses(const std::shared_ptr<Texture>& map);

/// The same without what they draw, each once, in the order of the keys.
std::vector<ProgramKey> programList();

}  // namespace gull
