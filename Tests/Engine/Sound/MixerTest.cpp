#include "Engine/Sound/Mixer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace gull {
namespace {

std::vector<float> tone(double frequency, std::size_t frames, double gain = 1) {
    std::vector<float> samples(frames);
    for (std::size_t i = 0; i < frames; ++i)
        samples[i] = static_cast<float>(gain * std::sin(2 * std::numbers::pi * frequency *
                                                        static_cast<double>(i) / SoundOutput::sampleRate));
    return samples;
}

std::vector<float> mixed(Mixer& mixer, std::size_t frames) {
    std::vector<float> out(frames, 99.0F);
    mixer.mix(out);
    return out;
}

float largestStep(const std::vector<float>& samples) {
    float step = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        step = std::max(step, std::abs(samples[i] - samples[i - 1]));
    return step;
}

TEST(MixerTest, sumsVoicesExactlyHoweverTheFramesAreCut) {
    const auto low = tone(440, 300, 0.5);
    const auto high = tone(1585, 200, 0.25);
    Mixer mixer;
    mixer.play(0, low, 1);
    auto out = mixed(mixer, 50);
    mixer.play(11, high, 0.85F);
    for (const std::size_t frames : {1U, 7U, 92U, 200U}) {
        const auto more = mixed(mixer, frames);
        out.insert(out.end(), more.begin(), more.end());
    }
    ASSERT_EQ(out.size(), 350U);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const float first = i < 300 ? low[i] : 0;
        const float second = i >= 50 && i < 250 ? high[i - 50] * 0.85F : 0;
        ASSERT_EQ(out[i], first + second) << "frame " << i;
    }
}

TEST(MixerTest, cuttingOffASoundFadesItBesideTheNewOne) {
    const auto old = tone(200, 44100, 0.5);
    const auto fresh = tone(900, 4410, 0.1);
    Mixer mixer;
    mixer.play(3, old, 1);
    auto out = mixed(mixer, 55 + 221 * 10);  // at a crest of the old one: the worst moment
    const float before = out.back();
    ASSERT_GT(std::abs(before), 0.45F);
    mixer.play(3, fresh, 1);
    const auto after = mixed(mixer, 1000);
    out.insert(out.end(), after.begin(), after.end());
    // No step steeper than the two sounds together make by themselves.
    EXPECT_LE(largestStep(out), largestStep(old) + largestStep(fresh) + 0.5F / Mixer::fadeFrames);
    for (std::size_t i = Mixer::fadeFrames; i < after.size(); ++i)
        ASSERT_EQ(after[i], fresh[i]) << "the old one must be gone after the fade, frame " << i;
}

TEST(MixerTest, manyInterruptionsAtOnceStayFreeOfClicks) {
    const auto old = tone(150, 44100, 0.05);
    const auto quiet = std::vector<float>(10, 0.0F);
    Mixer mixer;
    for (int voice = 0; voice < SoundOutput::voiceCount; ++voice) mixer.play(voice, old, 1);
    auto out = mixed(mixer, 73);
    for (int voice = 0; voice < SoundOutput::voiceCount; ++voice) mixer.play(voice, quiet, 1);
    const auto after = mixed(mixer, 400);
    out.insert(out.end(), after.begin(), after.end());
    EXPECT_LE(largestStep(out), 12 * (largestStep(old) + 0.05F / Mixer::fadeFrames));
    EXPECT_EQ(after.back(), 0.0F);
}

TEST(MixerTest, loopRepeatsWithoutAGapAndItsVolumeGlides) {
    std::vector<float> hill(100);
    for (std::size_t i = 0; i < hill.size(); ++i)
        hill[i] = static_cast<float>(std::min(i + 1, hill.size() - i)) / 50;
    Mixer mixer;
    mixer.loop(hill);
    for (const float sample : mixed(mixer, 150)) ASSERT_EQ(sample, 0.0F) << "silent until a volume is set";
    mixer.setLoopVolume(0.5F);
    const auto rising = mixed(mixer, Mixer::glideFrames);
    EXPECT_LE(rising.front(), 1.01F / Mixer::glideFrames);
    const auto steady = mixed(mixer, 300);
    for (std::size_t i = 0; i < steady.size(); ++i)
        ASSERT_FLOAT_EQ(steady[i], hill[(150 + Mixer::glideFrames + i) % 100] * 0.5F);
    mixer.setLoopVolume(0);
    mixed(mixer, Mixer::glideFrames);
    EXPECT_EQ(mixed(mixer, 10).back(), 0.0F);
}

TEST(MixerTest, aLoopThatEndsAtAnotherLevelThanItBeginsJoinsWithoutAClick) {
    const auto rising = [] {
        std::vector<float> samples(4410);
        for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<float>(i) / 44100;
        return samples;
    }();
    Mixer mixer;
    mixer.loop(rising);
    mixer.setLoopVolume(1);
    mixed(mixer, 4400);
    const auto joint = mixed(mixer, 1000);
    EXPECT_LE(largestStep(joint), 0.1F / Mixer::fadeFrames + 1.0F / 44100);
    for (std::size_t i = 10 + Mixer::fadeFrames; i < joint.size(); ++i)
        ASSERT_EQ(joint[i], rising[i - 10]) << "then it is as it was";
}

TEST(MixerTest, softeningLeavesOrdinaryLevelsAloneAndNeverReachesOne) {
    for (const float level : {0.0F, 0.3F, -0.9F, 0.9F}) EXPECT_EQ(Mixer::soften(level), level);
    float last = 0.9F;
    for (float level = 0.9F; level < 12; level += 0.001F) {
        const float soft = Mixer::soften(level);
        ASSERT_LE(soft, 1.0F);
        ASSERT_GE(soft, last) << "louder in must never be quieter out, at " << level;
        ASSERT_LE(soft - last, 0.00101F) << "no corner, at " << level;
        ASSERT_EQ(Mixer::soften(-level), -soft);
        last = soft;
    }
}

TEST(MixerDeathTest, refusesAVoiceThatIsNotThere) {
    Mixer mixer;
    EXPECT_DEATH(mixer.play(12, {}, 1), "voice 12 of 12");
    EXPECT_DEATH(mixer.play(-1, {}, 1), "voice -1");
}

}  // namespace
}  // namespace gull
