#pragma once

#include "Engine/Log/Require.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Stage/FiniteCheck.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"
#include "Gullwick/Settings/AppSettings.h"

#include <optional>

namespace gull {

/// A game under a manual clock, without window, sound and files.
struct FuzzGame {
    struct NoPointer final : PointerLock {
        void lock() override {}
        void unlock() override {}
    };

    explicit FuzzGame(std::uint64_t seed, double start = 1000)
        : clock(start), game(loop, settings, feedback, {}, false, seed) {
        surface.focusGained();
    }

    void turn(double seconds) { loop.turn(clock, seconds); }

    /// The invariants of a game, whatever is done to it.
    void check() {
        const auto isShare = [](double value) { return value >= 0 && value <= 1; };
        require(isShare(game.coil().x) && isShare(game.coil().y), "the coil left the plot: {}, {}",
                game.coil().x, game.coil().y);
        require(game.timeLeft >= 0 && game.timeLeft <= game.spec->tideSeconds, "{} s of tide are left",
                game.timeLeft.get());
        require(isShare(game.meter), "the meter shows {}", game.meter.get());
        require(game.earnedStars >= 0 && game.earnedStars <= 3, "{} stars", game.earnedStars.get());
        require(game.selection >= 1 && game.selection <= 8, "beach {} is chosen", game.selection.get());
        require(game.tray->size() == game.spec->treasures.size(), "the tray has another size than the beach");
        const std::string fault = nonFiniteNumber(game.world().stage());
        require(fault.empty(), "not finite: {}", fault);
    }

    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{{}};
    Feedback feedback{settings, loop, nullptr, nullptr};
    NoPointer pointer;
    GameController game;
    TouchSurface surface{game, settings, pointer, clock};
};

}  // namespace gull
