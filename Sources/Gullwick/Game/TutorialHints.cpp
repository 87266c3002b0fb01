#include "Gullwick/Game/TutorialHints.h"

namespace gull {

namespace {

using Kind = Controls::Kind;

Message onSignal(const Controls& controls) {
    if (controls.kind == Kind::trackpad) return message("Feel the ticks? They speed up as you get closer");
    return message("Hear the ticks? They speed up as you get closer");
}

Message onTreasure(const Controls& controls) {
    switch (controls.kind) {
        case Kind::trackpad:
            return message("Right on top of it — click the trackpad to dig!");
        case Kind::mouse:
            return message("Right on top of it — click to dig!");
        case Kind::controller:
            return message("Right on top of it — {} digs!", Controls::label(controls.buttons.dig));
    }
    return {};
}

}  // namespace

Message TutorialHints::opening(const Controls& controls) {
    switch (controls.kind) {
        case Kind::trackpad:
            return message("Rest one finger on the trackpad and slide it — the trackpad is the beach");
        case Kind::mouse:
            return message("Move the mouse and the detector follows — click where the ticks are fastest");
        case Kind::controller:
            return message("The left stick moves the detector — {} digs where the ticks are fastest",
                           Controls::label(controls.buttons.dig));
    }
    return {};
}

Message TutorialHints::onSilentSignal(bool ticksAreShown) {
    return ticksAreShown ? message("See the ticks? They speed up as you get closer")
                         : message("See the bars? They rise as you get closer");
}

std::optional<Message> TutorialHints::advance(const Reading& reading, const Controls& controls) {
    if (stage_ == 2 && reading.isPinpoint && reading.isTreasure()) {
        stage_ = 3;
        return onTreasure(controls);
    }
    if (stage_ == 1 && reading.strength > signalThreshold) {
        stage_ = 2;
        return onSignal(controls);
    }
    return std::nullopt;
}

}  // namespace gull
