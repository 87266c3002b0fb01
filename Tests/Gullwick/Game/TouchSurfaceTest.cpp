#include "Gullwick/Game/TouchSurface.h"

#include "Gullwick/Game/GameHarness.h"

namespace gull {
namespace {

using Phase = GameController::Phase;

struct FakePointer final : PointerLock {
    int locks = 0;
    int unlocks = 0;
    void lock() override { ++locks; }
    void unlock() override { ++unlocks; }
    bool isLocked() const { return locks > unlocks; }
};

struct TouchSurfaceTest : GameHarness {
    FakePointer pointer;
    TouchSurface surface{game, settings, pointer, clock};

    TouchSurfaceTest() { surface.focusGained(); }

    /// Where a finger at (x, y) of the pad sends the coil.
    static PlotPoint on(double x, double y) { return PadMap::plotPoint(x, y); }
    void mouse(MouseEvent::Kind kind, double x, double y, int button = 0) {
        surface.mouse({kind, x, y, button});
    }
    bool press(Key key, Modifiers modifiers = {}) { return surface.key({key, 0, modifiers, false}); }
    bool press(char32_t character, Modifiers modifiers = {}) {
        return surface.key({Key::character, character, modifiers, false});
    }
};

TEST_F(TouchSurfaceTest, theUpperOfTwoFingersSteersAndLiftingItHandsOver) {
    play(1);
    surface.touches({{1, 0.3, 0.2}});
    EXPECT_EQ(game.target(), on(0.3, 0.2));
    surface.touches({{1, 0.3, 0.2}, {2, 0.7, 0.8}});
    EXPECT_EQ(game.target(), on(0.7, 0.8));
    surface.touches({{1, 0.4, 0.2}, {2, 0.7, 0.8}});
    EXPECT_EQ(game.target(), on(0.7, 0.8));
    surface.touches({{1, 0.4, 0.2}});
    EXPECT_EQ(game.target(), on(0.4, 0.2));
    surface.touches({});
    EXPECT_EQ(game.target(), on(0.4, 0.2));  // the detector stays where it was
}

TEST_F(TouchSurfaceTest, theFirstTouchCapturesThePointerAndEscapeFreesIt) {
    play(1);
    surface.touches({});
    EXPECT_FALSE(surface.isCaptured());
    surface.touches({{1, 0.5, 0.5}});
    surface.touches({{1, 0.5, 0.6}});
    EXPECT_TRUE(surface.isCaptured());
    EXPECT_TRUE(game.captured);
    EXPECT_EQ(pointer.locks, 1);

    EXPECT_TRUE(press(Key::escape));
    EXPECT_FALSE(game.captured);
    EXPECT_FALSE(pointer.isLocked());
    EXPECT_FALSE(settings.trackpadSweep());
    EXPECT_EQ(toast(), "Pointer freed — the mouse moves the detector now. Esc to use the trackpad again");
    const PlotPoint target = game.target();
    surface.touches({{1, 0.9, 0.9}});
    EXPECT_EQ(game.target(), target);
    EXPECT_FALSE(surface.isCaptured());

    EXPECT_TRUE(press(Key::escape));
    EXPECT_TRUE(settings.trackpadSweep());
    EXPECT_FALSE(surface.isCaptured());
    EXPECT_EQ(toast(), "Trackpad sweep on — rest a finger on the trackpad");
    surface.touches({{1, 0.8, 0.9}});
    EXPECT_TRUE(surface.isCaptured());
}

TEST_F(TouchSurfaceTest, withoutFocusNothingSteersAndNothingIsCaptured) {
    TouchSurface unfocused(game, settings, pointer, clock);
    play(1);
    game.setCoil(nowhere());
    unfocused.touches({{1, 0.2, 0.2}});
    unfocused.mouse({MouseEvent::Kind::moved, 300, 300, 0});
    unfocused.mouse({MouseEvent::Kind::down, 300, 300, 1});
    unfocused.stick(1, 0, 0.5);
    unfocused.perform(KeyAction::Ping{});
    EXPECT_EQ(game.target(), nowhere());
    EXPECT_TRUE(game.hunt().holes().empty());
    EXPECT_EQ(game.pings, 0);
    EXPECT_FALSE(pointer.isLocked());
}

TEST_F(TouchSurfaceTest, theMenuSwitchesTheTrackpadByItsCheckMark) {
    play(1);
    surface.touches({{1, 0.5, 0.5}});
    surface.setCovered(true);  // the menu that it is chosen from
    surface.setTrackpad(false);
    surface.setCovered(false);
    EXPECT_FALSE(settings.trackpadSweep());
    EXPECT_EQ(toast(), "Pointer freed — the mouse moves the detector now. Esc to use the trackpad again");
    surface.setTrackpad(true);
    EXPECT_TRUE(settings.trackpadSweep());
    EXPECT_EQ(toast(), "Trackpad sweep on — rest a finger on the trackpad");
}

TEST_F(TouchSurfaceTest, aFreedPointerSteersOnlyWhenAHandMovesIt) {
    play(1);
    surface.setViewSize({1000, 625});
    game.world().frame(1.6);
    surface.touches({{1, 0.5, 0.5}});
    const PlotPoint coil = game.target();
    press(Key::escape);
    mouse(MouseEvent::Kind::moved, 100, 100);  // it drifted while it was locked,
    turn(0.05);
    mouse(MouseEvent::Kind::moved, 600, 400);  // and is put back
    turn(1);
    mouse(MouseEvent::Kind::moved, 601, 401);  // a shaken table
    EXPECT_EQ(game.target(), coil);
    mouse(MouseEvent::Kind::moved, 610, 400);
    EXPECT_EQ(game.target(), game.world().plotPoint({610, 400}, {1000, 625}));
    mouse(MouseEvent::Kind::moved, 611, 400);
    EXPECT_EQ(game.target(), game.world().plotPoint({611, 400}, {1000, 625}));
}

TEST_F(TouchSurfaceTest, aPointerThatABarredFingerMovesSteersNothing) {
    play(1);
    surface.touches({{1, 0.2, 0.2}});
    surface.focusLost();
    surface.focusGained();
    turn(1);
    const PlotPoint coil = game.target();
    mouse(MouseEvent::Kind::moved, 300, 300);
    mouse(MouseEvent::Kind::moved, 400, 300);
    EXPECT_EQ(game.target(), coil);
    surface.touches({});
    mouse(MouseEvent::Kind::moved, 410, 300);
    mouse(MouseEvent::Kind::moved, 420, 300);
    EXPECT_NE(game.target(), coil);
}

TEST_F(TouchSurfaceTest, aTapDigsWhereTheFingerWasAndAClickWhereTheCoilIs) {
    play(1);
    const PlotPoint spot = nowhere();
    const double x = spot.x * 0.9 + 0.05, y = spot.y * 0.9 + 0.05;
    game.setCoil({0.9, 0.9});
    surface.touches({{1, x, y}});
    turn(0.06);
    surface.touches({});
    turn(0.02);
    ASSERT_GT(game.coil().distance(spot), 0.01) << "still on its way";
    mouse(MouseEvent::Kind::down, 5, 5, 1);
    ASSERT_EQ(game.hunt().holes().size(), 1u);
    EXPECT_NEAR(game.hunt().holes()[0].distance(spot), 0, 1e-9);
    mouse(MouseEvent::Kind::up, 5, 5, 1);

    // A finger that is down clicks, and one that was down for long has not tapped.
    turn(2);
    game.setCoil({0.9, 0.9});
    surface.touches({{2, x, y}});
    turn(0.06);
    mouse(MouseEvent::Kind::down, 5, 5, 1);
    ASSERT_EQ(game.hunt().holes().size(), 2u);
    EXPECT_GT(game.hunt().holes()[1].distance(spot), 0.01);
}

TEST_F(TouchSurfaceTest, theLastPlaceOfAFingerThatClickedIsMadeUpForAtTheRelease) {
    play(1);
    surface.touches({{1, 0.3, 0.3}});
    turn(0.5);
    mouse(MouseEvent::Kind::down, 0, 0, 1);
    surface.touches({{1, 0.6, 0.4}});
    surface.update();
    EXPECT_EQ(game.target(), on(0.3, 0.3));
    mouse(MouseEvent::Kind::up, 0, 0, 1);
    turn(0.1);
    surface.update();  // the finger has not stirred since
    EXPECT_EQ(game.target(), on(0.6, 0.4));

    mouse(MouseEvent::Kind::down, 0, 0, 1);
    surface.touches({{1, 0.7, 0.4}});
    mouse(MouseEvent::Kind::up, 0, 0, 1);
    turn(0.1);
    surface.touches({{1, 0.8, 0.4}});
    surface.update();
    EXPECT_EQ(game.target(), on(0.8, 0.4)) << "the place during the click is outdated";
}

TEST_F(TouchSurfaceTest, aPadThatIsUnpluggedFreesThePointerAndLeavesTheSetting) {
    play(1);
    surface.touches({{7, 0.5, 0.5}});
    EXPECT_EQ(surface.steeringFinger(), 7);
    surface.trackpadLost();
    EXPECT_FALSE(pointer.isLocked());
    EXPECT_TRUE(settings.trackpadSweep());
    EXPECT_EQ(toast(), "Trackpad unplugged — the mouse moves the detector now");
    surface.trackpadFound();
    EXPECT_EQ(toast(), "Trackpad plugged in — rest a finger on it");
}

TEST_F(TouchSurfaceTest, escapeLeavesTheSelectAndLetsThePointerBe) {
    play(1);
    surface.touches({{1, 0.5, 0.5}});
    game.openSelect();
    EXPECT_TRUE(press(Key::escape));
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_TRUE(surface.isCaptured());
    EXPECT_TRUE(settings.trackpadSweep());
}

TEST_F(TouchSurfaceTest, aFingerFromAnotherProgramMustBeLiftedFirst) {
    play(1);
    surface.touches({{1, 0.2, 0.2}});
    surface.focusLost();
    EXPECT_FALSE(pointer.isLocked());
    EXPECT_FALSE(game.captured);
    surface.touches({{1, 0.3, 0.3}});
    surface.touches({{1, 0.3, 0.3}, {2, 0.4, 0.4}});  // another one comes down over there
    surface.focusGained();
    surface.touches({{1, 0.5, 0.9}, {2, 0.6, 0.8}});
    EXPECT_EQ(game.target(), on(0.2, 0.2));
    EXPECT_FALSE(surface.isCaptured());
    surface.touches({{1, 0.5, 0.9}, {2, 0.6, 0.8}, {3, 0.1, 0.1}});  // a new one counts at once
    EXPECT_EQ(game.target(), on(0.1, 0.1));
    surface.touches({{2, 0.6, 0.8}});
    surface.touches({{1, 0.7, 0.7}, {2, 0.6, 0.8}});  // lifted and put down again
    EXPECT_EQ(game.target(), on(0.7, 0.7));
    surface.focusLost();  // back before any finger stirred
    surface.focusGained();
    surface.touches({{1, 0.1, 0.1}, {2, 0.2, 0.2}});
    EXPECT_EQ(game.target(), on(0.7, 0.7));
}

TEST_F(TouchSurfaceTest, aCoveredBeachTakesNoInputAndFreesThePointer) {
    play(1);
    game.setCoil(nowhere());
    surface.touches({{1, 0.2, 0.2}});
    surface.setCovered(true);
    EXPECT_FALSE(pointer.isLocked());
    surface.touches({{1, 0.8, 0.8}});
    mouse(MouseEvent::Kind::moved, 300, 300);
    mouse(MouseEvent::Kind::down, 300, 300, 1);
    surface.perform(KeyAction::Confirm{});
    surface.stick(1, 0, 0.5);
    EXPECT_EQ(game.target(), on(0.2, 0.2));
    EXPECT_TRUE(game.hunt().holes().empty());
    surface.setCovered(false);
    surface.touches({{1, 0.8, 0.8}});
    EXPECT_EQ(game.target(), on(0.2, 0.2));
    surface.touches({});
    surface.touches({{1, 0.8, 0.8}});
    EXPECT_EQ(game.target(), on(0.8, 0.8));
}

TEST_F(TouchSurfaceTest, theFreeMouseSteersAndItsLeftButtonDigsWhereTheCoilStands) {
    play(1);
    surface.setViewSize({1000, 625});
    game.world().frame(1.6);
    const PlotPoint coil = nowhere();
    game.setCoil(coil);
    const PlotPoint there = game.world().plotPoint({700, 400}, {1000, 625});
    mouse(MouseEvent::Kind::moved, 700, 400);
    EXPECT_EQ(game.target(), there);
    mouse(MouseEvent::Kind::down, 700, 400, 3);
    EXPECT_TRUE(game.hunt().holes().empty());
    mouse(MouseEvent::Kind::down, 300, 500, 1);
    ASSERT_EQ(game.hunt().holes().size(), 1u);
    EXPECT_EQ(game.hunt().holes()[0], coil);
    EXPECT_EQ(game.target(), game.world().plotPoint({300, 500}, {1000, 625}));

    game.openSelect();
    mouse(MouseEvent::Kind::up, 300, 500, 1);
    mouse(MouseEvent::Kind::moved, 100, 100);
    EXPECT_EQ(game.target(), game.world().plotPoint({300, 500}, {1000, 625}));
    EXPECT_EQ(game.selection, 1);
}

TEST_F(TouchSurfaceTest, whileAFingerSteersTheMouseIsDeafAndEveryButtonClicks) {
    play(1);
    const PlotPoint coil = nowhere();
    surface.touches({{1, coil.x * 0.9 + 0.05, coil.y * 0.9 + 0.05}});
    turn(1);
    mouse(MouseEvent::Kind::moved, 5, 5);
    mouse(MouseEvent::Kind::down, 5, 5, 3);
    EXPECT_NEAR(game.target().x, coil.x, 1e-12);
    ASSERT_EQ(game.hunt().holes().size(), 1u);
    EXPECT_NEAR(game.hunt().holes()[0].x, coil.x, 1e-6);
}

TEST_F(TouchSurfaceTest, theTargetRestsFromTheClickUntilAMomentAfterItsRelease) {
    play(1);
    const PlotPoint spot = nowhere();
    const double x = spot.x * 0.9 + 0.05, y = spot.y * 0.9 + 0.05;
    surface.touches({{1, x, y}});
    turn(0.5);
    mouse(MouseEvent::Kind::down, 0, 0, 1);
    surface.touches({{1, x + 0.02, y}});
    turn(0.6);
    surface.touches({{1, x + 0.03, y}});
    EXPECT_EQ(game.target(), on(x, y));
    mouse(MouseEvent::Kind::up, 0, 0, 1);
    turn(0.04);
    surface.touches({{1, x + 0.04, y}});
    EXPECT_EQ(game.target(), on(x, y));
    turn(0.02);
    surface.touches({{1, x + 0.04, y}});
    EXPECT_EQ(game.target(), on(x + 0.04, y));

    // A release that went to another program is not waited for.
    mouse(MouseEvent::Kind::down, 0, 0, 1);
    surface.focusLost();
    surface.focusGained();
    surface.touches({});
    surface.touches({{2, x, y}});
    EXPECT_EQ(game.target(), on(x, y));
}

TEST_F(TouchSurfaceTest, keysDoWhatTheMapSays) {
    play(1);
    game.setCoil(nowhere());
    EXPECT_TRUE(press(U'h'));
    EXPECT_EQ(game.pings, 1);
    EXPECT_TRUE(press(U'n'));
    for (const Key key : {Key::returnKey, Key::space, Key::keypadEnter}) {
        const std::size_t holes = game.hunt().holes().size();
        EXPECT_TRUE(press(key));
        EXPECT_EQ(game.hunt().holes().size(), holes + 1);
        turn(0.5);
    }
    game.setTarget({0.5, 0.5});
    EXPECT_TRUE(press(Key::left));
    EXPECT_TRUE(press(Key::up));
    EXPECT_NEAR(game.target().x, 0.465, 1e-12);
    EXPECT_NEAR(game.target().y, 0.45, 1e-12);
    EXPECT_TRUE(press(Key::right));
    EXPECT_TRUE(press(Key::down));
    EXPECT_NEAR(game.target().x, 0.5, 1e-12);
    EXPECT_NEAR(game.target().y, 0.5, 1e-12);
    EXPECT_TRUE(press(U'l'));
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_TRUE(press(U'r'));
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_TRUE(press(U'L'));
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_TRUE(press(U'r'));
    EXPECT_EQ(game.phase, Phase::intro);
    turn(1.4);
    win();
    EXPECT_TRUE(press(U'n'));
    EXPECT_EQ(game.spec->number, 2);
}

TEST_F(TouchSurfaceTest, whatIsNotTheGamesIsPassedOn) {
    play(1);
    Modifiers command;
    command.command = true;
    for (const char32_t key : {U'h', U'r', U'l', U'n', U'3'}) EXPECT_FALSE(press(key, command));
    EXPECT_FALSE(press(Key::returnKey, command));
    EXPECT_FALSE(press(Key::left, command));
    EXPECT_FALSE(press(U'x'));
    EXPECT_FALSE(press(Key::tab));
    EXPECT_FALSE(press(Key::f11));
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_EQ(game.pings, 0);
}

TEST_F(TouchSurfaceTest, aHeldKeyRepeatsOnlyArrows) {
    play(1);
    game.setTarget({0.5, 0.5});
    EXPECT_TRUE(surface.key({Key::left, 0, {}, true}));
    EXPECT_NEAR(game.target().x, 0.465, 1e-12);
    EXPECT_TRUE(surface.key({Key::character, U'h', {}, true}));
    EXPECT_TRUE(surface.key({Key::escape, 0, {}, true}));
    EXPECT_EQ(game.pings, 0);
    EXPECT_TRUE(settings.trackpadSweep());
}

TEST_F(TouchSurfaceTest, aStickMovesTheTargetAtTheSamePaceAcrossAndAlongTheSand) {
    play(1);
    game.setTarget({0.2, 0.2});
    for (int i = 0; i < 10; ++i) surface.stick(0, 0, 0.05);
    EXPECT_EQ(game.target(), (PlotPoint{0.2, 0.2}));
    surface.stick(0.05, 0, 0.05);
    EXPECT_GT(game.target().x, 0.2) << "the device has taken its dead zone off";
    game.setTarget({0.2, 0.2});
    for (int i = 0; i < 10; ++i) surface.stick(1, 0, 0.05);
    const PlotPoint across = game.target();
    EXPECT_NEAR(PlotPoint({0.2, 0.2}).distance(across), 0.5 * TouchSurface::stickSpeed, 1e-9);
    EXPECT_EQ(across.y, 0.2);
    for (int i = 0; i < 10; ++i) surface.stick(0, 1, 0.05);
    EXPECT_NEAR(across.distance(game.target()), 0.5 * TouchSurface::stickSpeed, 1e-9);
    for (int i = 0; i < 100; ++i) surface.stick(1, 1, 0.05);
    EXPECT_EQ(game.target(), (PlotPoint{1, 1}));

    game.openSelect();
    for (int i = 0; i < 5; ++i) surface.stick(0.9, 0, 0.05);  // one step until it comes back
    EXPECT_EQ(game.selection, 2);
    surface.stick(0.22, 0, 0.05);  // under half the tilt of a step
    surface.stick(0, -0.9, 0.05);
    EXPECT_EQ(game.selection, 6);
    surface.perform(KeyAction::Back{});
    EXPECT_EQ(game.phase, Phase::playing);
}

TEST_F(TouchSurfaceTest, thePointerIsFreeWhenTheSurfaceIsGone) {
    {
        TouchSurface passing(game, settings, pointer, clock);
        passing.focusGained();
        passing.touches({{1, 0.5, 0.5}});
        EXPECT_TRUE(pointer.isLocked());
    }
    EXPECT_FALSE(pointer.isLocked());
    EXPECT_FALSE(game.captured);
}

}  // namespace
}  // namespace gull
