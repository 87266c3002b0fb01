#include "Gullwick/App/SilenceHint.h"

#include "Gullwick/Game/GameHarness.h"

namespace gull {
namespace {

/// A loudspeaker and something that pulses, when they are plugged in.
struct Plugs final : SoundOutput, HapticPerformer {
    bool hasSound = false;
    bool hasPulses = false;

    bool start() override { return hasSound; }
    void play(int, std::span<const float>, float) override {}
    void loop(std::span<const float>) override {}
    void setLoopVolume(float) override {}
    void silence() override {}
    void perform(HapticPattern) override {}
    bool isAvailable() const override { return hasPulses; }
};

struct SilenceHintTest : GameHarness {
    Plugs plugs;
    Feedback quiet{settings, loop, &plugs, &plugs};
    SilenceHint hint{game, quiet, settings};

    /// The hints given on a beach in these seconds of play.
    std::string told(double seconds = 12) {
        play(2);
        std::string all;
        for (double t = 0; t < seconds; t += 0.1) {
            turn(0.1);
            hint.poll(clock.now());
            if (toast().find("Show Ticks") != std::string::npos && all != toast()) all += toast();
        }
        return all;
    }
};

TEST_F(SilenceHintTest, whoHearsAndFeelsNothingIsToldOnceWhatHelps) {
    EXPECT_EQ(told(), "No sound can come out here — Options > Show Ticks draws every tick");
    EXPECT_EQ(told(), "") << "once";
    settings.sound = false;
    EXPECT_EQ(told(), "The sound is off — Options > Show Ticks draws every tick");
    EXPECT_EQ(told(), "");
}

TEST_F(SilenceHintTest, whoHearsOrFeelsOrSeesTheTicksIsLeftAlone) {
    plugs.hasSound = true;
    EXPECT_EQ(told(), "");
    plugs.hasSound = false;
    plugs.hasPulses = true;
    EXPECT_EQ(told(), "");
    settings.haptics = false;
    settings.showTicks = true;
    EXPECT_EQ(told(), "");
    quiet.muted = true;
    settings.showTicks = false;
    EXPECT_EQ(told(), "") << "a measurement";
}

TEST_F(SilenceHintTest, aDeviceThatComesUpLateIsWaitedFor) {
    play(2);
    for (double t = 0; t < 6; t += 0.1) {
        plugs.hasSound = t > 0.7;
        turn(0.1);
        hint.poll(clock.now());
        ASSERT_EQ(toast().find("Show Ticks"), std::string::npos) << t;
    }
}

}  // namespace
}  // namespace gull
