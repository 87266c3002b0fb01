#pragma once

#include "Engine/Views/Animated.h"
#include "Gullwick/HUD/HudPose.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// Moves the HUD from state to state: each frame it is given the current state and starts the fades, springs
/// and find pop-up that a change calls for. All times are seconds of the game's clock.
class HudMotion {
  public:
    static constexpr double phaseSeconds = 0.25;
    static constexpr double toastSeconds = 0.2;
    static constexpr Spring slotSpring{0.35, 0.6};
    static constexpr Spring tileSpring{0.25, 0.7};

    static constexpr double popupRiseDelay = 0.35;  ///< after the find
    static constexpr double popupRiseSeconds = 0.35;
    static constexpr double popupRise = 24;         ///< points
    static constexpr double popupLeaveDelay = 2.0;  ///< after the find
    static constexpr double popupLeaveSeconds = 0.5;
    static constexpr double popupLeave = 46;         ///< points
    static constexpr double popupCutSeconds = 0.15;  ///< its fade when play ends while it is up

    /// How long the tick mark stays lit: shorter than the gap between the two ticks of a pair, so that a pair
    /// is seen as two.
    static constexpr double tickSeconds = 0.032;

    /// Updates to `state` at `now`. The first state is shown at rest. `reduceMotion`: springs do not
    /// overshoot.
    void follow(const HudState& state, double now, bool reduceMotion);
    HudPose pose(double now) const;
    /// True if pose() will change even without a new state.
    bool isMoving(double now) const;

  private:
    void followPhase(const HudState& state, double now);
    void followToast(const HudState& state, double now);
    void followFinds(const HudState& state, double now, bool reduceMotion);
    void followPopup(const HudState& state, double now);
    void followTick(const HudState& state, double now);

    struct Toast {
        std::string text;
        Animated opacity;
        bool isLow;
    };

    std::optional<HudState> last_;
    Animated bars_{1};
    Animated bottomBar_{1};
    Animated card_{0};
    Animated select_{0};
    Animated pause_{0};
    std::vector<Toast> toasts_;
    std::vector<Animated> slots_;
    std::array<Animated, HudPose::tiles> tile_{};
    std::optional<ItemKind> popupShown_;
    Animated popupAlpha_{0};
    Animated popupLift_{0};
    std::optional<double> popupLeaves_;  ///< when the pop-up begins to fade
    double tickUntil_ = 0;
};

}  // namespace gull
