#include "GullCore/Hunt.h"

#include <benchmark/benchmark.h>

namespace gull {
namespace {

void burialOfTheLargestBeach(benchmark::State& state) {
    SplitMix64 rng(1);
    const BeachSpec& spec = Campaign::beach(8);
    for (auto _ : state) benchmark::DoNotOptimize(Burial::bury(spec, rng));
    state.SetLabel("budget 10 us");
}
BENCHMARK(burialOfTheLargestBeach)->Unit(benchmark::kMicrosecond);

void readingOfSixteenItems(benchmark::State& state) {
    SplitMix64 rng(1);
    const Hunt hunt(Campaign::beach(8), rng);
    PlotPoint at{0, 0};
    for (auto _ : state) {
        // A walk over the whole plot: what is out of reach costs less than what is near.
        at.x = at.x < 1 ? at.x + 0.0137 : 0;
        at.y = at.y < 1 ? at.y + 0.0041 : 0;
        benchmark::DoNotOptimize(hunt.reading(at));
    }
    state.SetLabel("budget 0.3 us");
}
BENCHMARK(readingOfSixteenItems)->Unit(benchmark::kNanosecond);

}  // namespace
}  // namespace gull
