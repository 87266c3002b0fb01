#include "Engine/Compositor/SoftwareContext.h"
#include "Gullwick/App/StillBeach.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace gull {
namespace {

/// A small picture of a beach, sampled at places of its world.
class Picture {
  public:
    Picture(Renderer& renderer, StillBeach& beach, const SnapshotOptions& options)
        : stage_(beach.game().world().stage()),
          image_(renderer.snapshot(stage_, {options.width, options.height})) {}

    glm::dvec3 colour(const glm::dvec3& world) const {
        const Node& eye = *stage_.pointOfView;
        const glm::dvec3 at =
            project(*eye.camera, eye.worldTransform(), world, {image_.width, image_.height});
        const int x = std::clamp(static_cast<int>(at.x), 0, image_.width - 1);
        const int y = std::clamp(static_cast<int>(at.y), 0, image_.height - 1);
        const std::uint8_t* pixel = image_.at(x, y);
        return {pixel[0], pixel[1], pixel[2]};
    }
    /// The median over many places, 0 to 255.
    double brightness(const std::vector<glm::dvec3>& places) const {
        std::vector<double> values;
        for (const glm::dvec3& place : places)
            values.push_back(glm::dot(colour(place), glm::dvec3(0.2126, 0.7152, 0.0722)));
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    }

  private:
    const Stage& stage_;
    Image image_;
};

class BeachPicture : public test::RenderTest {
  protected:
    static SnapshotOptions options(int beach) {
        SnapshotOptions options;
        options.width = 560;
        options.height = 360;
        options.beach = beach;
        options.seed = 4;
        return options;
    }
};

/// Places on the sand, evenly on a piece of a circle. Radians, 0 toward +x, a quarter turn toward the viewer.
std::vector<glm::dvec3> arc(const glm::dvec2& middle, double radius, double from, double to) {
    std::vector<glm::dvec3> places;
    constexpr int count = 24;
    for (int i = 0; i < count; ++i) {
        const double angle = from + (to - from) * i / (count - 1);
        const double x = middle.x + radius * std::cos(angle), z = middle.y + radius * std::sin(angle);
        places.emplace_back(x, Terrain::height(x, z), z);
    }
    return places;
}

TEST_F(BeachPicture, TheCoilsShadowIsDarkerThanTheSandAroundIt) {
    for (const int number : {1, 4, 6, 8}) {
        SCOPED_TRACE(number);
        SnapshotOptions still = options(number);
        still.coil = PlotPoint{0.44, 0.45};
        StillBeach beach(still);
        const Picture picture(*renderer, beach, still);

        // Toward the sun: never lower than where the sine of its elevation is 0.45 before the vector is
        // scaled.
        const BeachLook look = BeachLook::forBeach(number);
        const double up = look.sunElevation * std::numbers::pi / 180,
                     turn = look.sunAzimuth * std::numbers::pi / 180;
        const glm::dvec3 sun(std::cos(up) * std::sin(turn), std::max(std::sin(up), 0.45),
                             -std::cos(turn) * std::cos(up));
        const glm::dvec3 coil = Terrain::world(*still.coil);
        const glm::dvec2 middle(coil.x - sun.x / sun.y * 0.32, coil.z - sun.z / sun.y * 0.32);
        // The hoop's near side, clear of the coil itself and of the shaft.
        const double shadow = picture.brightness(arc(middle, 0.64, 1.9, 2.6));
        const double around = picture.brightness(arc(middle, 1.15, 1.9, 2.6));
        EXPECT_LT(shadow, 0.9 * around);
        EXPECT_GT(shadow, 0.3 * around) << "and is no hole in the picture";
    }
}

TEST_F(BeachPicture, AHoleStaysDarkerThanASweepAndASweepThanUntouchedSand) {
    for (const int number : {2, 5, 7}) {
        SCOPED_TRACE(number);
        SnapshotOptions still = options(number);
        still.find = 1;
        still.trail = true;
        still.coil = PlotPoint{0.95, 0.95};
        StillBeach beach(still);
        GameController& game = beach.game();
        const BuriedItem dug = *std::find_if(game.hunt().items().begin(), game.hunt().items().end(),
                                             [](const BuriedItem& item) { return isTreasure(item.kind); });
        game.world().trail.sweep(dug.at);
        game.debugSettle(game.world().time + 1);
        const Picture picture(*renderer, beach, still);

        const glm::dvec3 hole = Terrain::world(dug.at);
        std::vector<glm::dvec3> swept, untouched;
        for (int i = 40; i < 200; i += 8) {
            const double t = i / 240.0, x = 0.15 + 0.7 * t, y = 0.3 + 0.25 * std::sin(12 * t);
            swept.push_back(Terrain::world({x, y}));
            untouched.push_back(Terrain::world({x, y < 0.3 ? y + 0.3 : y - 0.3}));
        }
        const double inside = picture.brightness(arc({hole.x, hole.z}, 0.1, 0, 6));
        EXPECT_LT(inside, 0.7 * picture.brightness(swept));
        EXPECT_LT(picture.brightness(swept), 0.96 * picture.brightness(untouched));
    }
}

/// Places along the beach, where the sand has this height.
std::vector<glm::dvec3> contour(double height) {
    std::vector<glm::dvec3> places;
    for (double x = -7; x <= 7; x += 0.25) places.emplace_back(x, height, Terrain::shoreZ(x, height));
    return places;
}

TEST_F(BeachPicture, TheSwashLeavesABandOfWetSandThatIsDarkerThanTheDry) {
    for (const int number : {1, 3, 8}) {  // on the others the sun glares on it
        SCOPED_TRACE(number);
        SnapshotOptions still = options(number);
        still.elapse = 60;
        StillBeach beach(still);
        BeachScene& scene = beach.game().world();
        const double mean = 0.2 * scene.tide - 0.21;
        scene.time += 7.5 * 0.75 - std::fmod(scene.time, 7.5);  // low water in the swell
        scene.update(scene.time, 0, {0.5, 0.3}, {0, 0}, 0, 0, {1, 1, 1, 1});
        const Picture picture(*renderer, beach, still);
        const double wet = picture.brightness(contour(mean + 0.015)),
                     dry = picture.brightness(contour(mean + 0.08));
        EXPECT_LT(wet, 0.92 * dry);
        EXPECT_GT(wet, 0.5 * dry);
        // It mirrors the sky: what it shows does not come from the sand alone.
        Node& film = *scene.stage().root.find("film");
        film.materials[0]->roughness = 1;
        film.materials[0]->normalMap.intensity = 0;
        const Picture matt(*renderer, beach, still);
        EXPECT_NE(picture.brightness(contour(mean)), matt.brightness(contour(mean)));
    }
}

TEST_F(BeachPicture, AHandOfWaterLetsTheSandThrough) {
    for (const int number : {1, 2, 3}) {
        SCOPED_TRACE(number);
        const SnapshotOptions still = options(number);
        StillBeach beach(still);
        Node& root = beach.game().world().stage().root;
        const double level = root.find("water")->position.y;
        for (const char* name : {"film", "foam", "breaker"}) root.find(name)->hidden = true;
        const Picture picture(*renderer, beach, still);
        root.find("water")->hidden = true;
        const Picture dry(*renderer, beach, still);
        glm::dvec3 through(0), sand(0);
        for (const glm::dvec3& place : contour(level - 0.1)) {
            through += picture.colour(place);
            sand += dry.colour(place);
        }
        EXPECT_GT(through.r, 0.6 * sand.r);
        EXPECT_GT(through.r, 0.9 * through.b) << "still of the sand's colour";
    }
}

TEST_F(BeachPicture, TheSeaIsBetweenGreenAndBlue) {
    for (const int number : {1, 2, 3, 7}) {
        SCOPED_TRACE(number);
        const SnapshotOptions still = options(number);
        StillBeach beach(still);
        const Picture picture(*renderer, beach, still);
        glm::dvec3 sum(0);
        for (double x = -5; x <= 5; x += 0.5)
            for (double z = -13; z <= -9; z += 0.5) sum += picture.colour({x, -0.2, z});
        // Between the hues of green and blue, red is the least channel; between cyan and either end there is
        // half of that.
        EXPECT_LT(sum.r, 0.9 * std::min(sum.g, sum.b));
        EXPECT_LT(std::abs(sum.g - sum.b), 0.4 * std::max(sum.g, sum.b));
    }
}

}  // namespace
}  // namespace gull
