#include "BeachOffScreen.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace gull {
namespace {

/// Beach 1 as in play. Every measurement ends by reading the pixels back, so that the work is
/// done and not only queued; reading them costs about a millisecond itself.
struct Play : BeachOffScreen {
    double time = 100;
    PlotPoint coil{0.5, 0.5};

    explicit Play(RenderTier tier, const PixelSize& of = {1240, 800}) : BeachOffScreen(tier, of) {
        scene.introStart = -100;
        step(false);
        draw(BuildMode::complete);
    }
    void step(bool sweeping) {
        time += 1.0 / 60;
        if (sweeping) {
            coil = {0.5 + 0.3 * std::sin(time), 0.5 + 0.2 * std::cos(1.3 * time)};
            scene.trail.sweep(coil);
        }
        BeachOffScreen::step(time, 1.0 / 60, coil);
    }
    void draw(BuildMode mode) {
        BeachOffScreen::draw(mode);
        benchmark::DoNotOptimize(renderer.readBack({1, 1}));
    }
};

void frameAtRest(benchmark::State& state) {
    Play play(state.range(0) == 0 ? RenderTier::fast : RenderTier::full);
    for (auto _ : state) {
        play.step(false);
        play.draw(BuildMode::gradual);
    }
}
BENCHMARK(frameAtRest)
    ->ArgName("full")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

/// The trail reaches the picture every third frame.
void frameSweeping(benchmark::State& state) {
    Play play(RenderTier::fast, {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))});
    for (auto _ : state) {
        play.step(true);
        play.draw(BuildMode::gradual);
    }
}
BENCHMARK(frameSweeping)
    ->Args({1240, 800})
    ->Args({1920, 1080})
    ->Args({2560, 1440})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

/// The first fifth of a second of a dig, 12 frames: the item comes up while its hole is drawn into the kept
/// layer.
void digBegins(benchmark::State& state) {
    Play play(RenderTier::fast);
    int id = 0;
    for (auto _ : state) {
        const PlotPoint at{0.2 + 0.05 * (id % 13), 0.3 + 0.03 * (id % 7)};
        play.scene.dig(at, Hunt::Treasure{{++id, static_cast<ItemKind>(state.range(0)), at, 0}});
        for (int frame = 0; frame < 12; ++frame) {
            play.step(false);
            play.draw(BuildMode::gradual);
        }
        state.PauseTiming();
        for (int frame = 0; frame < 240; ++frame) play.step(false);
        play.draw(BuildMode::complete);
        state.ResumeTiming();
    }
}
BENCHMARK(digBegins)
    ->ArgName("item")
    ->Arg(static_cast<int>(ItemKind::coin))
    ->Arg(static_cast<int>(ItemKind::watch))
    ->Arg(static_cast<int>(ItemKind::chest))
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

void staticLayer(benchmark::State& state) {
    Play play(RenderTier::fast);
    for (auto _ : state) {
        play.scene.stage().touchStill();
        play.draw(BuildMode::complete);
    }
}
BENCHMARK(staticLayer)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

/// A frame from the middle of the fly-in, without the static layer that is built meanwhile.
void frameFlying(benchmark::State& state) {
    Play play(RenderTier::fast);
    auto fly = [&play] {
        play.scene.introStart = play.time - 0.4 - 0.1 * std::sin(play.time);  // never the same view twice
        play.step(false);
        play.scene.stage().restingView.reset();
        play.draw(BuildMode::gradual);
    };
    fly();
    for (auto _ : state) fly();
}
BENCHMARK(frameFlying)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void snapshot(benchmark::State& state) {
    Play play(RenderTier::fast);
    for (auto _ : state) benchmark::DoNotOptimize(play.renderer.snapshot(play.scene.stage(), {1400, 900}));
}
BENCHMARK(snapshot)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

}  // namespace
}  // namespace gull
