#include "Gullwick/App/PlayerInput.h"

#include "Engine/Log/Log.h"
#include "Gullwick/App/TouchpadPermission.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace gull {

namespace {

/// Sources number their fingers from 0 each; these ranges keep them apart.
constexpr std::int64_t windowFingers = std::int64_t{1} << 60, controllerFingers = std::int64_t{2} << 60;

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
    readFingers(now);
    surface_.update();
    for (const ControllerEvent& event : controllers_.takeEvents()) handle(event);
    watchTrackpads();
    const Stick stick = controllers_.stick();
    surface_.stick(stick.x, stick.y, dt);
    if (stick.x != 0 || stick.y != 0) usesController_ = true;
    hint();
    look(now);
}

void PlayerInput::readFingers(double now) {
    // Reports in which a finger begins or ends are processed one by one, or a short tap would go unnoticed.
    bool isMore = true;
    while (isMore) {
        isMore = trackpads_.poll(now);
        gather();
        if (same(gathered_, reported_)) continue;
        reported_ = gathered_;
        surface_.touches(reported_);
    }
}

/// Whether the device that the finger is on is still there.
bool PlayerInput::isRead(std::int64_t finger) const {
    if (finger >= controllerFingers) return controllers_.hasSurfaceOf(finger - controllerFingers);
    return finger >= windowFingers || trackpads_.isRead(finger);
}

void PlayerInput::watchTrackpads() {
    const std::size_t count = trackpads_.readCount();
    const auto finger = surface_.steeringFinger();
    if (surface_.isCaptured() && finger && !isRead(*finger))
        surface_.trackpadLost();
    else if (trackpadCount_ && count > *trackpadCount_)
        surface_.trackpadFound();
    trackpadCount_ = count;
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
            usesController_ = true;
            game_.queueHint(message("Controller: left stick sweeps · {} digs · {} pings · {} beaches",
                                    Controls::label(controllers_.buttonName(ControllerButton::south)),
                                    Controls::label(controllers_.buttonName(ControllerButton::west)),
                                    Controls::label(controllers_.buttonName(ControllerButton::start))),
                            4.5);
            break;
        case ControllerEvent::Kind::disconnected:
            usesController_ = usesController_ && !controllers_.controllers().empty();
            game_.showToast(message("Controller unplugged"), 3.4);
            break;
        case ControllerEvent::Kind::pressed:
            usesController_ = true;
            if (event.button == ControllerButton::touchClick) surface_.pressed();
            if (const auto wanted = action(event.button)) surface_.perform(*wanted);
            break;
        case ControllerEvent::Kind::released:
            if (event.button == ControllerButton::touchClick) surface_.released();
            break;
    }
}

void PlayerInput::noteMouse(const MouseEvent& event) {
    constexpr double tremble = 3;  // points: a table that was knocked is no hand on the mouse
    if (event.kind == MouseEvent::Kind::left || event.kind == MouseEvent::Kind::up) return;
    const bool moved = mouseX_ >= 0 && std::hypot(event.x - mouseX_, event.y - mouseY_) > tremble;
    if (moved || event.kind == MouseEvent::Kind::down) usesController_ = false;
    if (moved || mouseX_ < 0) {
        mouseX_ = event.x;
        mouseY_ = event.y;
    }
}

void PlayerInput::look(double now) {
    // Pads rarely come and go, and asking for them copies their names.
    if (now >= nextLook_) {
        nextLook_ = now + 0.5;
        const auto pads = trackpads_.pads();
        const auto controllers = controllers_.controllers();
        padIsRead_ = std::ranges::any_of(pads, [](const Trackpads::Pad& pad) { return pad.isRead; }) ||
                     std::ranges::any_of(controllers, [](const GameControllers::Description& controller) {
                         return controller.hasTouchSurface;
                     });
    }
    Controls controls;
    if (!padIsRead_ && windowContacts_.empty())
        controls.kind = usesController_ ? Controls::Kind::controller : Controls::Kind::mouse;
    if (controls.kind == Controls::Kind::controller)
        controls.buttons = {
            controllers_.buttonName(ControllerButton::south), controllers_.buttonName(ControllerButton::east),
            controllers_.buttonName(ControllerButton::west), controllers_.buttonName(ControllerButton::back),
            controllers_.buttonName(ControllerButton::start)};
    if (!(controls == game_.controls.get())) game_.controls = controls;
}

void PlayerInput::hint() {
    if (hinted_) return;
    if (!trackpads_.missesPermission()) return;
    hinted_ = true;
    const std::string command = TouchpadPermission::command();
    Log::say("the touchpad cannot be read, so the mouse steers. To allow it: {}", command);
    game_.queueHint(message("The touchpad may not be read: the mouse steers. To allow it: {}", command), 8.0);
}

}  // namespace gull
