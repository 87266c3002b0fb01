#include "Engine/Loop/Clock.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Sound/SoundOutput.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/SelfTest.h"
#include "Gullwick/Settings/AppSettings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace gull {
namespace {

/// Accepts every sound and plays none, so that the game does everything it does before a device.
struct DeafOutput final : SoundOutput {
    bool start() override { return true; }
    void play(int, std::span<const float>, float) override {}
    void loop(std::span<const float>) override {}
    void setLoopVolume(float) override {}
    void silence() override {}
};

/// A game that nobody draws, under a manual clock.
struct Table {
    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{std::filesystem::temp_directory_path() / "gullwick-benchmark" / "settings.json"};
    DeafOutput output;
    Feedback feedback{settings, loop, &output, nullptr};
    GameController game{loop, settings, feedback, "", false, 1};

    Table() {
        while (feedback.prepareOne()) {
        }
    }
};

/// A frame of steady play: the finger circles over the beach, the detector ticks, the trail grows.
void frameOfPlay(benchmark::State& state) {
    Table table;
    double sweep = 0;
    std::vector<double> times;
    for (auto _ : state) {
        if (table.game.phase != GameController::Phase::playing) {
            table.game.beginBeach(static_cast<int>(state.range(0)), false);
            table.loop.turn(table.clock, 0.1);
        }
        sweep += GameController::frameInterval;
        table.game.setTarget({0.5 + 0.4 * std::sin(0.9 * sweep), 0.5 + 0.35 * std::sin(1.3 * sweep)});
        const auto start = std::chrono::steady_clock::now();
        table.loop.turn(table.clock, GameController::frameInterval);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        times.push_back(took.count());
        state.SetIterationTime(took.count());
    }
    std::ranges::sort(times);
    state.counters["median_us"] = times[times.size() / 2] * 1e6;
    state.counters["p99_us"] = times[times.size() * 99 / 100] * 1e6;
    state.SetLabel("budget: median 100 us");
}
BENCHMARK(frameOfPlay)->Arg(1)->Arg(8)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// Opening a beach that nobody draws.
void beginBeach(benchmark::State& state) {
    Table table;
    for (auto _ : state) table.game.beginBeach(static_cast<int>(state.range(0)), true);
}
BENCHMARK(beginBeach)->DenseRange(1, 8)->Unit(benchmark::kMillisecond);

void selfTestOfAllBeaches(benchmark::State& state) {
    for (auto _ : state) {
        Table table;
        std::optional<int> status;
        Task<int> run = SelfTest::run(table.loop, table.settings, table.feedback, {"--selftest"},
                                      [](const std::string&) {});
        run.start([&status](int result) { status = result; });
        while (!status) table.loop.turn(table.clock, 1);
        if (*status != 0) state.SkipWithError("the self-test failed");
    }
    state.SetLabel("budget 5 s");
}
BENCHMARK(selfTestOfAllBeaches)->Unit(benchmark::kSecond)->Iterations(1)->Repetitions(3);

}  // namespace
}  // namespace gull
