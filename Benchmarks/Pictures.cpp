// Pictures of the moments of every beach, in both tiers, to compare two versions of the renderer with. Every
// picture is drawn off screen under a clock turned by hand, so that one version makes the same pictures in
// every run. With a second folder, of the same pictures by another version, the likeness of each pair is
// printed in decibels (peak signal to noise; 99: equal).
//
//     build/Benchmarks/Pictures folder [other folder]

#include "BeachOffScreen.h"
#include "Engine/Raster/Png.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace gull {
namespace {

class Photographer {
  public:
    Photographer(std::string folder, int number, RenderTier tier)
        : folder_(std::move(folder)), number_(number), tier_(tier), beach_(tier) {
        beach_.scene.setBeach(number);
        beach_.scene.introStart = -100;
        time_ = 100;
    }

    void takeAll() {
        travelling_ = true;
        beach_.scene.introStart = time_;
        for (const double flown : {0.3, 0.8}) {
            while (time_ - beach_.scene.introStart < flown) step(middle);
            shoot(fmt::format("fly-in-{:.0f}", flown * 10));
        }
        travelling_ = false;
        beach_.scene.introStart = -100;
        step(middle);
        shoot("rest");
        for (int frame = 0; frame < 40; ++frame) {
            const PlotPoint coil{0.5 + 0.3 * std::sin(time_), 0.5 + 0.2 * std::cos(1.3 * time_)};
            beach_.scene.trail.sweep(coil);
            step(coil);
        }
        shoot("sweep");
        beach_.scene.showPing(middle, {0.8, 0.7});
        beach_.scene.ripple({0.6, 0.5}, {1, 0.76, 0.28, 1}, 0.8);
        steps(12);
        shoot("ping");
        dig({0.3, 0.35}, Hunt::Treasure{{1, ItemKind::chest, {0.3, 0.35}, 0}});
        steps(6);
        shoot("dig");
        steps(40);
        shoot("reveal");
        dig({0.7, 0.3}, Hunt::Junk{{2, ItemKind::cap, {0.7, 0.3}, 0}});
        steps(90);
        shoot("junk");
        beach_.scene.floodStart = time_;
        steps(70);
        shoot("flood");
    }

  private:
    static constexpr PlotPoint middle{0.4, 0.4};

    void step(const PlotPoint& coil) {
        time_ += 1.0 / 60;
        beach_.clock.moveTo(time_);
        beach_.loop.runDue();
        beach_.step(time_, 1.0 / 60, coil);
        // The fast tier's pictures follow from those before; the full tier makes each by itself.
        if (tier_ == RenderTier::fast && !travelling_) draw();
    }
    void draw() {
        if (travelling_) beach_.scene.stage().restingView.reset();  // nothing is built ahead, in real time
        beach_.draw(travelling_ ? BuildMode::gradual : BuildMode::complete);
    }
    void steps(int count) {
        for (int i = 0; i < count; ++i) step(middle);
    }
    void dig(const PlotPoint& at, const Hunt::DigOutcome& outcome) { beach_.scene.dig(at, outcome); }
    void shoot(const std::string& moment) {
        draw();
        const Image picture = beach_.renderer.readBack(beach_.size);
        const auto bytes = encodePng(picture).value();
        const char* tier = tier_ == RenderTier::fast ? "fast" : "full";
        std::ofstream(fmt::format("{}/{}-{}-{}.png", folder_, number_, moment, tier), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    std::string folder_;
    int number_;
    RenderTier tier_;
    BeachOffScreen beach_;
    double time_ = 0;
    bool travelling_ = false;
};

Image read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(file)), {});
    return decodePng(bytes).value_or(Image());
}

double likeness(const Image& a, const Image& b) {
    if (a.width != b.width || a.height != b.height || a.pixels.empty()) return 0;
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        const double difference = double(a.pixels[i]) - double(b.pixels[i]);
        sum += difference * difference;
    }
    return sum == 0 ? 99 : 10 * std::log10(255 * 255 * static_cast<double>(a.pixels.size()) / sum);
}

/// Prints the likeness of every pair of pictures of the two folders.
void compare(const std::string& folder, const std::string& other) {
    std::vector<std::filesystem::path> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    double least = 99;
    for (const auto& name : names) {
        const double decibels =
            likeness(read(std::filesystem::path(folder) / name), read(std::filesystem::path(other) / name));
        least = std::min(least, decibels);
        if (decibels < 99) fmt::print("{}: {:.1f} dB\n", name.string(), decibels);
    }
    fmt::print("{} pictures, {:.1f} dB at least\n", names.size(), least);
}

}  // namespace
}  // namespace gull

int main(int count, char** arguments) {
    if (count < 2) {
        fmt::print(stderr, "usage: Pictures folder [other folder]\n");
        return 1;
    }
    std::filesystem::create_directories(arguments[1]);
    for (int beach = 1; beach <= 8; ++beach)
        for (const gull::RenderTier tier : {gull::RenderTier::fast, gull::RenderTier::full})
            gull::Photographer(arguments[1], beach, tier).takeAll();
    if (count > 2) gull::compare(arguments[1], arguments[2]);
}
