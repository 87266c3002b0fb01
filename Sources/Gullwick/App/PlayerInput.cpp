#include "Gullwick/App/PlayerInput.h"

#include "Engine/Log/Log.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace gull {

namespace {

/// Sources number their fingers from 0 each; these ranges keep them apart.
constexpr std::int64_t windowFingers = std::int64_t{1} << 40, controllerFingers = std::int64_t{2} << 40;

void append(std::vector<Contact>& all, const std::vector<Contact>& contacts, std::int64_t firstId) {
    for (Contact contact : contacts) {
        contact.id += firstId;
        all.push_back(contact);
    }
}

bool same(const std::vector<Contact>& a, const std::vector<Contact>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Contact& left, const Contact& right) {
        return left.id == right.id && left.x == right.x && left.y == right.y;
    });
}

std::optional<KeyAction::Any> action(ControllerButton button) {
    switch (button) {
        case ControllerButton::south:
            return KeyAction::Confirm{};
        case ControllerButton::west:
            return KeyAction::Ping{};
        case ControllerButton::north:
            return KeyAction::Next{};
        case ControllerButton::east:
            return KeyAction::Back{};
        case ControllerButton::start:
            return KeyAction::Levels{};
        case ControllerButton::back:
            return KeyAction::Restart{};
        case ControllerButton::left:
            return KeyAction::Move{-1, 0};
        case ControllerButton::right:
            return KeyAction::Move{1, 0};
        case ControllerButton::up:
            return KeyAction::Move{0, -1};
        case ControllerButton::down:
            return KeyAction::Move{0, 1};
        case ControllerButton::touchClick:
            return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

PlayerInput::PlayerInput(Trackpads& trackpads, GameControllers& controllers, TouchSurface& surface,
                         GameController& game)
    : trackpads_(trackpads), controllers_(controllers), surface_(surface), game_(game) {}

void PlayerInput::windowContacts(const std::vector<Contact>& contacts) {
    windowContacts_ = contacts;
}

void PlayerInput::poll(double now) {
    const double dt = lastPoll_ > 0 ? std::clamp(now - lastPoll_, 0.0, GameController::largestStep) : 0;
    lastPoll_ = now;
    trackpads_.poll(now);
    gather();
    if (!same(gathered_, reported_)) {
        reported_ = gathered_;
        surface_.touches(reported_);
    }
    for (const ControllerEvent& event : controllers_.takeEvents()) handle(event);
    const Stick stick = controllers_.stick();
    surface_.stick(stick.x, stick.y, dt);
    hint();
}

void PlayerInput::gather() {
    gathered_.clear();
    append(gathered_, trackpads_.contacts(), 0);
    append(gathered_, windowContacts_, windowFingers);
    append(gathered_, controllers_.contacts(), controllerFingers);
}

void PlayerInput::handle(const ControllerEvent& event) {
    switch (event.kind) {
        case ControllerEvent::Kind::connected:
            game_.queueHint(
                "Controller: left stick sweeps · bottom button digs · left button pings · Start beaches",
                4.5);
            break;
        case ControllerEvent::Kind::disconnected:
            break;
        case ControllerEvent::Kind::pressed:
            if (event.button == ControllerButton::touchClick) surface_.pressed();
            if (const auto wanted = action(event.button)) surface_.perform(*wanted);
            break;
        case ControllerEvent::Kind::released:
            if (event.button == ControllerButton::touchClick) surface_.released();
            break;
    }
}

void PlayerInput::hint() {
    if (hinted_) return;
    const std::string command = trackpads_.missingPermission();
    if (command.empty()) return;
    hinted_ = true;
    Log::say("the touchpad cannot be read, so the mouse steers. To allow it: {}", command);
    game_.queueHint("The touchpad may not be read: the mouse steers. " + command, 6.0);
}

}  // namespace gull
