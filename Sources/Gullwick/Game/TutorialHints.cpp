#include "Gullwick/Game/TutorialHints.h"

namespace gull {

std::string_view TutorialHints::advance(const Reading& reading) {
    if (stage_ == 2 && reading.isPinpoint && reading.isTreasure()) {
        stage_ = 3;
        return "Right on top of it — click the trackpad to dig!";
    }
    if (stage_ == 1 && reading.strength > signalThreshold) {
        stage_ = 2;
        return "Feel the ticks? They speed up as you get closer";
    }
    return {};
}

}  // namespace gull
