#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The buttons of a game controller by position, whatever is printed on them.
enum class ControllerButton { south, east, west, north, start, back, left, right, up, down, touchClick };

struct ControllerEvent {
    enum class Kind { connected, disconnected, pressed, released };
    Kind kind = Kind::pressed;
    std::string name;                                   ///< of the controller
    ControllerButton button = ControllerButton::south;  ///< with `pressed` and `released`
    bool hasTouchSurface = false;                       ///< with `connected`
};

/// How far a stick is pushed: each -1 to 1, x to the right, y away from the player; 0 at rest.
struct Stick {
    double x = 0;
    double y = 0;
};

/// All game controllers of the machine, which may come and go. A touch surface counts as a trackpad; rumble
/// replaces an actuator.
///
/// Main thread only. SDL's video must be up before the first call (a Window does that).
class GameControllers final : public HapticPerformer {
  public:
    struct Description {
        std::string name;
        bool hasTouchSurface = false;
        bool rumbles = false;
    };

    /// `now` returns the uptime in seconds, which keeps rumble pulses apart.
    explicit GameControllers(std::function<double()> now);
    ~GameControllers() override;
    GameControllers(const GameControllers&) = delete;
    GameControllers& operator=(const GameControllers&) = delete;

    /// Handles an event passed on by the window (a pointer to SDL's event).
    void handle(const void* sdlEvent);
    /// Everything that happened since the last call, in order.
    std::vector<ControllerEvent> takeEvents();
    /// The fingers on all touch surfaces.
    const std::vector<Contact>& contacts() const;
    /// Whether the controller that this contact is or was on is still connected.
    bool hasSurfaceOf(std::int64_t contact) const;
    /// The left stick that is pushed furthest. Within the dead zone it counts as at rest; the full range
    /// begins outside it.
    Stick stick() const;
    std::vector<Description> controllers() const;
    /// The name of that button on the controller in use (the last one touched, else the first); empty without
    /// a controller.
    std::string buttonName(ControllerButton button) const;

    /// Rumbles briefly on the controllers in use.
    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
