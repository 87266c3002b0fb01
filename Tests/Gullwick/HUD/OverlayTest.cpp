#include "Gullwick/HUD/Overlay.h"

#include "Gullwick/Game/GameHarness.h"
#include "Gullwick/HUD/HudFixture.h"

#include <functional>

namespace gull {
namespace {

/// The overlay of a real game under a manual clock.
struct OverlayTest : GameHarness {
    PlainIcons source;
    ItemIcons icons{source};
    int chosen = 0;
    Language language;
    Overlay overlay{game, settings, language, icons, [this] {
                        Command command;
                        command.title = "Choose";
                        command.action = [this] { ++chosen; };
                        return std::vector<Menu>{{"Menu", {command}}};
                    }};

    const std::vector<OverlayLayer>& update() { return overlay.update(clock.now(), 1240, 800, 1); }
    /// The number of pixels that the update redraws.
    long long redrawn() {
        long long pixels = 0;
        for (const OverlayLayer& layer : update()) {
            for (const OverlayLayer::Area& area : layer.changes) pixels += 1LL * area.width * area.height;
        }
        return pixels;
    }
    static Rect rectOf(const OverlayLayer::Area& area) {
        return {1.0 * area.x, 1.0 * area.y, 1.0 * area.width, 1.0 * area.height};
    }
    static Image imageOf(const OverlayLayer& layer) {
        Image image(layer.place.width, layer.place.height);
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const unsigned char* from = layer.pixels + y * layer.strideBytes + x * 4;
                const unsigned char order[] = {from[2], from[1], from[0], from[3]};
                std::copy(std::begin(order), std::end(order), image.at(x, y));
            }
        }
        return image;
    }
    static KeyEvent stroke(Key key) { return {key, 0, {}, false}; }
};

TEST_F(OverlayTest, FollowsAPlayedBeach) {
    play(1);
    EXPECT_GT(redrawn(), 1240 * 50) << "the first time, all of it";
    EXPECT_NE(overlay.drawing().findText("CALM COVE"), nullptr);
    const BuriedItem first = buried(true).front();
    digUp(first);
    update();
    turn(0.4);
    update();
    EXPECT_TRUE(overlay.drawing().find("popup").has_value());
    win();
    update();
    turn(1);
    update();
    EXPECT_NE(overlay.drawing().findText("CLEAN SWEEP"), nullptr);
    EXPECT_EQ(overlay.drawing().find("tray")->opacity, 0);

    // The card fades with its own text, while the next beach already stands behind it.
    game.nextBeach();
    turn(0.1);
    update();
    turn(0.1);
    update();
    EXPECT_NE(overlay.drawing().findText("CLEAN SWEEP"), nullptr);
    EXPECT_NE(overlay.drawing().findText("SHELL BAY"), nullptr);
    turn(0.4);
    update();
    EXPECT_EQ(overlay.drawing().findText("CLEAN SWEEP"), nullptr);
}

TEST_F(OverlayTest, DrawsOnlyWhatChanged) {
    play(2);
    turn(8);  // the opening toast is gone
    update();
    turn(0.5);
    update();
    long long pixels = 0;
    int frames = 0;
    for (; frames < 240; ++frames) {
        game.setTarget({0.2 + 0.002 * frames, 0.4});
        turn(1.0 / 60);
        pixels += redrawn();
    }
    EXPECT_GT(pixels, 0);
    EXPECT_LT(pixels / frames, 1240 * 800 / 50) << "pixels a frame";
    EXPECT_EQ(redrawn(), 0) << "nothing happened in between";
}

TEST_F(OverlayTest, AFadeDrawsOnceAndThenOnlyComposes) {
    play(2);
    turn(8);
    update();
    const auto framesThatDraw = [&] {
        constexpr long long signalMeter = 110 * 40;  // it falls while the bars go
        int frames = 0;
        for (int i = 0; i < 20; ++i) {
            frames += redrawn() > signalMeter;
            turn(1.0 / 60);
        }
        return frames;
    };
    game.openSelect();
    EXPECT_EQ(framesThatDraw(), 1);
    game.closeSelect();
    EXPECT_EQ(framesThatDraw(), 0) << "nothing is new on the way back";
    game.openSelect();
    EXPECT_EQ(framesThatDraw(), 0);
}

TEST_F(OverlayTest, AnotherLanguageIsSpokenInTheNextFrame) {
    play(2);
    turn(0.5);
    update();
    const std::string toast = language.tr(*game.toast.get());
    language = *Language::find("de");
    update();
    EXPECT_NE(overlay.drawing().findText("MUSCHELBUCHT"), nullptr);
    EXPECT_EQ(overlay.drawing().findText("SHELL BAY"), nullptr);
    turn(0.3);
    update();
    EXPECT_EQ(overlay.drawing().findText(toast), nullptr);
    EXPECT_NE(overlay.drawing().findText(language.tr(*game.toast.get())), nullptr) << "the toast too";
}

TEST_F(OverlayTest, CardsAndMenusTakeTheInputAndTheHudTakesNone) {
    play(2);
    update();
    for (const MouseEvent::Kind kind :
         {MouseEvent::Kind::moved, MouseEvent::Kind::down, MouseEvent::Kind::up}) {
        for (const char* name : {"tray", "signal", "tide"}) {
            const Rect rect = overlay.drawing().find(name)->rect;
            EXPECT_FALSE(overlay.handle(MouseEvent{kind, rect.x + 5, rect.y + 5, 1}));
        }
    }
    EXPECT_FALSE(overlay.handle(stroke(Key::returnKey)));
    EXPECT_FALSE(overlay.wantsInput());

    bool confirmed = false;
    overlay.askReset([&] { confirmed = true; });
    EXPECT_TRUE(overlay.wantsInput());
    EXPECT_TRUE(overlay.asks());
    EXPECT_TRUE(overlay.handle(MouseEvent{MouseEvent::Kind::down, 3, 300, 1}));
    EXPECT_TRUE(overlay.handle(stroke(Key::f10))) << "no menu over a card";
    EXPECT_TRUE(overlay.handle(stroke(Key::escape)));
    EXPECT_FALSE(overlay.wantsInput());
    EXPECT_FALSE(confirmed);

    overlay.showAbout("1.2.3");
    EXPECT_FALSE(overlay.asks()) << "quitting works over it";
    update();
    turn(1);
    update();
    EXPECT_NE(overlay.drawing().findText("Version 1.2.3"), nullptr);
    EXPECT_TRUE(overlay.handle(stroke(Key::returnKey)));

    EXPECT_TRUE(overlay.handle(stroke(Key::f10)));
    EXPECT_TRUE(overlay.wantsInput());
    EXPECT_TRUE(overlay.handle(stroke(Key::returnKey)));
    EXPECT_EQ(chosen, 1);
    EXPECT_FALSE(overlay.wantsInput());
    turn(1);
    update();
    turn(1);
    update();
    EXPECT_FALSE(overlay.drawing().find("menuBar").has_value());
}

TEST_F(OverlayTest, AClickBesideAMenuClosesItIsSwallowedAndIsSeen) {
    play(2);
    turn(8);
    update();
    EXPECT_TRUE(overlay.handle(stroke(Key::f10)));
    update();
    turn(1);
    update();
    ASSERT_TRUE(overlay.drawing().find("menu.item.0"));
    EXPECT_TRUE(overlay.handle(MouseEvent{MouseEvent::Kind::down, 700, 500, 1}));
    EXPECT_FALSE(overlay.wantsInput());
    EXPECT_TRUE(overlay.isMoving(clock.now()));
    // The game stands still: nothing but the menu itself changes.
    for (int frame = 0; frame < 60; ++frame) {
        clock.moveTo(clock.now() + 1.0 / 60);
        update();
    }
    EXPECT_FALSE(overlay.drawing().find("menu.item.0"));
    EXPECT_FALSE(overlay.isMoving(clock.now()));
}

TEST_F(OverlayTest, APauseIsToldAndDimsTheBeach) {
    play(2);
    turn(8);
    update();
    game.pause();
    for (int frame = 0; frame < 60; ++frame) {
        clock.moveTo(clock.now() + 1.0 / 60);
        update();
    }
    EXPECT_NE(overlay.drawing().findText("Paused — P or a click to go on"), nullptr);
    game.resume();
    update();
    turn(1);
    update();
    EXPECT_EQ(overlay.drawing().findText("Paused — P or a click to go on"), nullptr);
}

TEST_F(OverlayTest, TheStillPictureIsTheWindowsAtRest) {
    play(3);
    turn(8);
    update();
    turn(1);
    update();
    Canvas still(1240, 800, 1);
    drawHud(still, HudState::of(game, false), icons);
    // How a window blends the layers, in whole numbers like a graphics card.
    Canvas window(1240, 800, 1);
    for (const OverlayLayer& layer : update()) {
        EXPECT_EQ(layer.opacity, 1);
        if (layer.isWash()) {
            window.addRect(rectOf(layer.place));
            window.fillLinear(0, layer.place.y, 0, layer.place.y + layer.place.height, layer.wash);
        } else {
            window.drawImage(imageOf(layer), rectOf(layer.place));
        }
    }
    long long differing = 0;
    for (int i = 0; i < 800 * still.strideBytes(); ++i) {
        differing += std::abs(still.pixels()[i] - window.pixels()[i]) > 3;
    }
    EXPECT_EQ(differing, 0);
}

TEST_F(OverlayTest, TheWindowsOwnWordsAreSaidInEveryPhaseForTheirTime) {
    const std::string words = "Picture saved: a.png";
    const auto place = [&] {
        const Drawing::Mark* mark = overlay.drawing().findText(words);
        return mark == nullptr ? -1 : mark->rect.y;
    };
    const auto told = [&](const std::function<void()>& then) {
        play(1);
        then();
        turn(1);
        update();
        overlay.tell(message("Picture saved: {}", "a.png"), 3);
        EXPECT_TRUE(overlay.isMoving(clock.now())) << "or a pause would not draw it";
        update();
        turn(2.9);
        update();
        const double y = place();
        turn(0.2);
        update();
        turn(0.3);
        update();
        EXPECT_EQ(place(), -1);
        return y;
    };
    const double high = told([] {});
    EXPECT_NEAR(high, HUDView::toastTop, 20);
    EXPECT_EQ(told([this] { game.pause(); }), high) << "in place of the pause's own words";
    EXPECT_GT(told([this] { game.openSelect(); }), 740) << "below the tiles";
    EXPECT_GT(told([this] { win(); }), 740) << "below the card";
}

}  // namespace
}  // namespace gull
