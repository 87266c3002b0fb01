#include "Gullwick/Feedback/Feedback.h"

#include "Engine/Sound/SoundStream.h"
#include "Gullwick/Feedback/CombinedHaptics.h"
#include "Gullwick/Feedback/Sounds.h"
#include "Gullwick/Settings/AppSettings.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace gull {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Records its commands and consumes what a device would play.
class Recorder final : public SoundOutput {
  public:
    bool start() override {
        ++starts;
        return works;
    }
    void play(int voice, std::span<const float> samples, float volume) override {
        voices.push_back(voice);
        sounds.push_back(samples);
        volumes.push_back(volume);
    }
    void loop(std::span<const float> samples) override { loops.push_back(samples.size()); }
    void setLoopVolume(float volume) override { loopVolume = volume; }
    void silence() override { ++silences; }

    bool works = true;
    int starts = 0;
    int silences = 0;
    std::vector<int> voices;
    std::vector<std::span<const float>> sounds;
    std::vector<float> volumes;
    std::vector<std::size_t> loops;
    float loopVolume = -1;
};

class PulseLog final : public HapticPerformer {
  public:
    explicit PulseLog(const Clock& clock) : clock_(clock) {}
    void perform(HapticPattern pattern) override { pulses.emplace_back(clock_.now() - 1000, pattern); }
    bool isAvailable() const override { return available; }

    bool available = true;
    std::vector<std::pair<double, HapticPattern>> pulses;

  private:
    const Clock& clock_;
};

class FeedbackTest : public testing::Test {
  protected:
    std::vector<double> pulseTimes() const {
        std::vector<double> times;
        for (const auto& pulse : haptics.pulses) times.push_back(pulse.first);
        return times;
    }

    ManualClock clock;
    MainLoop loop{clock};
    const TemporaryFolder folder;
    AppSettings settings{folder / "settings.json"};
    Recorder output;
    PulseLog haptics{clock};
    Feedback feedback{settings, loop, &output, &haptics};
};

TEST_F(FeedbackTest, voicesTakeTurnsAndAThirteenthSoundTakesTheFirstAgain) {
    for (int i = 0; i < 13; ++i) feedback.play(Sound::beep(i % 2), 0.85F);
    EXPECT_THAT(output.voices, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0));
    EXPECT_EQ(output.volumes.front(), 0.85F);
    EXPECT_EQ(feedback.cachedSounds(), 2U) << "made once each";
    EXPECT_EQ(output.sounds[0].data(), output.sounds[2].data());
    EXPECT_NE(output.sounds[0].data(), output.sounds[1].data());
    const auto expected = Sounds::make(Sound::beep(1));
    EXPECT_TRUE(
        std::equal(expected.begin(), expected.end(), output.sounds[1].begin(), output.sounds[1].end()));
}

TEST_F(FeedbackTest, nothingIsStartedMadeOrPlayedWhileSoundIsOffOrMutedOrMissing) {
    settings.sound = false;
    feedback.play(Sound::found, 1);
    EXPECT_FALSE(feedback.prepareOne());
    settings.sound = true;
    feedback.muted = true;
    feedback.play(Sound::found, 1);
    feedback.haptic(HapticPattern::generic, 0);
    feedback.startSurf();
    EXPECT_EQ(output.starts, 0);
    EXPECT_EQ(output.loopVolume, -1);
    feedback.muted = false;
    output.works = false;
    feedback.play(Sound::found, 1);
    EXPECT_THAT(output.voices, IsEmpty());
    EXPECT_EQ(feedback.nextVoice(), 0);
    EXPECT_EQ(feedback.cachedSounds(), 0U);
    EXPECT_THAT(haptics.pulses, IsEmpty());

    Feedback silent(settings, loop, nullptr, nullptr);
    silent.play(Sound::found, 1);
    silent.haptic(HapticPattern::generic, 0);
    silent.startSurf();
    EXPECT_FALSE(silent.surfStarted());
}

TEST_F(FeedbackTest, surfStartsOnceAndFollowsTheSwitch) {
    output.works = false;
    feedback.startSurf();
    EXPECT_FALSE(feedback.surfStarted());
    EXPECT_EQ(output.loopVolume, 0.32F) << "the volume is set even when nothing can sound";
    output.works = true;
    feedback.startSurf();
    feedback.startSurf();
    EXPECT_THAT(output.loops, ElementsAre(529200U));
    settings.sound = false;
    feedback.applySoundSwitch();
    EXPECT_EQ(output.loopVolume, 0.0F);
    feedback.startSurf();
    EXPECT_EQ(output.loopVolume, 0.0F);
    settings.sound = true;
    feedback.applySoundSwitch();
    EXPECT_EQ(output.loopVolume, 0.32F);
}

TEST_F(FeedbackTest, pulsesKeepTheirLeastGapAndAreDroppedNotDelayed) {
    feedback.haptic(HapticPattern::generic, 0.016);
    clock.moveTo(1000.010);
    feedback.haptic(HapticPattern::alignment, 0.016);
    clock.moveTo(1000.020);
    feedback.haptic(HapticPattern::levelChange, 0.016);
    feedback.haptic(HapticPattern::generic, 0);
    ASSERT_EQ(haptics.pulses.size(), 3U);
    EXPECT_EQ(haptics.pulses[1].second, HapticPattern::levelChange);
    settings.haptics = false;
    clock.moveTo(1001);
    feedback.haptic(HapticPattern::generic, 0);
    EXPECT_EQ(haptics.pulses.size(), 3U);
}

TEST_F(FeedbackTest, thumpsFallAtTheirTimesUnlessCalledOff) {
    feedback.thump(0, 0.1, HapticPattern::generic);
    EXPECT_THAT(haptics.pulses, IsEmpty());
    feedback.thump(4, 0.06, HapticPattern::levelChange);
    loop.turn(clock, 1);
    EXPECT_THAT(pulseTimes(), ElementsAre(0, testing::DoubleNear(0.06, 1e-9), testing::DoubleNear(0.12, 1e-9),
                                          testing::DoubleNear(0.18, 1e-9)));
    feedback.thump(3, 0.12, HapticPattern::levelChange);
    feedback.cancelPending();
    loop.turn(clock, 1);
    EXPECT_EQ(haptics.pulses.size(), 5U);
}

TEST_F(FeedbackTest, idleMomentsMakeEverySoundThatPlayCanAskFor) {
    int made = 0;
    while (feedback.prepareOne()) ++made;
    EXPECT_EQ(made, 32);
    EXPECT_EQ(feedback.cachedSounds(), 32U);
    EXPECT_EQ(output.starts, 0);
    feedback.play(Sound::buzz(9), 1);
    feedback.play(Sound::chest, 1);
    EXPECT_EQ(feedback.cachedSounds(), 32U);
}

TEST_F(FeedbackTest, letsGoOfItsSamplesBeforeTheyDie) {
    { const Feedback brief(settings, loop, &output, nullptr); }
    EXPECT_EQ(output.silences, 1);
}

TEST_F(FeedbackTest, aPairOfTicksIsHeard55MillisecondsApart) {
    // A frame's work, then the device's next buffer of 512 frames at 48 kHz, as in play.
    SoundStream stream(48000, 2);
    std::size_t handedOver = 0;
    std::vector<float> heard;
    const auto renderUntilNow = [&] {
        while (static_cast<double>(heard.size()) / 2 / 48000 < clock.now() - 1000) {
            for (; handedOver < output.sounds.size(); ++handedOver)
                stream.send({SoundStream::Command::Kind::play, output.voices[handedOver],
                             output.volumes[handedOver], output.sounds[handedOver]});
            std::vector<float> buffer(1024);
            stream.render(buffer);
            heard.insert(heard.end(), buffer.begin(), buffer.end());
        }
    };
    const auto turnTo = [&](double seconds) {
        while (clock.now() - 1000 < seconds) {
            loop.turn(clock, 0.001);
            renderUntilNow();
        }
    };
    DelayedWork delayed(loop);
    const auto tick = [&] {
        feedback.play(Sound::buzz(9), 1);
        delayed.after(0.055, [&] { feedback.play(Sound::buzz(9), 0.85F); });
    };
    std::vector<double> onsets;
    for (int pair = 0; pair < 20; ++pair) {
        turnTo(0.1 + pair * 0.3071);
        tick();
    }
    turnTo(7);
    // An onset: 0.02 or louder after 2 ms of less.
    std::size_t quiet = 0;
    for (std::size_t i = 0; i < heard.size(); i += 2) {
        const float size = std::abs(heard[i]);
        if (size >= 0.02F && quiet > 96) onsets.push_back(static_cast<double>(i) / 2 / 48000);
        quiet = size < 0.02F ? quiet + 1 : 0;
    }
    ASSERT_EQ(onsets.size(), 40U);
    const double buffer = 512.0 / 48000;
    for (std::size_t pair = 0; pair < 20; ++pair) {
        EXPECT_NEAR(onsets[2 * pair + 1] - onsets[2 * pair], 0.055, buffer + 0.002) << "pair " << pair;
        EXPECT_NEAR(onsets[2 * pair], 0.1 + static_cast<double>(pair) * 0.3071, buffer + 0.003);
    }
}

TEST(CombinedHapticsTest, theFirstThatCanBeFeltIsUsed) {
    const ManualClock clock;
    PulseLog pad(clock);
    PulseLog rumble(clock);
    CombinedHaptics both({&pad, &rumble});
    both.perform(HapticPattern::generic);
    pad.available = false;
    both.perform(HapticPattern::generic);
    EXPECT_TRUE(both.isAvailable());
    rumble.available = false;
    both.perform(HapticPattern::generic);
    EXPECT_FALSE(both.isAvailable());
    EXPECT_EQ(pad.pulses.size(), 1U);
    EXPECT_EQ(rumble.pulses.size(), 1U);
}

using FeedbackDeathTest = FeedbackTest;

TEST_F(FeedbackDeathTest, refusesANegativeNumberOfPulses) {
    EXPECT_DEATH(feedback.thump(-1, 0.1, HapticPattern::generic), "-1 pulses");
}

}  // namespace
}  // namespace gull
