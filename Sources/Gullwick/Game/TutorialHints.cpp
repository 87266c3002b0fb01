#include "Gullwick/Game/TutorialHints.h"

#include <fmt/format.h>

namespace gull {

namespace {

using Kind = Controls::Kind;

std::string onSignal(const Controls& controls) {
    if (controls.kind == Kind::trackpad) return "Feel the ticks? They speed up as you get closer";
    return "Hear the ticks? They speed up as you get closer";
}

std::string onTreasure(const Controls& controls) {
    switch (controls.kind) {
        case Kind::trackpad:
            return "Right on top of it — click the trackpad to dig!";
        case Kind::mouse:
            return "Right on top of it — click to dig!";
        case Kind::controller:
            return fmt::format("Right on top of it — {} digs!", controls.buttons.dig);
    }
    return {};
}

}  // namespace

std::string TutorialHints::opening(const Controls& controls) {
    switch (controls.kind) {
        case Kind::trackpad:
            return "Rest one finger on the trackpad and slide it — the trackpad is the beach";
        case Kind::mouse:
            return "Move the mouse and the detector follows — click where the ticks are fastest";
        case Kind::controller:
            return fmt::format("The left stick moves the detector — {} digs where the ticks are fastest",
                               controls.buttons.dig);
    }
    return {};
}

std::string TutorialHints::advance(const Reading& reading, const Controls& controls) {
    if (stage_ == 2 && reading.isPinpoint && reading.isTreasure()) {
        stage_ = 3;
        return onTreasure(controls);
    }
    if (stage_ == 1 && reading.strength > signalThreshold) {
        stage_ = 2;
        return onSignal(controls);
    }
    return {};
}

}  // namespace gull
