#include "GullCore/Hunt.h"

#include <benchmark/benchmark.h>

namespace {

using namespace gull;

// Budget: 10 microseconds.
void buryTheLargestBeach(benchmark::State& state) {
    SplitMix64 rng(1);
    for (auto _ : state) benchmark::DoNotOptimize(Burial::bury(Campaign::beach(8), rng));
}
BENCHMARK(buryTheLargestBeach);

// Budget: 0.3 microseconds.
void readSixteenItems(benchmark::State& state) {
    SplitMix64 rng(1);
    const Hunt hunt(Campaign::beach(8), rng);
    PlotPoint at{0, 0.5};
    for (auto _ : state) {
        at.x = at.x < 1 ? at.x + 0.001 : 0;
        benchmark::DoNotOptimize(hunt.reading(at));
    }
}
BENCHMARK(readSixteenItems);

}  // namespace
