#include "Gullwick/HUD/Overlay.h"

#include "Gullwick/Game/GameHarness.h"
#include "Gullwick/HUD/HudFixture.h"

namespace gull {
namespace {

/// The overlay of a real game under a clock turned by hand.
struct OverlayTest : GameHarness {
    PlainIcons source;
    ItemIcons icons{source};
    int chosen = 0;
    Overlay overlay{game, settings, icons, [this] {
                        Command command;
                        command.title = "Choose";
                        command.action = [this] { ++chosen; };
                        return std::vector<Menu>{{"Menu", {command}}};
                    }};

    const std::vector<Overlay::Area>& update() { return overlay.update(clock.now(), 1240, 800, 1); }
    static KeyEvent stroke(Key key) { return {key, 0, {}, false}; }
};

TEST_F(OverlayTest, FollowsAPlayedBeach) {
    play(1);
    EXPECT_EQ(update().size(), 1U) << "the first time, all of it";
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

    // The card fades with what it said, while the next beach already stands behind it.
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
    long long redrawn = 0;
    int frames = 0;
    for (; frames < 240; ++frames) {
        game.setTarget({0.2 + 0.002 * frames, 0.4});
        turn(1.0 / 60);
        for (const Overlay::Area& area : update())
            redrawn += static_cast<long long>(area.width) * area.height;
    }
    EXPECT_GT(redrawn, 0);
    EXPECT_LT(redrawn / frames, 1240 * 800 / 50) << "pixels a frame";
    EXPECT_TRUE(update().empty()) << "nothing happened in between";
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
    EXPECT_TRUE(overlay.handle(MouseEvent{MouseEvent::Kind::down, 3, 300, 1}));
    EXPECT_TRUE(overlay.handle(stroke(Key::f10))) << "no menu over a card";
    EXPECT_TRUE(overlay.handle(stroke(Key::escape)));
    EXPECT_FALSE(overlay.wantsInput());
    EXPECT_FALSE(confirmed);

    overlay.showAbout("1.2.3");
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

TEST_F(OverlayTest, TheStillPictureIsTheWindowsAtRest) {
    play(3);
    turn(8);
    update();
    turn(1);
    update();
    Canvas still(1240, 800, 1);
    drawHud(still, HudState::of(game, false), icons);
    const Image picture = still.image();
    long long differing = 0;
    for (int y = 0; y < 800; ++y) {
        for (int x = 0; x < 1240; ++x) {
            const unsigned char* own = overlay.pixels() + y * overlay.strideBytes() + x * 4;
            const std::uint8_t* other = picture.at(x, y);
            for (int c = 0; c < 4; ++c) {
                const int channel = c == 3 ? 3 : 2 - c;
                differing += std::abs(own[c] - other[channel]) > 2;
            }
        }
    }
    EXPECT_EQ(differing, 0);
}

}  // namespace
}  // namespace gull
