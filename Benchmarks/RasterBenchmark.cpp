// Pictures and text: the drawing of start-up and overlay.

#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Png.h"
#include "Engine/Raster/Text.h"
#include "Gullwick/Scene/ItemFaces.h"
#include "Gullwick/Scene/PlankTexture.h"
#include "Gullwick/Scene/SkyTexture.h"
#include "Gullwick/Scene/SurfaceTextures.h"
#include "Gullwick/Scene/TrailCanvas.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

namespace {

using namespace gull;

template <Image make()>
void picture(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(make());
    state.SetLabel("once a program");
}
BENCHMARK(picture<SurfaceTextures::sandDetail>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<SurfaceTextures::sandNormal>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<SurfaceTextures::waterNormal>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<SurfaceTextures::foam>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<ItemFaces::doubloonNormal>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<ItemFaces::watchDial>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<ItemFaces::compassRose>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<ItemFaces::canLabel>)->Unit(benchmark::kMillisecond);
BENCHMARK(picture<plankTexture>)->Unit(benchmark::kMillisecond);

/// Arguments: beach, width.
void sky(benchmark::State& state) {
    const BeachLook& look = BeachLook::forBeach(static_cast<int>(state.range(0)));
    const int width = static_cast<int>(state.range(1));
    for (auto _ : state) benchmark::DoNotOptimize(skyPanorama(look, width));
    state.SetLabel("once a beach");
}
BENCHMARK(sky)->ArgsProduct({{1, 7}, {512, 2048}})->Unit(benchmark::kMillisecond);

void sweepStamp(benchmark::State& state) {
    TrailCanvas trail;
    double x = 0;
    for (auto _ : state) {
        x = x < 0.9 ? x + 0.012 : 0.1;
        trail.sweep({x, 0.5});
    }
}
BENCHMARK(sweepStamp)->Unit(benchmark::kMicrosecond);

const TextStyle caption{.font = {.size = 10, .weight = FontWeight::semibold}, .tracking = 3};
const Colour cream{0.99, 0.96, 0.89, 1};

/// A text drawn every frame, and one that is new every time.
void textAgain(benchmark::State& state) {
    Canvas canvas(300, 40);
    for (auto _ : state) drawText(canvas, "UNTIL HIGH TIDE", caption, cream, 10, 10);
}
BENCHMARK(textAgain)->Unit(benchmark::kMicrosecond);

void textAnew(benchmark::State& state) {
    Canvas canvas(300, 40);
    int i = 0;
    for (auto _ : state) drawText(canvas, "HAUL " + std::to_string(++i), caption, cream, 10, 10);
}
BENCHMARK(textAnew)->Unit(benchmark::kMicrosecond);

/// The tide clock with its shadow; argument: 1 when the digits change every time.
void shadowedClock(benchmark::State& state) {
    Canvas canvas(1240, 800);
    int second = 0;
    const TextStyle digits{.font = {.size = 32, .weight = FontWeight::bold, .tabularDigits = true}};
    for (auto _ : state) {
        if (state.range(0) == 1) second = (second + 1) % 600;
        canvas.beginShadow({0, 0, 0, 0.5}, 6);
        drawText(canvas, std::to_string(100 + second), digits, cream, 1100, 32);
        drawText(canvas, "UNTIL HIGH TIDE", caption, cream, 1064, 76);
        canvas.endShadow();
    }
}
BENCHMARK(shadowedClock)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void layerAtHalfOpacity(benchmark::State& state) {
    Canvas canvas(1240, 800);
    for (auto _ : state) {
        canvas.beginLayer(0.5);
        canvas.addRoundedRect({500, 20, 240, 40}, 20);
        canvas.fill({0.02, 0.09, 0.11, 0.62});
        drawText(canvas, "Beach cleared", caption, cream, 520, 32);
        canvas.endLayer();
    }
}
BENCHMARK(layerAtHalfOpacity)->Unit(benchmark::kMicrosecond);

void pngOfASnapshot(benchmark::State& state) {
    Image image(1400, 900);
    const Image sand = SurfaceTextures::sandDetail();
    for (int y = 0; y < 900; ++y) {
        for (int x = 0; x < 1400; ++x) {
            std::copy(sand.at(x % 1024, y), sand.at(x % 1024, y) + 4, image.at(x, y));
        }
    }
    for (auto _ : state) benchmark::DoNotOptimize(encodePng(image));
}
BENCHMARK(pngOfASnapshot)->Unit(benchmark::kMillisecond);

}  // namespace
