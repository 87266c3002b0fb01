#include "Engine/Window/ControllerNames.h"
#include "Engine/Window/GameControllers.h"
#include "Engine/Window/RumblePulses.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

namespace gull {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A controller that exists only for SDL, with a record of every rumble command.
class GameControllersTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER), 0) << SDL_GetError();
    }
    static void TearDownTestSuite() { SDL_QuitSubSystem(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER); }

    void plugIn() {
        SDL_VirtualJoystickDesc description{};
        description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
        description.naxes = SDL_CONTROLLER_AXIS_MAX;
        description.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
        description.vendor_id = 0x1209;
        description.product_id = 0x0001;
        description.name = "Beach Pad";
        description.userdata = this;
        description.Rumble = [](void* self, Uint16 low, Uint16 high) {
            auto& test = *static_cast<GameControllersTest*>(self);
            ++(low || high ? test.rumbles : test.stops);
            return 0;
        };
        index_ = SDL_JoystickAttachVirtualEx(&description);
        ASSERT_GE(index_, 0) << SDL_GetError();
        joystick_ = SDL_JoystickOpen(index_);
        id = SDL_JoystickInstanceID(joystick_);
    }
    void unplug() {
        if (!joystick_) return;
        SDL_JoystickClose(std::exchange(joystick_, nullptr));
        SDL_JoystickDetachVirtual(index_);
    }
    void TearDown() override {
        unplug();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }

    void pump() {
        SDL_Event event;
        while (SDL_PollEvent(&event)) controllers.handle(&event);
    }
    void push(ControllerEvent::Kind kind, SDL_GameControllerButton button) {
        const bool isDown = kind == ControllerEvent::Kind::pressed;
        SDL_JoystickSetVirtualButton(joystick_, button, isDown ? SDL_PRESSED : SDL_RELEASED);
        pump();
    }
    void steer(double x, double y) {
        SDL_JoystickSetVirtualAxis(joystick_, SDL_CONTROLLER_AXIS_LEFTX, static_cast<Sint16>(x * 32767));
        SDL_JoystickSetVirtualAxis(joystick_, SDL_CONTROLLER_AXIS_LEFTY, static_cast<Sint16>(y * 32767));
        pump();
    }
    void touch(SDL_EventType type, int finger, float x, float y) {
        SDL_Event event{};
        event.ctouchpad = {type, 0, id, 0, finger, x, y, 1.0F};
        controllers.handle(&event);
    }
    std::vector<std::pair<ControllerEvent::Kind, ControllerButton>> buttonEvents() {
        std::vector<std::pair<ControllerEvent::Kind, ControllerButton>> result;
        for (const ControllerEvent& event : controllers.takeEvents())
            result.emplace_back(event.kind, event.button);
        return result;
    }

    double now = 0;
    GameControllers controllers{[this] { return now; }};
    SDL_JoystickID id = -1;
    std::atomic<int> rumbles = 0;  // another thread ends a pulse
    std::atomic<int> stops = 0;

  private:
    SDL_Joystick* joystick_ = nullptr;
    int index_ = -1;
};

constexpr auto pressed = ControllerEvent::Kind::pressed;
constexpr auto released = ControllerEvent::Kind::released;

TEST_F(GameControllersTest, comesAndGoesByName) {
    EXPECT_THAT(controllers.controllers(), IsEmpty());
    plugIn();
    pump();
    const auto events = controllers.takeEvents();
    ASSERT_THAT(events, SizeIs(1)) << "told once";
    EXPECT_EQ(events[0].kind, ControllerEvent::Kind::connected);
    EXPECT_EQ(events[0].name, "Beach Pad");
    EXPECT_THAT(controllers.controllers(), SizeIs(1));

    push(pressed, SDL_CONTROLLER_BUTTON_A);
    steer(1, 0);
    touch(SDL_CONTROLLERTOUCHPADDOWN, 0, 0.5F, 0.5F);
    controllers.takeEvents();
    unplug();
    pump();
    const auto gone = controllers.takeEvents();
    ASSERT_FALSE(gone.empty());
    EXPECT_EQ(gone.front().kind, released) << "what was held is let go";
    EXPECT_EQ(gone.back().kind, ControllerEvent::Kind::disconnected);
    EXPECT_THAT(controllers.contacts(), IsEmpty());
    EXPECT_EQ(controllers.stick().x, 0);
    EXPECT_FALSE(controllers.isAvailable());
}

TEST_F(GameControllersTest, buttonsAreNamedByTheirPlaceAndToldOnce) {
    plugIn();
    pump();
    controllers.takeEvents();
    push(pressed, SDL_CONTROLLER_BUTTON_A);
    pump();
    push(pressed, SDL_CONTROLLER_BUTTON_Y);
    push(released, SDL_CONTROLLER_BUTTON_A);
    SDL_Event click{};
    click.cbutton = {SDL_CONTROLLERBUTTONDOWN, 0, id, SDL_CONTROLLER_BUTTON_TOUCHPAD, SDL_PRESSED, 0, 0};
    controllers.handle(&click);
    push(pressed, SDL_CONTROLLER_BUTTON_RIGHTSHOULDER);
    EXPECT_THAT(buttonEvents(), ElementsAre(std::pair(pressed, ControllerButton::south),
                                            std::pair(pressed, ControllerButton::north),
                                            std::pair(released, ControllerButton::south),
                                            std::pair(pressed, ControllerButton::touchClick)));
}

TEST_F(GameControllersTest, theStickRestsInItsMiddleAndReachesItsRim) {
    plugIn();
    pump();
    steer(0.1, -0.1);
    EXPECT_EQ(controllers.stick().x, 0);
    EXPECT_EQ(controllers.stick().y, 0);
    steer(0, -1);
    EXPECT_NEAR(controllers.stick().y, 1, 1e-3) << "away from the player is up";
    steer(1, 1);
    EXPECT_NEAR(std::hypot(controllers.stick().x, controllers.stick().y), 1, 1e-9);
    steer(0.16, 0);
    EXPECT_LT(controllers.stick().x, 0.02) << "it sets in gently";
}

TEST_F(GameControllersTest, theTouchSurfaceIsATrackpad) {
    plugIn();
    pump();
    touch(SDL_CONTROLLERTOUCHPADDOWN, 0, 0.25F, 0.0F);
    touch(SDL_CONTROLLERTOUCHPADDOWN, 1, 0.75F, 1.0F);
    ASSERT_THAT(controllers.contacts(), SizeIs(2));
    const Contact first = controllers.contacts()[0];
    EXPECT_EQ(first.x, 0.25);
    EXPECT_EQ(first.y, 1) << "the far edge";
    EXPECT_EQ(controllers.contacts()[1].y, 0);
    touch(SDL_CONTROLLERTOUCHPADMOTION, 1, 1.5F, -3.0F);
    EXPECT_EQ(controllers.contacts()[1].x, 1);
    EXPECT_EQ(controllers.contacts()[1].y, 1);
    touch(SDL_CONTROLLERTOUCHPADUP, 0, 0, 0);
    touch(SDL_CONTROLLERTOUCHPADUP, 7, 0, 0);
    touch(SDL_CONTROLLERTOUCHPADMOTION, 2, std::numeric_limits<float>::quiet_NaN(), 0);
    ASSERT_THAT(controllers.contacts(), SizeIs(1));
    touch(SDL_CONTROLLERTOUCHPADDOWN, 0, 0.25F, 0.0F);
    EXPECT_NE(controllers.contacts()[1].id, first.id) << "a new finger";
}

TEST_F(GameControllersTest, pulsesRumbleAndFastTicksStayDistinct) {
    controllers.perform(HapticPattern::generic);  // nobody there: nothing happens
    plugIn();
    pump();
    ASSERT_TRUE(controllers.isAvailable());
    for (int tick = 0; tick < 4; ++tick) {
        now = tick * 0.055;
        controllers.perform(HapticPattern::generic);
        controllers.perform(HapticPattern::generic);
        // Nobody pumps events, but a pulse ends all the same.
        for (int waited = 0; waited < 2000 && stops <= tick; ++waited) SDL_Delay(1);
        EXPECT_EQ(stops, tick + 1);
    }
    EXPECT_EQ(rumbles, 4) << "one order a tick, each ended before the next";
}

TEST(RumblePulsesTest, aPulseThatWouldRunIntoTheLastIsDroppedUnlessStronger) {
    RumblePulses pulses;
    EXPECT_TRUE(pulses.request(HapticPattern::generic, 1.000));
    EXPECT_FALSE(pulses.request(HapticPattern::generic, 1.016));
    EXPECT_FALSE(pulses.request(HapticPattern::alignment, 1.030));
    EXPECT_TRUE(pulses.request(HapticPattern::levelChange, 1.031)) << "a find is never lost in the ticks";
    EXPECT_FALSE(pulses.request(HapticPattern::levelChange, 1.050));
    EXPECT_TRUE(pulses.request(HapticPattern::levelChange, 1.092)) << "thumps are 60 ms apart or more";
    // At any rate of ticks there is stillness between two pulses.
    double end = 0;
    for (int frame = 0; frame < 600; ++frame) {
        const double now = 2 + frame / 60.0;
        if (pulses.request(HapticPattern::generic, now)) {
            EXPECT_GE(now - end, RumblePulses::rest - 1e-9);
            end = now + RumblePulses::pulse(HapticPattern::generic).length;
        }
    }
}

TEST_F(GameControllersTest, ButtonsAreCalledWhatTheControllerInUseCallsThem) {
    EXPECT_EQ(controllers.buttonName(ControllerButton::south), "");
    plugIn();
    pump();
    EXPECT_EQ(controllers.buttonName(ControllerButton::south), "bottom button") << "nobody knows this make";
    EXPECT_EQ(controllerButtonName(SDL_CONTROLLER_TYPE_PS5, ControllerButton::west), "Square");
    EXPECT_EQ(controllerButtonName(SDL_CONTROLLER_TYPE_PS4, ControllerButton::back), "Share");
    EXPECT_EQ(controllerButtonName(SDL_CONTROLLER_TYPE_XBOXONE, ControllerButton::start), "Menu");
    // Position decides what they do, so A and B are swapped here.
    EXPECT_EQ(controllerButtonName(SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_PRO, ControllerButton::south), "B");
    EXPECT_EQ(controllerButtonName(SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_PRO, ControllerButton::start), "Plus");
}

}  // namespace
}  // namespace gull
