#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Compositor/TestStage.h"
#include "Engine/Render/SkyDome.h"
#include "Engine/Stage/Primitives.h"

#include <glm/geometric.hpp>
#include <numbers>

namespace gull::test {
namespace {

constexpr PixelSize size{240, 160};

/// White ground with a tall white box in its middle, seen from the front and above under a grey sky.
class SkyLight : public RenderTest {
  protected:
    SkyLight() {
        stage.environment = plainTexture({0.6, 0.6, 0.6, 1}, 64, 32);
        Node& eye = stage.root.addChild("eye");
        eye.camera = std::make_shared<Camera>();
        eye.camera->hdr = true;
        eye.position = {0, 8, 10};
        eye.lookAt({0, 0, 0});
        stage.pointOfView = &eye;
        white->lighting = Material::Lighting::lambert;
        Node& ground = stage.root.add(makeNode(primitives::plane(60, 60), white));
        ground.eulerAngles = {-std::numbers::pi / 2, 0, 0};
        ground.castsShadow = false;
    }

    Node& addBox(const glm::dvec3& at, const glm::dvec3& extent) {
        Node& box = stage.root.add(makeNode(primitives::box(extent.x, extent.y, extent.z, 0), white));
        box.position = at;
        return box;
    }
    void addSun(const glm::dvec3& from) {
        Node& sun = stage.root.addChild("sun");
        sun.light = std::make_shared<Light>();
        sun.light->kind = Light::Kind::directional;
        sun.light->intensity = 800;
        sun.light->castsShadow = true;
        sun.light->shadowMapSize = 512;
        sun.light->shadowAlpha = 1;
        sun.light->shadowOrthographicScale = 14;
        sun.light->shadowNear = 1;
        sun.light->shadowFar = 140;
        sun.position = from;
        sun.lookAt({0, 0, 0});
    }

    /// The mean of a few pixels around a place, in the snapshot and in the fast tier's settled picture.
    glm::dvec3 seen(const glm::dvec3& at, bool fast = false) {
        Image picture;
        if (fast) {
            renderer->setTier(RenderTier::fast);
            const Target window = makeWindow(size);
            renderer->draw(stage, size, window.framebuffer(), BuildMode::complete);
            picture = renderer->readBack(size);
        } else {
            picture = renderer->snapshot(stage, size);
        }
        const Node& eye = *stage.pointOfView;
        const glm::dvec3 middle =
            project(*eye.camera, eye.worldTransform(), at, {picture.width, picture.height});
        glm::dvec3 sum(0);
        for (int y = -1; y <= 1; ++y)
            for (int x = -1; x <= 1; ++x) {
                const std::uint8_t* p =
                    picture.at(static_cast<int>(middle.x) + x, static_cast<int>(middle.y) + y);
                sum += glm::dvec3(p[0], p[1], p[2]) / 9.0;
            }
        return sum;
    }

    Stage stage;
    std::shared_ptr<Material> white = std::make_shared<Material>();
};

double warmth(const glm::dvec3& colour) {
    return colour.r / colour.b;
}

TEST(SkyDome, ItsPartsHoldAllOfItsLight) {
    SkyDome dome{64, {}};
    for (int i = 0; i < 64 * 16; ++i)
        dome.pixels.emplace_back(i % 64 < 20 ? 3.0F : 0.5F, static_cast<float>(i / 64) / 16, 1);
    for (const int count : {16, 32}) {
        float level = 0, shares = 0;
        glm::vec3 light(0);
        for (const SkyPart& part : divided(dome, count)) {
            EXPECT_NEAR(glm::length(part.toward), 1, 1e-5);
            shares += part.share;
            level += part.share * part.toward.y;
            light += part.share * part.radiance;
        }
        EXPECT_NEAR(shares, 2, 1e-4);
        EXPECT_NEAR(level, 1, 0.05) << "even light on level ground";
        EXPECT_NEAR(light.r, 2 * (20 * 3.0 + 44 * 0.5) / 64, 1e-3);
        EXPECT_NEAR(light.b, 2, 1e-4);
    }
    EXPECT_EQ(divided({}, 16).size(), 16U) << "without a sky";
}

TEST_F(SkyLight, GroundDarkensFarAroundATallThingAndNowhereElse) {
    for (const bool fast : {false, true}) {
        SCOPED_TRACE(fast ? "fast tier" : "snapshot");
        const glm::dvec3 beside(-2.4, 0, 0), apart(-7, 0, 1);
        const double open = seen(beside, fast).g, openApart = seen(apart, fast).g;
        Node& box = addBox({0, 2, 0}, {2, 4, 2});
        stage.touchStill();
        EXPECT_LT(seen(beside, fast).g, 0.97 * open) << "1.4 units from its side";
        EXPECT_NEAR(seen(apart, fast).g, openApart, 0.02 * openApart);
        box.removeFromParent();
        stage.touchStill();
        EXPECT_NEAR(seen(beside, fast).g, open, 1) << "as before";
    }
}

TEST_F(SkyLight, SunlitGroundThrowsItsColourOntoWhatStandsOnIt) {
    addSun({20, 40, -50});  // behind the box: the front of it is in shade
    addBox({0, 1, 0}, {2, 2, 2});
    const glm::dvec3 front(-0.6, 1.2, 1), top(0, 2, 0);
    EXPECT_GT(warmth(seen(front)), 1.1 * warmth(seen(top)));
    const double open = warmth(seen(front));
    // Something that keeps the sun off the ground before it.
    addBox({0, 6, -2.5}, {14, 0.2, 8});
    EXPECT_LT(warmth(seen(front)), 0.975 * open);
}

}  // namespace
}  // namespace gull::test
