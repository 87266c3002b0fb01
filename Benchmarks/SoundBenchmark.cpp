#include "Engine/Sound/SoundStream.h"
#include "Gullwick/Feedback/Sounds.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace gull {
namespace {

/// A sound that was not prepared is made in the middle of a frame: the chest has 15 ms.
void makeSound(benchmark::State& state, Sound sound) {
    for (auto _ : state) benchmark::DoNotOptimize(Sounds::make(sound));
}
BENCHMARK_CAPTURE(makeSound, chest, Sound::chest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeSound, wave, Sound::wave)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeSound, junk, Sound::junk)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeSound, beep, Sound::beep(9))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeSound, buzz, Sound::buzz(9))->Unit(benchmark::kMillisecond);

/// Once, at the start of the first beach: 40 ms.
void makeSurf(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Sounds::makeSurf());
}
BENCHMARK(makeSurf)->Unit(benchmark::kMillisecond);

/// One buffer of the device (512 frames, 10.7 ms at 48 kHz) with all voices sounding.
void renderBuffer(benchmark::State& state) {
    const auto surf = Sounds::makeSurf();
    const auto chest = Sounds::make(Sound::chest);
    SoundStream stream(static_cast<int>(state.range(0)), 2);
    stream.send({SoundStream::Command::Kind::loop, 0, 0, surf});
    stream.send({SoundStream::Command::Kind::loopVolume, 0, 0.32F, {}});
    std::vector<float> buffer(1024);
    int buffers = 0;
    for (auto _ : state) {
        if (buffers++ % 200 == 0)
            for (int voice = 0; voice < SoundOutput::voiceCount; ++voice)
                stream.send({SoundStream::Command::Kind::play, voice, 1, chest});
        stream.render(buffer);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(renderBuffer)->Arg(44100)->Arg(48000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace gull
