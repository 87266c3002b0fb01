#include "Engine/Compositor/Renderer.h"
#include "Engine/Window/Window.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/HUD/Overlay.h"
#include "Gullwick/Settings/AppSettings.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

// The overlay's share of a frame: 1 ms on the budget machine, at 1240 x 800.

namespace gull {
namespace {

struct BlankIcons final : IconSource {
    Image image(ItemKind) override { return Image(ItemIcons::size, ItemIcons::size); }
};

/// A game in play under a manual clock.
struct Play {
    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{"/dev/null"};
    Feedback feedback{settings, loop, nullptr, nullptr};
    GameController game{loop, settings, feedback, {}, false, 7};
    BlankIcons source;
    ItemIcons icons{source};
    Language language;
    Overlay overlay{game, settings, language, icons, [] { return std::vector<Menu>{}; }};
    int frame = 0;

    Play() {
        game.beginBeach(8, false, 7);
        loop.turn(clock, 5);
        while (overlay.prepareIcon()) {
        }
    }
    /// The coil sweeps to and fro over the buried items.
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
        for (const OverlayLayer& layer : play.overlay.update(play.clock.now(), 1240, 800, scale)) {
            for (const OverlayLayer::Area& area : layer.changes) pixels += 1.0 * area.width * area.height;
        }
    }
    state.counters["pixels"] = benchmark::Counter(pixels, benchmark::Counter::kAvgIterations);
}
BENCHMARK(hudOfAPlayingFrame)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond)->Iterations(3000);

/// The window changes size every time, so nothing can be reused.
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

/// The beach select fading over everything.
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

/// The cursor goes from tile to tile of the beach select: one swells, one settles.
void hudOfASwellingTile(benchmark::State& state) {
    Play play;
    play.game.openSelect();
    play.overlay.update(play.clock.now(), 1240, 800, 1);
    int frame = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (frame++ % 12 == 0) play.game.key(KeyAction::Move{play.game.selection == 1 ? 1 : -1, 0});
        play.loop.turn(play.clock, 1.0 / 60);
        state.ResumeTiming();
        benchmark::DoNotOptimize(play.overlay.update(play.clock.now(), 1240, 800, 1));
    }
}
BENCHMARK(hudOfASwellingTile)->Unit(benchmark::kMicrosecond)->Iterations(600);

/// A window that shows only the overlay; null without a display.
struct OverlayWindow {
    Window window{{}};
    Renderer renderer;
    PixelSize size{window.pixelWidth(), window.pixelHeight()};

    OverlayWindow() {
        const Stage nothing;
        renderer.draw(nothing, size, 0, BuildMode::complete);
    }
    /// Waits for the last pixel: reading one back waits for all.
    void show(Play& play) {
        renderer.drawOverlay(
            play.overlay.update(play.clock.now(), window.width(), window.height(), window.scale()));
        benchmark::DoNotOptimize(renderer.readBack({1, 1}));
    }
    static std::unique_ptr<OverlayWindow> open(benchmark::State& state) {
        try {
            return std::make_unique<OverlayWindow>();
        } catch (const std::runtime_error& error) {
            state.SkipWithError(error.what());
            return nullptr;
        }
    }
};

/// With upload and blending, over all threads of a software rasteriser.
void overlayOfAPlayingFrame(benchmark::State& state) {
    Play play;
    const auto window = OverlayWindow::open(state);
    if (!window) return;
    window->show(play);
    for (auto _ : state) {
        state.PauseTiming();
        play.step();
        state.ResumeTiming();
        window->show(play);
    }
}
BENCHMARK(overlayOfAPlayingFrame)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime()->Iterations(200);

/// The 15 frames in which the beach select comes or goes. The first is measured separately: it draws the
/// layer.
void overlayOfAFadingScreen(benchmark::State& state) {
    const bool isFirst = state.range(0) == 1;
    constexpr int frames = 15;
    Play play;
    const auto window = OverlayWindow::open(state);
    if (!window) return;
    int frame = frames;
    for (auto _ : state) {
        state.PauseTiming();
        if (isFirst || frame >= frames) {
            frame = 1;
            play.loop.turn(play.clock, 1);
            window->show(play);
            if (play.game.phase == GameController::Phase::selecting) {
                play.game.closeSelect();
            } else {
                play.game.openSelect();
            }
            window->show(play);  // still as it was: the fade begins here
        }
        play.loop.turn(play.clock, 1.0 / 60);
        ++frame;
        state.ResumeTiming();
        window->show(play);
    }
}
BENCHMARK(overlayOfAFadingScreen)
    ->ArgName("first")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMicrosecond)
    ->MeasureProcessCPUTime()
    ->Iterations(140);

}  // namespace
}  // namespace gull
