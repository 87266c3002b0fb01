#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The buttons of a game controller by where they sit, whatever is printed on them.
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

/// Every game controller of the machine, as they come and go. A touch surface counts as a trackpad, rumble
/// stands in for an actuator.
///
/// Main thread only. SDL's video must be up before the first call (a Window does that).
class GameControllers final : public HapticPerformer {
  public:
    struct Description {
        std::string name;
        bool hasTouchSurface = false;
        bool rumbles = false;
    };

    /// `now` gives the uptime in seconds, by which rumble pulses are kept apart.
    explicit GameControllers(std::function<double()> now);
    ~GameControllers() override;
    GameControllers(const GameControllers&) = delete;
    GameControllers& operator=(const GameControllers&) = delete;

    /// Takes in an event as the window hands it on (a pointer to SDL's).
    void handle(const void* sdlEvent);
    /// What has happened since the last call, in order.
    std::vector<ControllerEvent> takeEvents();
    /// The fingers on all touch surfaces.
    const std::vector<Contact>& contacts() const;
    /// Whether the controller that this contact is on, or was on, is still there.
    bool hasSurfaceOf(std::int64_t contact) const;
    /// The left stick that is pushed furthest; within its dead zone it rests, behind it lies the whole range.
    Stick stick() const;
    std::vector<Description> controllers() const;
    /// What the controller in use (the one last touched, else the first) calls that button; empty without
    /// one.
    std::string buttonName(ControllerButton button) const;

    /// Rumbles for a moment on the controllers in use.
    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
