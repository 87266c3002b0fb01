#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Compositor/TestStage.h"
#include "Engine/Render/TextureCache.h"
#include "Engine/Stage/Primitives.h"

#include <gmock/gmock.h>

#include <numbers>

namespace gull::test {

using testing::DoubleNear;

// The tone mapping's encoding and its dither are each within half a step of the exact curve, so two steps
// suffice.
constexpr double steps = 2;

class Snapshot : public RenderTest {
  protected:
    double middle(const FlatStage& flat, int channel = 0) {
        Image image = renderer->snapshot(flat.stage, {33, 33});
        return image.at(16, 16)[channel];
    }
};

TEST_F(Snapshot, AThousandLightsWhiteLambertToOne) {
    FlatStage flat;
    flat.material->diffuse = {0.5, 0.5, 0.5, 1};
    EXPECT_THAT(middle(flat), DoubleNear(127.5, steps)) << "facing the light, the colour itself comes out";
    flat.sun->position = {60, 0, 60};
    flat.sun->lookAt({0, 0, 0});
    double linearGrey = std::pow((0.5 + 0.055) / 1.055, 2.4);
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte(linearGrey * std::sqrt(0.5)), steps)) << "at 45 degrees";
    flat.camera->camera->exposureOffset = -1;
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte(linearGrey * std::sqrt(0.5) / 2), steps))
        << "one stop down";
}

TEST_F(Snapshot, AmbientEmissionAndMultiplyAddUp) {
    FlatStage flat;
    flat.sun->light->kind = Light::Kind::ambient;
    flat.sun->light->intensity = 200;
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte(0.2), steps));
    flat.material->emission = {0.5, 0, 0, 1};
    double half = std::pow((0.5 + 0.055) / 1.055, 2.4);
    EXPECT_THAT(middle(flat, 0), DoubleNear(encodedByte(0.2 + half), steps));
    EXPECT_THAT(middle(flat, 1), DoubleNear(encodedByte(0.2), steps));
    flat.material->multiply = {0.5, 1, 1, 1};
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte((0.2 + half) * half), steps));
    flat.material->lighting = Material::Lighting::constant;
    flat.material->emission = {0, 0, 0, 1};
    flat.material->multiply = {1, 1, 1, 1};
    flat.material->diffuseMap.texture = plainTexture({0.25, 0.5, 0.75, 1});
    EXPECT_THAT(middle(flat, 2), DoubleNear(0.75 * 255, steps)) << "constant: no light at all";
}

TEST_F(Snapshot, AUniformSkyLightsAWhiteSurfaceToItsOwnRadiance) {
    FlatStage flat;
    flat.sun->light->intensity = 0;
    flat.stage.environment = plainTexture({0.5, 0.5, 0.5, 1}, 64, 32);
    EXPECT_THAT(middle(flat), DoubleNear(127.5, steps)) << "scattered";
    flat.material->lighting = Material::Lighting::physicallyBased;
    flat.material->metalness = 1;
    flat.material->roughness = 0.2;
    EXPECT_THAT(middle(flat), DoubleNear(127.5, 4)) << "mirrored by white metal, less what a fit loses";
    flat.stage.environmentIntensity = 0;
    EXPECT_EQ(middle(flat), 0);
}

TEST_F(Snapshot, FogMixesInByDistance) {
    FlatStage flat;
    flat.material->lighting = Material::Lighting::constant;
    flat.stage.fog = {{0, 0, 0, 1}, 0, 10, 2};
    // The plane is 5 away: share (5 / 10)^2.
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte(0.75), steps));
}

TEST_F(Snapshot, ShadowsAreDarkerByTheLightsAlphaAndEndWhereTheyShould) {
    FlatStage flat;
    flat.sun->light->castsShadow = true;
    flat.sun->light->shadowMapSize = 1024;
    flat.plane->castsShadow = false;
    flat.sun->position = {40, 0, 40};
    flat.sun->lookAt({0, 0, 0});
    // A plate above the right half of the view casts its shadow to the left: z 1 moves it by 1.
    Node& plate = flat.stage.root.add(makeNode(primitives::box(0.6, 3, 0.02), flat.material));
    plate.position = {1.5, 0, 1};
    Image image = renderer->snapshot(flat.stage, {65, 65});
    double lit = std::sqrt(0.5);
    EXPECT_THAT(double(image.at(32 + 16, 32)[0]), DoubleNear(encodedByte(lit * 0.45), steps)) << "x = 0.5";
    EXPECT_THAT(double(image.at(32 - 16, 32)[0]), DoubleNear(encodedByte(lit), steps)) << "x = -0.5";

    flat.material = std::make_shared<Material>();  // water: its reflection of the sun is hidden, too
    flat.material->diffuse = {0, 0, 0, 0.5};
    flat.material->roughness = 0.5;
    flat.material->blend = Material::Blend::alpha;
    flat.material->smooth = true;
    flat.plane->materials = {flat.material};
    image = renderer->snapshot(flat.stage, {65, 65});
    EXPECT_GT(image.at(32 - 16, 32)[0], 20);
    EXPECT_LT(image.at(32 + 16, 32)[0], 2);
    flat.sun->light->shadowOrthographicScale = 0.8;
    image = renderer->snapshot(flat.stage, {65, 65});
    EXPECT_LT(image.at(32 + 16, 32)[0], 2);
    EXPECT_GT(image.at(32 + 16, 2)[0], 20) << "beyond the shadow map there is no shadow";
}

TEST_F(Snapshot, BlendsInLinearLightAndInOrder) {
    FlatStage flat;
    flat.material->lighting = Material::Lighting::constant;
    flat.material->diffuse = {0, 0, 0, 1};
    auto veil = std::make_shared<Material>();
    veil->lighting = Material::Lighting::lambert;
    veil->blend = Material::Blend::alpha;
    veil->opacity = 0.5;
    Node& first = flat.stage.root.add(makeNode(primitives::plane(4, 4), veil));
    first.position = {0, 0, 0.5};
    EXPECT_THAT(middle(flat), DoubleNear(encodedByte(0.5), steps));

    auto added = std::make_shared<Material>(*veil);
    added->lighting = Material::Lighting::constant;
    added->blend = Material::Blend::add;
    added->opacity = 1;
    added->multiply = {0.5, 0, 0, 1};
    added->writesDepth = false;
    Node& second = flat.stage.root.add(makeNode(primitives::plane(4, 4), added));
    second.position = {0, 0, 1};
    const double shown = encodedByte(0.5);
    EXPECT_THAT(middle(flat, 0), DoubleNear(127.5 + shown / 2, steps))
        << "unlit light over the finished picture";
    EXPECT_THAT(middle(flat, 1), DoubleNear(shown / 2, steps)) << "where it shows its own hue";
    veil->lighting = Material::Lighting::constant;
    veil->writesDepth = false;
    second.renderingOrder = 5;
    EXPECT_THAT(middle(flat, 1), DoubleNear(127.5 / 2, steps)) << "over an unlit veil";
    second.renderingOrder = -1;
    EXPECT_THAT(middle(flat, 1), DoubleNear(127.5, steps)) << "under it";
}

TEST_F(Snapshot, ParticlesAreSeenOverWater) {
    ShoreStage shore;
    Node& burst = *shore.stage.root.find("burst");
    burst.position = {0, 0.3, -6};
    ParticleSystem& spray = *burst.particles.front();
    spray.size = 0.5;
    spray.colour = {1, 0, 0, 1};
    const PixelSize size{310, 200};
    const auto redPixels = [&](const Image& picture) {
        int count = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                if (picture.at(x, y)[0] > 150 && picture.at(x, y)[1] < 90) ++count;
        return count;
    };
    shore.sea->hidden = true;
    const int dry = redPixels(renderer->snapshot(shore.stage, size));
    ASSERT_GT(dry, 50);
    shore.sea->hidden = false;
    EXPECT_GT(redPixels(renderer->snapshot(shore.stage, size)), dry / 2) << "no water hides them";
    for (const RenderTier tier : {RenderTier::full, RenderTier::fast}) {
        renderer->setTier(tier);
        const Target window = makeWindow(size);
        renderer->draw(shore.stage, size, window.framebuffer(), BuildMode::complete);
        EXPECT_GT(redPixels(renderer->readBack(size)), dry / 2);
    }
}

TEST_F(Snapshot, WithoutBackgroundIsTransparentAndPremultiplied) {
    FlatStage flat;
    flat.plane->geometry = std::make_shared<Geometry>(primitives::plane(1, 1));
    flat.material->lighting = Material::Lighting::constant;
    Image image = renderer->snapshot(flat.stage, {64, 64});
    EXPECT_EQ(image.at(2, 2)[3], 0);
    EXPECT_EQ(image.at(2, 2)[0], 0);
    EXPECT_EQ(image.at(32, 32)[3], 255);
    for (std::size_t i = 0; i < image.pixels.size(); i += 4)
        ASSERT_LE(image.pixels[i], image.pixels[i + 3] + 1) << "colour beyond alpha at " << i / 4;
}

TEST_F(Snapshot, TexturesStandUprightAndFollowTheirUpdates) {
    FlatStage flat;
    flat.plane->geometry = std::make_shared<Geometry>(primitives::plane(2, 2));
    flat.material->lighting = Material::Lighting::constant;
    Image picture(64, 64);
    std::fill(picture.pixels.begin(), picture.pixels.end(), std::uint8_t{255});
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) picture.at(x, y)[0] = 0;  // top left: no red
    auto texture = std::make_shared<Texture>(picture);
    flat.material->diffuseMap.texture = texture;
    Image image = renderer->snapshot(flat.stage, {64, 64});
    EXPECT_LE(image.at(12, 12)[0], 1);
    EXPECT_GE(image.at(12, 52)[0], 254);
    EXPECT_GE(image.at(52, 12)[0], 254);

    for (int y = 40; y < 64; ++y)
        for (int x = 40; x < 64; ++x) picture.at(x, y)[1] = 0;
    texture->update(picture, {40, 40, 24, 24});
    image = renderer->snapshot(flat.stage, {64, 64});
    EXPECT_LE(image.at(52, 52)[1], 1) << "the part that changed";
    EXPECT_LE(image.at(12, 12)[0], 1) << "the part that did not";
}

TEST_F(Snapshot, IsTheSameBytesTwiceAndHasNoSeamsBetweenTiles) {
    ShoreStage shore;
    Image first = renderer->snapshot(shore.stage, {620, 400});
    EXPECT_EQ(first, renderer->snapshot(shore.stage, {620, 400}));
    // Two tiles meet between rows 143 and 144 from the top: these differ no more than their neighbours.
    auto difference = [&](int y) {
        double sum = 0;
        for (int x = 0; x < first.width; ++x)
            sum += std::abs(int(first.at(x, y)[0]) - int(first.at(x, y + 1)[0]));
        return sum / first.width;
    };
    EXPECT_LT(difference(143), 1.5 * std::max(difference(142), difference(144)) + 0.5);
}

TEST(Mipmaps, AreMeansOfFourPixelsDownToASingleOne) {
    const std::vector<std::uint8_t> two{0, 10, 20, 255, 100, 10, 20, 255, 8, 10, 20, 1, 4, 10, 20, 1};
    EXPECT_EQ(halved(two, 2, 2), (std::vector<std::uint8_t>{28, 10, 20, 128}));
    const std::vector<std::uint8_t> column{10, 0, 0, 0, 20, 0, 0, 0, 90, 0, 0, 0};
    EXPECT_EQ(halved(column, 1, 3), (std::vector<std::uint8_t>{15, 0, 0, 0})) << "an odd row falls away";
}

}  // namespace gull::test
