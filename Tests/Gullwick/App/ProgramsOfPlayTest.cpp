#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Loop/Clock.h"
#include "Engine/Render/ProgramCache.h"
#include "Engine/Render/ProgramList.h"
#include "Gullwick/HUD/IconStage.h"
#include "Gullwick/Scene/BeachScene.h"

#include <algorithm>
#include <vector>

namespace gull {
namespace {

constexpr PixelSize size{124, 80};

/// A beach played through every moment that needs a program of its own.
class PlayedBeach {
  public:
    PlayedBeach(Renderer& renderer, const Target& window, int number) : renderer_(renderer), window_(window) {
        scene_.setBeach(number);
    }

    void playThrough() {
        scene_.introStart = time_;
        steps(1, BuildMode::gradual);
        scene_.introStart = -100;
        steps(1, BuildMode::complete);
        scene_.trail.sweep({0.45, 0.4});
        scene_.ripple({0.6, 0.5}, {1, 0.76, 0.28, 1}, 0.8);
        scene_.showPing({0.4, 0.4}, {0.8, 0.7});
        steps(2, BuildMode::complete);
        double x = 0.1;
        for (const ItemKind kind : allKinds()) {
            const BuriedItem item{1, kind, {x, 0.4}, 0};
            if (isTreasure(kind))
                scene_.dig(item.at, Hunt::Treasure{item});
            else
                scene_.dig(item.at, Hunt::Junk{item});
            steps(1, BuildMode::complete);
            time_ += 0.4;
            steps(1, BuildMode::complete);
            time_ += 2;
            x += 0.07;
        }
        scene_.floodStart = time_ - 1;
        steps(2, BuildMode::complete);
    }

  private:
    void steps(int count, BuildMode mode) {
        for (int i = 0; i < count; ++i) {
            time_ += 0.1;
            clock_.moveTo(time_);
            loop_.runDue();
            scene_.update(time_, 0.05, {0.4, 0.4}, {0.1, 0}, 0, 0.6, {1, 0.76, 0.28, 1});
            renderer_.draw(scene_.stage(), size, window_.framebuffer(), mode);
        }
    }

    Renderer& renderer_;
    const Target& window_;
    double time_ = 2000;
    ManualClock clock_;
    MainLoop loop_{clock_};
    DelayedWork work_{loop_};
    BeachScene scene_{work_};
};

class ProgramsOfPlay : public test::RenderTest {};

TEST_F(ProgramsOfPlay, AreAllOnTheList) {
    const Target window = makeWindow(size);
    for (const RenderTier tier : {RenderTier::fast, RenderTier::full}) {
        renderer->setTier(tier);
        PlayedBeach(*renderer, window, 8).playThrough();
    }
    Textures textures;
    for (const ItemKind kind : allKinds()) renderer->snapshot(*iconStage(kind, textures), {40, 40});

    const std::vector<ProgramKey> list = programList();
    const std::vector<ProgramKey> asked = renderer->programs();
    EXPECT_GT(asked.size(), 40u) << "play needs many";
    for (const ProgramKey& key : asked)
        EXPECT_TRUE(std::find(list.begin(), list.end(), key) != list.end())
            << "not listed, so neither checked nor warmed up:\n"
            << programSource(key, {}).name << programSource(key, {}).fragment.substr(0, 250);
}

TEST_F(ProgramsOfPlay, AreReadyAfterTheWarmUp) {
    const Target window = makeWindow(size);
    renderer->setTier(RenderTier::fast);
    PlayedBeach first(*renderer, window, 1);
    while (!renderer->warmUp(1)) {
    }
    const std::vector<ProgramKey> before = renderer->programs();
    first.playThrough();
    // The programs of a beach at rest are compiled for the first picture, before anybody plays.
    std::vector<ProgramKey> late;
    for (const ProgramKey& key : renderer->programs())
        if (std::find(before.begin(), before.end(), key) == before.end() &&
            key.features.has(Feature::displayOutput))
            late.push_back(key);
    EXPECT_LE(late.size(), 4u) << "foam and what stands in the water";
}

}  // namespace
}  // namespace gull
