#include "Gullwick/App/PlayerInput.h"

#include "Gullwick/Game/GameHarness.h"
#include "Gullwick/Game/TouchSurface.h"

#include <SDL.h>

#include <utility>

namespace gull {
namespace {

/// Plays with a controller that exists only for SDL, and with fingers that the window reports.
struct PlayerInputTest : GameHarness, PointerLock {
    static void SetUpTestSuite() {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER), 0) << SDL_GetError();
    }
    static void TearDownTestSuite() { SDL_QuitSubSystem(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER); }

    PlayerInputTest() {
        surface.focusGained();
        play(1);
        poll();
    }
    void TearDown() override {
        unplug();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
    void lock() override { isLocked = true; }
    void unlock() override { isLocked = false; }

    void plugIn() {
        index_ = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX,
                                           SDL_CONTROLLER_BUTTON_MAX, 0);
        ASSERT_GE(index_, 0) << SDL_GetError();
        joystick_ = SDL_JoystickOpen(index_);
        poll();
    }
    void unplug() {
        if (!joystick_) return;
        SDL_JoystickClose(std::exchange(joystick_, nullptr));
        SDL_JoystickDetachVirtual(index_);
        poll();
    }
    void poll() {
        SDL_Event event;
        while (SDL_PollEvent(&event)) controllers.handle(&event);
        turn(0.02);
        input.poll(clock.now() + 1);
    }
    void touch(SDL_EventType type, float x, float y) {
        SDL_Event event{};
        event.ctouchpad = {type, 0, SDL_JoystickInstanceID(joystick_), 0, 0, x, y, 1.0F};
        controllers.handle(&event);
        poll();
    }

    bool isLocked = false;
    Trackpads trackpads;
    GameControllers controllers{[this] { return clock.now(); }};
    TouchSurface surface{game, settings, *this, clock};
    PlayerInput input{trackpads, controllers, surface, game};
    SDL_Joystick* joystick_ = nullptr;

  private:
    int index_ = -1;
};

TEST_F(PlayerInputTest, theWindowsFingersSteer) {
    input.windowContacts({{3, 0.2, 0.4}});
    poll();
    EXPECT_TRUE(isLocked);
    EXPECT_EQ(game.target(), PadMap::plotPoint(0.2, 0.4));
    input.windowContacts({{3, 0.2, 0.4}, {4, 0.6, 0.9}});
    poll();
    EXPECT_EQ(game.target(), PadMap::plotPoint(0.6, 0.9));
    surface.focusLost();
    input.windowContacts({{5, 0.1, 0.1}});
    poll();
    EXPECT_EQ(game.target(), PadMap::plotPoint(0.6, 0.9));
}

TEST_F(PlayerInputTest, theCoilMovesInTheFrameThatReadsTheFinger) {
    const PlotPoint before = game.coil();
    input.windowContacts({{3, 0.9, 0.9}});
    input.poll(clock.now() + 1);
    turn(GameController::frameInterval + 1e-6);
    EXPECT_GT(game.coil().x, before.x + 0.05);
    EXPECT_GT(game.coil().y, before.y + 0.05);
}

TEST_F(PlayerInputTest, aControllersButtonsAndStickPlay) {
    plugIn();
    SDL_JoystickSetVirtualButton(joystick_, SDL_CONTROLLER_BUTTON_X, SDL_PRESSED);
    poll();
    EXPECT_EQ(game.pings, 1) << "the left button";
    const PlotPoint before = game.target();
    SDL_JoystickSetVirtualAxis(joystick_, SDL_CONTROLLER_AXIS_LEFTX, 32767);
    poll();
    poll();
    EXPECT_GT(game.target().x, before.x);
    SDL_JoystickSetVirtualAxis(joystick_, SDL_CONTROLLER_AXIS_LEFTX, 0);
    SDL_JoystickSetVirtualButton(joystick_, SDL_CONTROLLER_BUTTON_START, SDL_PRESSED);
    poll();
    EXPECT_EQ(game.phase, Phase::selecting);
}

TEST_F(PlayerInputTest, aControllerUnpluggedInMidSweepFreesThePointer) {
    plugIn();
    touch(SDL_CONTROLLERTOUCHPADDOWN, 0.5F, 0.25F);
    EXPECT_TRUE(isLocked);
    EXPECT_EQ(game.target(), PadMap::plotPoint(0.5, 0.75));
    touch(SDL_CONTROLLERTOUCHPADUP, 0, 0);
    EXPECT_TRUE(isLocked) << "a lifted finger comes back";
    unplug();
    EXPECT_FALSE(isLocked);
    EXPECT_TRUE(settings.trackpadSweep());
    EXPECT_EQ(toast(), "Trackpad unplugged — the mouse moves the detector now");
}

TEST_F(PlayerInputTest, aControllerThatGoesOtherwiseIsTold) {
    plugIn();
    unplug();
    EXPECT_EQ(toast(), "Controller unplugged");
}

}  // namespace
}  // namespace gull
