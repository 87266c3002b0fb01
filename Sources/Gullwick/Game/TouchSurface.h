#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"
#include "Engine/Loop/Clock.h"
#include "Gullwick/Game/KeyAction.h"

#include <cstdint>
#include <glm/vec2.hpp>
#include <vector>

namespace gull {

class AppSettings;
class GameController;

/// Turns fingers on a trackpad, the mouse, keys and the sticks of a game controller into calls on the game.
/// While a finger sweeps, the pointer is captured (locked and hidden) and the mouse steers nothing; Escape
/// frees it and lets the mouse steer instead.
///
/// A finger in another program never moves the coil: while the window is unfocused, or something covers the
/// beach, fingers are only watched, and those that were down must be lifted first.
class TouchSurface {
  public:
    static constexpr double clickHold = 0.05;  ///< seconds after a click's release in which the target rests
    static constexpr double stickDeadZone = 0.18;  ///< of a stick's way, 0 to 1
    static constexpr double stickSpeed = 0.75;     ///< plot depths per second at full tilt
    static constexpr double stickTilt = 0.6;       ///< tilt that counts as a step in the beach select

    /// Everything is owned by the caller and must outlive the surface. It starts out focused.
    TouchSurface(GameController& game, AppSettings& settings, PointerLock& pointer, const Clock& clock);
    /// Frees the pointer.
    ~TouchSurface();
    TouchSurface(const TouchSurface&) = delete;
    TouchSurface& operator=(const TouchSurface&) = delete;

    /// Size of the view of the beach, in points.
    void setViewSize(const glm::dvec2& size) { viewSize_ = size; }

    /// All fingers now on the trackpad, after each change, also while the window is unfocused. The one
    /// farthest up the pad steers.
    void touches(const std::vector<Contact>& contacts);
    void mouse(const MouseEvent& event);
    /// False: not a key of the game's, passed on.
    bool key(const KeyEvent& event);

    /// A click that is not the mouse's, e.g. of a game controller's touch surface: mouse() calls these too.
    void pressed(int button = 1);
    void released(int button = 1);
    /// A stick held at (x, y), each -1 to 1, y up, for the last `dt` seconds: call it every frame. It moves
    /// the target, or steps through the beach select.
    void stick(double x, double y, double dt);
    /// A button of a game controller. Nothing while something covers the beach.
    void perform(const KeyAction::Any& action);

    /// Turns trackpad sweeping on (capture waits for the next touch), or, while captured, off; says which.
    void toggleTrackpad();
    /// Frees the pointer.
    void release();

    void focusGained();
    /// Also for a window that closes or is minimised.
    void focusLost();
    /// A menu or card that takes input lies over the beach: the pointer is free and clicks go nowhere.
    void setCovered(bool covered);

    bool isCaptured() const { return captured_; }

  private:
    bool attends() const { return focused_ && !covered_; }
    void engage();
    void leave();
    bool holdsTarget() const;

    GameController& game_;
    AppSettings& settings_;
    PointerLock& pointer_;
    const Clock& clock_;
    glm::dvec2 viewSize_{1240, 800};
    bool captured_ = false;
    bool focused_ = true;
    bool covered_ = false;
    std::vector<std::int64_t> down_;    // fingers on the pad
    std::vector<std::int64_t> barred_;  // those that must be lifted before they count
    unsigned buttons_ = 0;              // held down, a bit each
    double heldUntil_ = 0;
    bool stickStepped_ = false;
};

}  // namespace gull
