#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/App/StillBeach.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

namespace gull {
namespace {

constexpr PixelSize size{560, 360};
constexpr int mostOff = 2;  // of 255

/// Test cards over a beach, facing up.
class Cards {
  public:
    explicit Cards(Stage& stage) : stage_(stage) {
        const Colour black{0, 0, 0, 1};
        add("still", {0.2, 0.35, 0.8, 1}, Layer::still);
        add("moving", {1, 0.78, 0.34, 1}, Layer::moving);
        add("white", {1, 1, 1, 1}, Layer::moving);
        add("blended", {0.55, 1, 0.95, 1}, Layer::moving).blend = Material::Blend::alpha;
        Material& glowing = add("emissive", black, Layer::moving);
        glowing.lighting = Material::Lighting::lambert;
        glowing.emission = cards_.back().wanted = {0.9, 0.5, 0.2, 1};
        Material& added = add("added", {0.3, 0.9, 0.6, 1}, Layer::moving);
        added.blend = Material::Blend::add;
        added.writesDepth = false;
        const glm::dvec3 at = place_;
        add("ground", black, Layer::moving);
        cards_.pop_back();
        stage_.root.children().back()->position = {at.x, at.y - 0.2, at.z};
        stage_.touchStill();
    }

    /// Every card's colour in `picture`, against its own.
    void check(const Image& picture) const {
        const Node& eye = *stage_.pointOfView;
        for (const Card& card : cards_) {
            const glm::dvec3 at =
                project(*eye.camera, eye.worldTransform(), card.at, {picture.width, picture.height});
            const std::uint8_t* pixel = picture.at(static_cast<int>(at.x), static_cast<int>(at.y));
            EXPECT_NEAR(pixel[0], 255 * card.wanted.r, mostOff + 0.5) << card.name;
            EXPECT_NEAR(pixel[1], 255 * card.wanted.g, mostOff + 0.5) << card.name;
            EXPECT_NEAR(pixel[2], 255 * card.wanted.b, mostOff + 0.5) << card.name;
        }
    }

  private:
    struct Card {
        const char* name;
        glm::dvec3 at;
        Colour wanted;
    };

    Material& add(const char* name, const Colour& colour, Layer layer) {
        place_ = {-4.2 + 1.4 * static_cast<double>(cards_.size()), 1.5, 0};
        auto material = std::make_shared<Material>();
        material->lighting = Material::Lighting::constant;
        material->diffuse = colour;
        Node& card = stage_.root.add(makeNode(primitives::plane(1, 1), material));
        card.position = place_;
        card.eulerAngles = {-std::numbers::pi / 2, 0, 0};
        card.layer = layer;
        card.castsShadow = false;
        cards_.push_back({name, place_, colour});
        return *material;
    }

    Stage& stage_;
    glm::dvec3 place_{0};
    std::vector<Card> cards_;
};

SnapshotOptions options(int beach) {
    SnapshotOptions options;
    options.width = size.width;
    options.height = size.height;
    options.beach = beach;
    options.seed = 4;
    return options;
}

class BeachLight : public test::RenderTest {
  protected:
    Image draw(const Stage& stage, RenderTier tier) {
        renderer->setTier(tier);
        const Target window = makeWindow(size);
        renderer->draw(stage, size, window.framebuffer(), BuildMode::complete);
        return renderer->readBack(size);
    }
};

TEST_F(BeachLight, WhatIsUnlitReachesTheScreenInItsOwnColour) {
    for (int number = 1; number <= 8; ++number) {
        SCOPED_TRACE(number);
        StillBeach beach(options(number));
        Stage& stage = beach.game().world().stage();
        const Cards cards(stage);
        {
            SCOPED_TRACE("snapshot");
            cards.check(renderer->snapshot(stage, size));
        }
        for (const RenderTier tier : {RenderTier::fast, RenderTier::full}) {
            SCOPED_TRACE(tier == RenderTier::fast ? "fast tier" : "full tier");
            cards.check(draw(stage, tier));
        }
    }
}

/// Share of a picture's pixels with a channel at its end.
double clippedShare(const Image& picture) {
    int clipped = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const std::uint8_t* pixel = picture.at(x, y);
            if (std::max({pixel[0], pixel[1], pixel[2]}) >= 254) ++clipped;
        }
    return static_cast<double>(clipped) / (picture.width * picture.height);
}

TEST_F(BeachLight, GlareIsNotCutOffAndKeepsItsSunsHue) {
    std::vector<double> warmth;
    for (int number = 1; number <= 8; ++number) {
        for (const bool flood : {false, true}) {
            SCOPED_TRACE(testing::Message() << "beach " << number << (flood ? " flooded" : " at rest"));
            SnapshotOptions still = options(number);
            still.flood = flood;
            StillBeach beach(still);
            const Stage& stage = beach.game().world().stage();
            const Image picture = renderer->snapshot(stage, size);
            EXPECT_LE(clippedShare(picture), 0.005);
            EXPECT_TRUE(flood || clippedShare(draw(stage, RenderTier::fast)) <= 0.005) << "fast tier";
            if (flood || number < 4 || number > 6) continue;
            // The brightest hundredth: the sun in the sea.
            std::vector<glm::dvec3> pixels;
            for (int y = 0; y < picture.height; ++y)
                for (int x = 0; x < picture.width; ++x)
                    pixels.emplace_back(picture.at(x, y)[0], picture.at(x, y)[1], picture.at(x, y)[2]);
            const auto cut = pixels.begin() + static_cast<std::ptrdiff_t>(pixels.size() / 100);
            std::nth_element(pixels.begin(), cut, pixels.end(),
                             [](const auto& a, const auto& b) { return a.r + a.g + a.b > b.r + b.g + b.b; });
            glm::dvec3 sum(0);
            for (auto pixel = pixels.begin(); pixel != cut; ++pixel) sum += *pixel;
            EXPECT_GT(sum.r, sum.g);
            EXPECT_GT(sum.g, 1.03 * sum.b) << "warm";
            warmth.push_back(sum.r / sum.g);
        }
    }
    ASSERT_EQ(warmth.size(), 3U);
    EXPECT_GT(warmth[1], warmth[0] * 1.03) << "the sun of the fifth beach is redder than that of the fourth";
}

}  // namespace
}  // namespace gull
