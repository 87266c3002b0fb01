#pragma once

#include "Engine/Stage/Node.h"
#include "GullCore/Beach.h"

#include <glm/vec3.hpp>

namespace gull {

/// The animation of a dug item. Treasure rises out of its hole, turns in front of the player and flies off;
/// junk pops out and is tossed onto the sand beside the hole, where it stays.
struct Reveal {
    Node* node = nullptr;  ///< the item's model, owned by the beach's node; null once a treasure is gone
    ItemKind kind = ItemKind::coin;
    double start = 0;     ///< scene time of the dig
    glm::dvec3 ground{};  ///< the hole
    glm::dvec3 rest{};    ///< final position of junk
    bool done = false;
    Node* glow = nullptr;  ///< carries a treasure's light, owned by the beach's node; null for junk

    /// Seconds from the dig until the reveal is over: 3.3 for the chest, 1.95 for other treasure, 0.9 for
    /// junk.
    double duration() const;
    /// Poses the item and its light for scene time `time`.
    void pose(double time) const;
};

}  // namespace gull
