#include "Engine/Window/GameControllers.h"

#include "Engine/Window/ControllerNames.h"
#include "Engine/Window/RumbleMotors.h"
#include "Engine/Window/RumblePulses.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

namespace gull {
namespace {

/// The part of a stick's travel that counts as at rest.
constexpr double deadZone = 0.15;

struct Closed {
    void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
};

std::optional<ControllerButton> button(int sdlButton) {
    switch (sdlButton) {
        case SDL_CONTROLLER_BUTTON_A:
            return ControllerButton::south;
        case SDL_CONTROLLER_BUTTON_B:
            return ControllerButton::east;
        case SDL_CONTROLLER_BUTTON_X:
            return ControllerButton::west;
        case SDL_CONTROLLER_BUTTON_Y:
            return ControllerButton::north;
        case SDL_CONTROLLER_BUTTON_START:
            return ControllerButton::start;
        case SDL_CONTROLLER_BUTTON_BACK:
            return ControllerButton::back;
        case SDL_CONTROLLER_BUTTON_DPAD_LEFT:
            return ControllerButton::left;
        case SDL_CONTROLLER_BUTTON_DPAD_RIGHT:
            return ControllerButton::right;
        case SDL_CONTROLLER_BUTTON_DPAD_UP:
            return ControllerButton::up;
        case SDL_CONTROLLER_BUTTON_DPAD_DOWN:
            return ControllerButton::down;
        case SDL_CONTROLLER_BUTTON_TOUCHPAD:
            return ControllerButton::touchClick;
        default:
            return std::nullopt;
    }
}

double axisShare(int value) {
    return std::clamp(value / 32767.0, -1.0, 1.0);
}

/// Removes the dead zone: 0 at its rim, unchanged at full deflection.
Stick lively(double x, double y) {
    const double size = std::hypot(x, y);
    if (size <= deadZone) return {};
    const double wanted = std::min((size - deadZone) / (1 - deadZone), 1.0);
    return {x / size * wanted, y / size * wanted};
}

std::string text(const char* value, const char* otherwise) {
    return value && *value ? value : otherwise;
}

struct Controller {
    std::unique_ptr<SDL_GameController, Closed> handle;
    std::unique_ptr<RumbleMotors> motors;  // null: it does not rumble
    SDL_JoystickID id = 0;
    std::string name;
    double stickX = 0;
    double stickY = 0;
    std::set<ControllerButton> pressed;

    bool hasTouchSurface() const { return SDL_GameControllerGetNumTouchpads(handle.get()) > 0; }
    bool rumbles() const { return motors != nullptr; }
};

/// Identifies a finger: controller, surface, number on it.
struct FingerKey {
    SDL_JoystickID controller;
    int surface;
    int finger;
    bool operator==(const FingerKey&) const = default;
};

}  // namespace

struct GameControllers::Impl {
    std::function<double()> now;
    bool hasSubsystem = false;
    bool hasHaptics = false;
    std::vector<Controller> controllers;
    SDL_JoystickID inUse = -1;  // the one last touched
    std::vector<ControllerEvent> events;
    std::vector<FingerKey> fingers;  // as in `contacts`
    std::vector<Contact> contacts;
    std::int64_t lastContact = 0;
    RumblePulses pulses;

    Controller* find(SDL_JoystickID id);
    void connect(int index);
    void disconnect(SDL_JoystickID id);
    void turn(const SDL_ControllerAxisEvent& event);
    void press(const SDL_ControllerButtonEvent& event);
    void touch(const SDL_ControllerTouchpadEvent& event);
    void liftFingers(SDL_JoystickID id);
    const Controller* rumbling() const;
};

Controller* GameControllers::Impl::find(SDL_JoystickID id) {
    const auto found = std::find_if(controllers.begin(), controllers.end(),
                                    [&](const Controller& controller) { return controller.id == id; });
    return found == controllers.end() ? nullptr : &*found;
}

void GameControllers::Impl::connect(int index) {
    if (!SDL_IsGameController(index) || find(SDL_JoystickGetDeviceInstanceID(index))) return;
    Controller controller;
    controller.handle.reset(SDL_GameControllerOpen(index));
    if (!controller.handle) return;
    controller.id = SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(controller.handle.get()));
    if (SDL_GameControllerHasRumble(controller.handle.get()) == SDL_TRUE)
        controller.motors = std::make_unique<RumbleMotors>(controller.handle.get());
    controller.name = text(SDL_GameControllerName(controller.handle.get()), "Game controller");
    events.push_back({ControllerEvent::Kind::connected, controller.name, {}, controller.hasTouchSurface()});
    controllers.push_back(std::move(controller));
}

void GameControllers::Impl::disconnect(SDL_JoystickID id) {
    Controller* controller = find(id);
    if (!controller) return;
    // Tells listeners that the buttons are no longer held.
    for (const ControllerButton held : controller->pressed)
        events.push_back({ControllerEvent::Kind::released, controller->name, held, false});
    events.push_back({ControllerEvent::Kind::disconnected, controller->name, {}, false});
    liftFingers(id);
    std::erase_if(controllers, [&](const Controller& each) { return each.id == id; });
}

void GameControllers::Impl::turn(const SDL_ControllerAxisEvent& event) {
    Controller* controller = find(event.which);
    if (!controller) return;
    if (event.axis == SDL_CONTROLLER_AXIS_LEFTX) controller->stickX = axisShare(event.value);
    if (event.axis == SDL_CONTROLLER_AXIS_LEFTY) controller->stickY = -axisShare(event.value);
    if (std::hypot(controller->stickX, controller->stickY) > deadZone) inUse = controller->id;
}

void GameControllers::Impl::press(const SDL_ControllerButtonEvent& event) {
    Controller* controller = find(event.which);
    const auto which = button(event.button);
    if (!controller || !which) return;
    inUse = controller->id;
    const bool isDown = event.state == SDL_PRESSED;
    if (isDown ? !controller->pressed.insert(*which).second : controller->pressed.erase(*which) == 0) return;
    events.push_back({isDown ? ControllerEvent::Kind::pressed : ControllerEvent::Kind::released,
                      controller->name, *which, false});
}

void GameControllers::Impl::touch(const SDL_ControllerTouchpadEvent& event) {
    const FingerKey key{event.which, event.touchpad, event.finger};
    const auto known = std::find(fingers.begin(), fingers.end(), key);
    const auto place = known - fingers.begin();
    if (event.type == SDL_CONTROLLERTOUCHPADUP) {
        if (known == fingers.end()) return;
        fingers.erase(known);
        contacts.erase(contacts.begin() + place);
        return;
    }
    if (!find(event.which) || !std::isfinite(event.x) || !std::isfinite(event.y)) return;
    inUse = event.which;
    if (known == fingers.end()) {
        fingers.push_back(key);
        contacts.push_back({(std::int64_t{event.which} << 32) + ++lastContact, 0, 0});
    }
    // SDL counts from the far edge.
    Contact& contact = contacts[static_cast<std::size_t>(place)];
    contact.x = std::clamp(double{event.x}, 0.0, 1.0);
    contact.y = 1 - std::clamp(double{event.y}, 0.0, 1.0);
}

void GameControllers::Impl::liftFingers(SDL_JoystickID id) {
    for (std::size_t index = fingers.size(); index-- > 0;) {
        if (fingers[index].controller != id) continue;
        fingers.erase(fingers.begin() + static_cast<std::ptrdiff_t>(index));
        contacts.erase(contacts.begin() + static_cast<std::ptrdiff_t>(index));
    }
}

const Controller* GameControllers::Impl::rumbling() const {
    const Controller* first = nullptr;
    for (const Controller& controller : controllers) {
        if (!controller.rumbles()) continue;
        if (controller.id == inUse) return &controller;
        if (!first) first = &controller;
    }
    return first;
}

GameControllers::GameControllers(std::function<double()> now) : impl_(std::make_unique<Impl>()) {
    impl_->now = std::move(now);
    // Buttons by position, not by their letters.
    SDL_SetHint(SDL_HINT_GAMECONTROLLER_USE_BUTTON_LABELS, "0");
    impl_->hasSubsystem = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
    if (!impl_->hasSubsystem) return;
    impl_->hasHaptics = SDL_InitSubSystem(SDL_INIT_HAPTIC) == 0;
    for (int index = 0; index < SDL_NumJoysticks(); ++index) impl_->connect(index);
}

GameControllers::~GameControllers() {
    impl_->controllers.clear();
    if (impl_->hasHaptics) SDL_QuitSubSystem(SDL_INIT_HAPTIC);
    if (impl_->hasSubsystem) SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

void GameControllers::handle(const void* sdlEvent) {
    const auto& event = *static_cast<const SDL_Event*>(sdlEvent);
    switch (event.type) {
        case SDL_CONTROLLERDEVICEADDED:
            impl_->connect(event.cdevice.which);
            break;
        case SDL_CONTROLLERDEVICEREMOVED:
            impl_->disconnect(event.cdevice.which);
            break;
        case SDL_CONTROLLERAXISMOTION:
            impl_->turn(event.caxis);
            break;
        case SDL_CONTROLLERBUTTONDOWN:
        case SDL_CONTROLLERBUTTONUP:
            impl_->press(event.cbutton);
            break;
        case SDL_CONTROLLERTOUCHPADDOWN:
        case SDL_CONTROLLERTOUCHPADMOTION:
        case SDL_CONTROLLERTOUCHPADUP:
            impl_->touch(event.ctouchpad);
            break;
        default:
            break;
    }
}

std::vector<ControllerEvent> GameControllers::takeEvents() {
    return std::exchange(impl_->events, {});
}

const std::vector<Contact>& GameControllers::contacts() const {
    return impl_->contacts;
}

bool GameControllers::hasSurfaceOf(std::int64_t contact) const {
    return impl_->find(static_cast<SDL_JoystickID>(contact >> 32)) != nullptr;
}

Stick GameControllers::stick() const {
    Stick furthest;
    for (const Controller& controller : impl_->controllers) {
        const Stick stick = lively(controller.stickX, controller.stickY);
        if (std::hypot(stick.x, stick.y) > std::hypot(furthest.x, furthest.y)) furthest = stick;
    }
    return furthest;
}

std::vector<GameControllers::Description> GameControllers::controllers() const {
    std::vector<Description> result;
    for (const Controller& controller : impl_->controllers)
        result.push_back({controller.name, controller.hasTouchSurface(), controller.rumbles()});
    return result;
}

std::string GameControllers::buttonName(ControllerButton button) const {
    if (impl_->controllers.empty()) return {};
    const Controller* used = impl_->find(impl_->inUse);
    if (!used) used = &impl_->controllers.front();
    return std::string(controllerButtonName(SDL_GameControllerGetType(used->handle.get()), button));
}

void GameControllers::perform(HapticPattern pattern) {
    const Controller* controller = impl_->rumbling();
    if (!controller) return;
    if (impl_->pulses.request(pattern, impl_->now())) controller->motors->play(pattern);
}

bool GameControllers::isAvailable() const {
    return impl_->rumbling() != nullptr;
}

}  // namespace gull
