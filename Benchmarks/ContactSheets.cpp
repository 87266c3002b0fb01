// The pictures of the documentation, drawn off screen under a clock turned by hand:
//
//     beach-1.png ... beach-8.png  every beach at rest
//     beaches.png                  every beach at three moments: at rest, at a dig, in the flood
//     items.png                    every item: its icon, the icon as small as the tray shows it, its reveal
//     light.png                    every item in the light of every beach
//
//     build/Benchmarks/ContactSheets folder [beaches, all digits: 168] [fast]
//
// Docs/make-pictures.sh runs it.

#include "BeachOffScreen.h"
#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Png.h"
#include "Engine/Raster/Text.h"
#include "GullCore/Beach.h"
#include "Gullwick/App/IconRenderer.h"
#include "Gullwick/Scene/Reveal.h"
#include "Gullwick/Scene/Terrain.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace gull {
namespace {

constexpr Colour paper{0.1, 0.11, 0.13}, ink{0.93, 0.9, 0.82};
constexpr int cutOut = 150;  ///< pixels a side, of the picture that an item is cut out of

void leave(const Image& image, const std::string& path) {
    const auto bytes = encodePng(image).value();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    fmt::print("{}\n", path);
    std::fflush(stdout);
}

void label(Canvas& canvas, std::string_view text, double x, double y) {
    drawText(canvas, text, {.font = {.size = 11, .design = FontDesign::proportional}}, ink, x, y);
}

Canvas sheet(double width, double height) {
    Canvas canvas(width, height);
    canvas.addRect({0, 0, width, height});
    canvas.fill(paper);
    return canvas;
}

Image cropped(const Image& image, const glm::dvec3& middle, int side) {
    Image part(side, side);
    const int left = std::clamp(static_cast<int>(middle.x) - side / 2, 0, image.width - side);
    const int top = std::clamp(static_cast<int>(middle.y) - side / 2, 0, image.height - side);
    for (int y = 0; y < side; ++y)
        std::copy_n(image.at(left, top + y), static_cast<std::size_t>(side) * 4, part.at(0, y));
    return part;
}

/// A beach from which one item after the other is dug.
class Photographer {
  public:
    Photographer(int number, RenderTier tier) : beach_(tier) {
        beach_.scene.setBeach(number);
        beach_.scene.introStart = -100;
        step(1.0 / 60);
    }

    Image rest() { return picture(); }
    Image dig() {
        beach_.scene.showPing(coil_, {0.8, 0.7});
        reveal(ItemKind::coin, {0.62, 0.42}, 0.3);
        return picture();
    }
    Image flood() {
        beach_.scene.floodStart = time_;
        wait(1.1);
        return picture();
    }
    /// The item when there is most to see of it, cut out of the picture: its face turned to the viewer, the
    /// lid open, the junk at rest.
    Image found(ItemKind kind) {
        const PlotPoint at{0.36 + 0.07 * static_cast<double>(dug_ % 5), 0.3 + 0.06 * (dug_ % 3)};
        double seconds = 2.0;
        if (kind == ItemKind::chest)
            seconds = 1.9;
        else if (isTreasure(kind))
            seconds = 0.3;
        reveal(kind, at, seconds);
        const Reveal& last = beach_.scene.reveals().back();
        const Node& eye = *beach_.scene.stage().pointOfView;
        const Image whole = picture();
        const glm::dvec3 place = project(*eye.camera, eye.worldTransform(), last.node->worldPosition(),
                                         {beach_.size.width, beach_.size.height});
        wait(5);
        return cropped(whole, place, cutOut);
    }

  private:
    void step(double seconds) {
        time_ += seconds;
        beach_.clock.moveTo(time_);
        beach_.loop.runDue();
        beach_.step(time_, seconds, coil_);
    }
    void wait(double seconds) {
        for (double left = seconds; left > 1e-6; left -= 1.0 / 60) step(std::min(left, 1.0 / 60));
    }
    void reveal(ItemKind kind, const PlotPoint& at, double seconds) {
        const BuriedItem item{++dug_, kind, at, 0};
        beach_.scene.dig(at, isTreasure(kind) ? Hunt::DigOutcome(Hunt::Treasure{item})
                                              : Hunt::DigOutcome(Hunt::Junk{item}));
        wait(seconds);
    }
    Image picture() {
        beach_.draw(BuildMode::complete);
        return beach_.renderer.readBack(beach_.size);
    }

    BeachOffScreen beach_;
    PlotPoint coil_{0.3, 0.72};
    double time_ = 100;
    int dug_ = 0;
};

std::map<ItemKind, Image> icons() {
    const auto context = OffscreenContext::create();
    Renderer renderer;
    Textures textures;
    IconRenderer source(&renderer, textures);
    std::map<ItemKind, Image> all;
    for (const ItemKind kind : allKinds()) all[kind] = source.image(kind);
    return all;
}

/// Rows of beaches, columns of items.
void lightSheet(const std::map<int, std::map<ItemKind, Image>>& finds, const std::string& folder) {
    constexpr double side = cutOut;
    const double width = 11 * side, height = side * static_cast<double>(finds.size());
    Canvas canvas = sheet(width, height);
    double y = 0;
    for (const auto& [beach, pictures] : finds) {
        double x = 0;
        for (const auto& [kind, picture] : pictures) {
            canvas.drawImage(picture, {x, y, side, side});
            x += side;
        }
        label(canvas, fmt::format("{}", Campaign::beach(beach).name), 4, y + 3);
        y += side;
    }
    leave(canvas.image(), folder + "/light.png");
}

void itemSheet(const std::map<ItemKind, Image>& reveals, const std::string& folder) {
    constexpr double width = 300, height = 172;
    constexpr int columns = 4;
    Canvas canvas = sheet(columns * width, 3 * height);
    int i = 0;
    for (const auto& [kind, icon] : icons()) {
        const double x = i % columns * width, y = i / columns * height;
        ++i;
        canvas.drawImage(icon, {x + 6, y + 20, 90, 90});
        canvas.drawImage(icon, {x + 30, y + 118, 42, 42});
        canvas.drawImage(reveals.at(kind), {x + 106, y + 20, cutOut, cutOut});
        label(canvas, name(kind), x + 8, y + 3);
    }
    leave(canvas.image(), folder + "/items.png");
}

void makeAll(const std::string& folder, const std::string& beaches, RenderTier tier) {
    constexpr double width = 413, height = 266;
    Canvas moments = sheet(3 * width, height * static_cast<double>(beaches.size()));
    std::map<int, std::map<ItemKind, Image>> finds;
    double y = 0;
    for (const char digit : beaches) {
        const int number = digit - '0';
        Photographer dressed(number, tier);
        const Image rest = dressed.rest();
        Canvas small(930, 600);
        small.drawImage(rest, {0, 0, 930, 600});
        leave(small.image(), fmt::format("{}/beach-{}.png", folder, number));
        for (const ItemKind kind : allKinds()) finds[number][kind] = dressed.found(kind);
        Photographer played(number, tier);
        const Image dig = played.dig(), flood = played.flood();
        moments.drawImage(rest, {0, y, width, height});
        moments.drawImage(dig, {width, y, width, height});
        moments.drawImage(flood, {2 * width, y, width, height});
        label(moments, Campaign::beach(number).name, 6, y + 4);
        y += height;
    }
    leave(moments.image(), folder + "/beaches.png");
    lightSheet(finds, folder);
    itemSheet(finds.begin()->second, folder);
}

}  // namespace
}  // namespace gull

int main(int count, char** arguments) {
    if (count < 2) {
        fmt::print(stderr, "usage: ContactSheets folder [beaches] [fast]\n");
        return 1;
    }
    std::filesystem::create_directories(arguments[1]);
    const std::string beaches = count > 2 ? arguments[2] : "12345678";
    const bool fast = count > 3;
    gull::makeAll(arguments[1], beaches, fast ? gull::RenderTier::fast : gull::RenderTier::full);
}
