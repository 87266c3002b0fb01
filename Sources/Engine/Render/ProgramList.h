#pragma once

#include "Engine/Render/ProgramKey.h"
#include "Engine/Stage/Material.h"

#include <vector>

namespace gull {

/// The passes that need programs.
enum class PassKind : std::uint8_t {
    staticLayer,  ///< the picture of everything that stands still
    snapshot,     ///< a whole stage, and the full tier's flights
    icon,         ///< the same without water and contact shadows
    fullFrame,    ///< water and moving things of the full tier
    unlit,        ///< unlit things over the full tier's picture
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
    Material material = {};  ///< for a surface: an example, with stand-ins for maps
    int lamps = 0;           ///< number that reach the surface
};

/// Every program that the renderer can ask for, with each of its uses. Covers the kinds of material that
/// stages are made of here; the program for any other kind is compiled when it is first drawn. `map` stands
/// in for the maps of materials.
std::vector<ProgramUse> programUses(const std::shared_ptr<Texture>& map);

/// The keys alone, each once, in their order.
std::vector<ProgramKey> programList();

}  // namespace gull
