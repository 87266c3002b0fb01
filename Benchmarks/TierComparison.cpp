// How far the fast tier's picture is from the full one on every beach at rest, in decibels (peak signal to
// noise), on the beach and on the sea. With a folder as argument both pictures are left there.
//
//     build/Benchmarks/TierComparison [folder]

#include "Engine/Loop/Clock.h"
#include "Engine/Raster/Png.h"
#include "Engine/Render/OffscreenContext.h"
#include "Engine/Render/Renderer.h"
#include "Engine/Render/Target.h"
#include "Gullwick/Scene/BeachScene.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

namespace gull {
namespace {

constexpr Renderer::Size size{1240, 800};
constexpr int shore = 330;  ///< rows from the top: sea above, beach below, on every beach

double likeness(const Image& a, const Image& b, int top, int bottom) {
    double sum = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = 0; x < a.width; ++x)
            for (int k = 0; k < 3; ++k) {
                double d = a.at(x, y)[k] - b.at(x, y)[k];
                sum += d * d;
            }
    double mean = sum / (3.0 * a.width * (bottom - top));
    return mean == 0 ? 99 : 10 * std::log10(255 * 255 / mean);
}

void leave(const Image& image, const std::string& path) {
    const auto bytes = encodePng(image).value();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void compare(int beach, const std::string& folder) {
    ManualClock clock;
    MainLoop loop{clock};
    DelayedWork work{loop};
    BeachScene scene{work};
    Renderer renderer;
    Target window{{size.width, size.height}, {{Format::rgba8}}};
    scene.frame(static_cast<double>(size.width) / size.height);
    scene.setBeach(beach);
    scene.introStart = -100;
    renderer.setTier(RenderTier::fast);
    scene.update(100, 1.0 / 60, {0.4, 0.4}, {0.1, 0}, 0, 0.6, {1, 0.76, 0.28, 1});
    renderer.draw(scene.stage(), size, window.framebuffer(), true);
    Image fast = renderer.readBack(size), full = renderer.snapshot(scene.stage(), size);
    fmt::print("beach {}: {:.1f} dB on the beach, {:.1f} dB on the sea\n", beach,
               likeness(fast, full, shore, size.height), likeness(fast, full, 0, shore));
    std::fflush(stdout);
    if (folder.empty()) return;
    leave(fast, fmt::format("{}/{}-fast.png", folder, beach));
    leave(full, fmt::format("{}/{}-full.png", folder, beach));
}

}  // namespace
}  // namespace gull

int main(int count, char** arguments) {
    auto context = gull::OffscreenContext::create();
    for (int beach = 1; beach <= 8; ++beach) gull::compare(beach, count > 1 ? arguments[1] : "");
}
