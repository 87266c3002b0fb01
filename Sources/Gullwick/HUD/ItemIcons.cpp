#include "Gullwick/HUD/ItemIcons.h"

#include <algorithm>

namespace gull {

const Image& ItemIcons::image(ItemKind kind) {
    const auto found = made_.find(kind);
    if (found != made_.end()) return found->second;
    return made_.emplace(kind, source_.image(kind)).first->second;
}

bool ItemIcons::prepareOne(const BeachSpec& spec) {
    const auto isMissing = [this](ItemKind kind) { return made_.count(kind) == 0; };
    const auto missing = std::find_if(spec.treasures.begin(), spec.treasures.end(), isMissing);
    if (missing != spec.treasures.end()) {
        image(*missing);
    } else if (isMissing(ItemKind::cap)) {
        image(ItemKind::cap);  // stands beside the junk counter on every beach
    } else {
        return false;
    }
    return true;
}

}  // namespace gull
