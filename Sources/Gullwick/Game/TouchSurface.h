#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"
#include "Engine/Loop/Clock.h"
#include "Gullwick/Game/KeyAction.h"

#include <cstdint>
#include <glm/vec2.hpp>
#include <optional>
#include <vector>

namespace gull {

class AppSettings;
class GameController;

/// Turns fingers on a trackpad, the mouse, keys and the sticks of a game controller into calls on the game.
/// While a finger sweeps, the pointer is captured (locked and hidden) and the mouse steers nothing; Escape
/// frees it and lets the mouse steer instead.
///
/// A finger meant for another program never moves the coil: while the window is unfocused, or something
/// covers the beach, fingers are only watched, and those already down must be lifted first. The same goes for
/// the pointer that the desktop moves along with such a finger.
class TouchSurface {
  public:
    static constexpr double clickHold = 0.05;   ///< seconds after a click's release in which the target rests
    static constexpr double stickSpeed = 0.75;  ///< plot depths per second at full tilt
    static constexpr double stickTilt = 0.6;    ///< tilt that counts as a step in the beach select
    /// A finger that was down no longer than this (seconds) has tapped; the desktop's click for the tap comes
    /// at most `tapDelay` after the finger is up.
    static constexpr double tapLength = 0.3;
    static constexpr double tapDelay = 0.25;

    /// Everything is owned by the caller and must outlive the surface. It starts out without focus.
    TouchSurface(GameController& game, AppSettings& settings, PointerLock& pointer, const Clock& clock);
    /// Frees the pointer.
    ~TouchSurface();
    TouchSurface(const TouchSurface&) = delete;
    TouchSurface& operator=(const TouchSurface&) = delete;

    /// Size of the view of the beach, in points.
    void setViewSize(const glm::dvec2& size) { viewSize_ = size; }

    /// All fingers on the trackpad, after each change, even while the window is unfocused. The one farthest
    /// up the pad steers.
    void touches(const std::vector<Contact>& contacts);
    /// Call once a frame: carries out what waited for the end of a click.
    void update();
    void mouse(const MouseEvent& event);
    /// False: not one of the game's keys; passed on.
    bool key(const KeyEvent& event);

    /// A click from something other than the mouse, e.g. a game controller's touch surface; mouse() calls
    /// these, too.
    void pressed(int button = 1);
    void released(int button = 1);
    /// A stick held at (x, y), each -1 to 1, y up, 0 at rest, for the last `dt` seconds: call it every frame.
    /// It moves the target, or steps through the beach select.
    void stick(double x, double y, double dt);
    /// A button of a game controller. Does nothing while something covers the beach.
    void perform(const KeyAction::Any& action);

    /// Turns trackpad sweeping on (capture waits for the next touch) or, while captured, off; says which.
    void toggleTrackpad();
    /// The same with an explicit value, whether captured or not.
    void setTrackpad(bool on);
    /// Frees the pointer.
    void release();
    /// The pad of the sweeping finger is gone: frees the pointer for the mouse to steer, and says so.
    void trackpadLost();
    /// A pad was connected on which a finger may sweep; says so if it would.
    void trackpadFound();

    void focusGained();
    /// Also for a window that closes or is minimised.
    void focusLost();
    /// A menu or card that takes input covers the beach: the pointer is free and clicks go nowhere.
    void setCovered(bool covered);

    bool isCaptured() const { return captured_; }
    /// The finger that steers or steered last; empty before the first.
    std::optional<std::int64_t> steeringFinger() const { return steering_; }

  private:
    bool attends() const { return focused_ && !covered_; }
    void engage();
    void leave();
    bool holdsTarget() const;
    void steer(const Contact& finger);
    bool hasTapped() const;
    bool isMovedByHand(const MouseEvent& event);

    GameController& game_;
    AppSettings& settings_;
    PointerLock& pointer_;
    const Clock& clock_;
    glm::dvec2 viewSize_{1240, 800};
    bool captured_ = false;
    bool focused_ = false;
    bool covered_ = false;
    std::vector<std::int64_t> down_;    // fingers on the pad
    std::vector<std::int64_t> barred_;  // fingers that must be lifted before they count
    unsigned buttons_ = 0;              // buttons held down, one bit each
    double heldUntil_ = 0;
    bool stickStepped_ = false;
    std::optional<std::int64_t> steering_;
    std::optional<Contact> waiting_;  // where the steering finger went while a click held the target
    double touchedAt_ = -1;           // when the steering finger came down
    double liftedAt_ = -1;            // when it went up; -1: it is down
    bool isPointerFresh_ = false;     // freed and not yet moved by a hand
    double freedAt_ = 0;
    std::optional<glm::dvec2> restsAt_;  // of the freshly freed pointer
};

}  // namespace gull
