// How far the fast tier's picture is from the full one on every beach at rest, in decibels (peak signal to
// noise), on the beach and on the sea. With a folder as argument both pictures are left there.
//
//     build/Benchmarks/TierComparison [folder]

#include "BeachOffScreen.h"
#include "Engine/Raster/Png.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

namespace gull {
namespace {

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

void compare(int number, const std::string& folder) {
    BeachOffScreen beach;
    const PixelSize size = beach.size;
    beach.scene.setBeach(number);
    beach.scene.introStart = -100;
    beach.step(100, 1.0 / 60);
    beach.draw(BuildMode::complete);
    Image fast = beach.renderer.readBack(size), full = beach.renderer.snapshot(beach.scene.stage(), size);
    fmt::print("beach {}: {:.1f} dB on the beach, {:.1f} dB on the sea\n", number,
               likeness(fast, full, shore, size.height), likeness(fast, full, 0, shore));
    std::fflush(stdout);
    if (folder.empty()) return;
    leave(fast, fmt::format("{}/{}-fast.png", folder, number));
    leave(full, fmt::format("{}/{}-full.png", folder, number));
}

}  // namespace
}  // namespace gull

int main(int count, char** arguments) {
    for (int beach = 1; beach <= 8; ++beach) gull::compare(beach, count > 1 ? arguments[1] : "");
}
