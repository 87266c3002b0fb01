#include "Engine/Compositor/SoftwareContext.h"
#include "Gullwick/App/IconRenderer.h"
#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace gull {
namespace {

using Pixels = std::vector<glm::dvec3>;  // 0 to 255

double brightness(const glm::dvec3& pixel) {
    return glm::dot(pixel, glm::dvec3(0.2126, 0.7152, 0.0722));
}

glm::dvec3 mean(const Pixels& pixels) {
    glm::dvec3 sum(0);
    for (const glm::dvec3& pixel : pixels) sum += pixel;
    return sum / static_cast<double>(std::max<std::size_t>(pixels.size(), 1));
}

glm::dvec3 meanOfBrightestTenth(Pixels pixels) {
    std::sort(pixels.begin(), pixels.end(),
              [](const auto& a, const auto& b) { return brightness(a) > brightness(b); });
    pixels.resize(pixels.size() / 10);
    return mean(pixels);
}

/// Degrees; 60 is yellow, 0 red.
double hue(const glm::dvec3& c) {
    const double degrees = std::atan2(std::sqrt(3.0) * (c.g - c.b), 2 * c.r - c.g - c.b) * 180 / 3.14159265;
    return degrees < 0 ? degrees + 360 : degrees;
}

double colourfulness(const glm::dvec3& c) {
    return 1 - std::min({c.r, c.g, c.b}) / std::max({c.r, c.g, c.b});
}

class ItemPicture : public test::RenderTest {
  protected:
    static constexpr PixelSize size{620, 400};
    Textures textures;

    /// An open chest in the middle of the beach and a coin on its right, without sparks and sand.
    Image reveals(SceneOnClock& world, int beach) {
        BeachScene& scene = world.scene;
        scene.setBeach(beach);
        scene.frame(1.55);
        world.coil = {0.05, 0.9};
        scene.dig({0.5, 0.5}, treasure(ItemKind::chest));
        world.step(1.6);
        scene.dig({0.7, 0.5}, treasure(ItemKind::coin));
        world.step(0.3);
        for (const Reveal& reveal : scene.reveals()) reveal.node->particles.clear();
        for (const Node* spray : nodesNamed(scene.stage().root, "spray"))
            const_cast<Node*>(spray)->hidden = true;
        return renderer->snapshot(scene.stage(), size);
    }

    /// The pixels around a place of the world; `reach` in world units to the right and up.
    static Pixels around(const Image& image, const BeachScene& scene, const glm::dvec3& place,
                         const glm::dvec2& reach) {
        const Node& eye = *scene.stage().pointOfView;
        const auto at = [&](const glm::dvec3& p) {
            return project(*eye.camera, eye.worldTransform(), p, {image.width, image.height});
        };
        const glm::dvec3 middle = at(place), corner = at(place + glm::dvec3(reach, 0));
        Pixels pixels;
        for (int y = static_cast<int>(corner.y); y <= static_cast<int>(2 * middle.y - corner.y); ++y)
            for (int x = static_cast<int>(2 * middle.x - corner.x); x <= static_cast<int>(corner.x); ++x) {
                const std::uint8_t* p = image.at(x, y);
                pixels.emplace_back(p[0], p[1], p[2]);
            }
        return pixels;
    }
};

TEST_F(ItemPicture, GoldIsGoldOnEveryBeachAndOutshinesTheSand) {
    SceneOnClock world;
    for (int beach = 1; beach <= 8; ++beach) {
        SCOPED_TRACE(beach);
        const Image picture = reveals(world, beach);
        const auto seen = [&](const glm::dvec3& place, const glm::dvec2& reach) {
            return around(picture, world.scene, place, reach);
        };
        const glm::dvec3 heap(world.node("hoard").worldTransform() * glm::dvec4(0, 0.36, 0, 1));
        const glm::dvec3 gold = meanOfBrightestTenth(seen(heap, {0.4, 0.1}));
        const glm::dvec3 coin = meanOfBrightestTenth(seen(world.node("coin").worldPosition(), {0.25, 0.25}));
        for (const glm::dvec3& colour : {gold, coin}) {
            EXPECT_NEAR(hue(colour), 46, 12) << "between orange and yellow";
            EXPECT_GT(colourfulness(colour), 0.3);
        }
        const double sand = brightness(mean(seen(Terrain::world({0.2, 0.3}), {0.8, 0.4})));
        EXPECT_GT(brightness(gold), sand);
    }
}

TEST_F(ItemPicture, TheChestLightsTheSandBelowIt) {
    SceneOnClock world;
    const Image lit = reveals(world, 6);
    for (const Reveal& reveal : world.scene.reveals()) reveal.glow->light->intensity = 0;
    const Image dark = renderer->snapshot(world.scene.stage(), size);
    const glm::dvec3 beside = Terrain::world({0.5, 0.4}) + glm::dvec3(-0.9, 0, 0);
    const auto red = [&](const Image& image) {
        return mean(around(image, world.scene, beside, {0.2, 0.1})).r;
    };
    EXPECT_GT(red(lit), red(dark) + 20);
}

TEST_F(ItemPicture, IconsAreWholeAndToldApartWhenSmall) {
    IconRenderer icons(&*renderer, textures);
    std::map<ItemKind, std::vector<double>> small;
    for (const ItemKind kind : allKinds()) {
        SCOPED_TRACE(rawValue(kind));
        const Image icon = icons.image(kind);
        ASSERT_EQ(icon.width, 160);
        int atEdge = 0, clipped = 0, shown = 0;
        for (int y = 0; y < icon.height; ++y)
            for (int x = 0; x < icon.width; ++x) {
                const std::uint8_t* p = icon.at(x, y);
                if (p[3] == 0) continue;
                ++shown;
                if (std::min({x, y, 159 - x, 159 - y}) < 2) ++atEdge;
                if (std::min({p[0], p[1], p[2]}) == 255) ++clipped;
            }
        EXPECT_EQ(atEdge, 0);
        EXPECT_GT(shown, 900);
        EXPECT_LT(clipped, shown / 30) << "beyond the glints of foil";
        // As the tray shows it: squares of four pixels, over its dark panel.
        std::vector<double>& cells = small[kind];
        for (int cell = 0; cell < 40 * 40 * 3; ++cell) {
            const int channel = cell % 3, x = cell / 3 % 40 * 4, y = cell / 120 * 4;
            double sum = 0;
            for (int k = 0; k < 16; ++k) {
                const std::uint8_t* p = icon.at(x + k % 4, y + k / 4);
                sum += p[channel] + 20.0 * (255 - p[3]) / 255;
            }
            cells.push_back(sum / 16);
        }
    }
    for (const auto& [one, a] : small)
        for (const auto& [other, b] : small) {
            if (one >= other) continue;
            double sum = 0;
            for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
            EXPECT_GT(std::sqrt(sum / static_cast<double>(a.size())), 18)
                << rawValue(one) << ", " << rawValue(other);
        }
}

TEST_F(ItemPicture, DialsArePaper) {
    IconRenderer icons(&*renderer, textures);
    for (const ItemKind kind : {ItemKind::watch, ItemKind::compass}) {
        SCOPED_TRACE(rawValue(kind));
        // The brighter half of what is about the middle: paper without ink.
        const Image icon = icons.image(kind);
        Pixels dial;
        for (int y = 65; y < 105; ++y)
            for (int x = 65; x < 95; ++x)
                dial.emplace_back(icon.at(x, y)[0], icon.at(x, y)[1], icon.at(x, y)[2]);
        std::sort(dial.begin(), dial.end(),
                  [](const auto& a, const auto& b) { return brightness(a) > brightness(b); });
        dial.resize(dial.size() / 2);
        const glm::dvec3 paper = mean(dial);
        EXPECT_NEAR(hue(paper), 45, 20) << "cream, neither mint nor pink";
        EXPECT_LT(colourfulness(paper), 0.3);
        EXPECT_GT(brightness(paper), 170);
    }
}

}  // namespace
}  // namespace gull
