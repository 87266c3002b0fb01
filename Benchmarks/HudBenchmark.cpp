#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/HUD/Overlay.h"
#include "Gullwick/Settings/AppSettings.h"

#include <benchmark/benchmark.h>

// The overlay's share of a frame: 1 ms on the budget machine, at 1240 x 800.

namespace gull {
namespace {

struct BlankIcons final : IconSource {
    Image image(ItemKind) override { return Image(ItemIcons::size, ItemIcons::size); }
};

/// A game in play under a clock turned by hand.
struct Play {
    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{"/dev/null"};
    Feedback feedback{settings, loop, nullptr, nullptr};
    GameController game{loop, feedback, {}, false, 7};
    BlankIcons source;
    ItemIcons icons{source};
    Overlay overlay{game, settings, icons, [] { return std::vector<Menu>{}; }};
    int frame = 0;

    Play() {
        game.beginBeach(8, false, 7);
        loop.turn(clock, 5);
        while (overlay.prepareIcon()) {
        }
    }
    /// The coil sweeps to and fro over what is buried.
    void step() {
        ++frame;
        const int sweep = frame % 400;
        game.setTarget({0.1 + 0.002 * (sweep < 200 ? sweep : 400 - sweep), 0.3 + 0.001 * (frame % 300)});
        if (frame % 2000 == 0) game.beginBeach(8, false, 7);
        loop.turn(clock, 1.0 / 60);
    }
};

void hudOfAPlayingFrame(benchmark::State& state) {
    const auto scale = static_cast<double>(state.range(0));
    Play play;
    play.overlay.update(play.clock.now(), 1240, 800, scale);
    double pixels = 0;
    for (auto _ : state) {
        state.PauseTiming();
        play.step();
        state.ResumeTiming();
        for (const Overlay::Area& area : play.overlay.update(play.clock.now(), 1240, 800, scale)) {
            pixels += static_cast<double>(area.width) * area.height;
        }
    }
    state.counters["pixels"] = benchmark::Counter(pixels, benchmark::Counter::kAvgIterations);
}
BENCHMARK(hudOfAPlayingFrame)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond)->Iterations(3000);

/// A window of another size every time: nothing can be kept.
void hudDrawnWhole(benchmark::State& state) {
    const auto scale = static_cast<double>(state.range(0));
    Play play;
    double width = 1240;
    for (auto _ : state) {
        width = width == 1240 ? 1241 : 1240;
        benchmark::DoNotOptimize(play.overlay.update(play.clock.now(), width, 800, scale));
    }
}
BENCHMARK(hudDrawnWhole)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

/// The dearest frames: the result card fading in over everything.
void hudOfAFadingCard(benchmark::State& state) {
    Play play;
    play.overlay.update(play.clock.now(), 1240, 800, 1);
    for (auto _ : state) {
        state.PauseTiming();
        if (play.game.phase == GameController::Phase::selecting) {
            play.game.closeSelect();
        } else {
            play.game.openSelect();
        }
        play.overlay.update(play.clock.now(), 1240, 800, 1);
        play.loop.turn(play.clock, 0.1);
        state.ResumeTiming();
        benchmark::DoNotOptimize(play.overlay.update(play.clock.now(), 1240, 800, 1));
    }
}
BENCHMARK(hudOfAFadingCard)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace gull
