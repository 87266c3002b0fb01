#include "Engine/Sound/SoundStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <complex>
#include <numbers>
#include <thread>
#include <vector>

namespace gull {
namespace {

using Command = SoundStream::Command;

std::vector<float> tone(double frequency, double rate, std::size_t frames, double gain) {
    std::vector<float> samples(frames);
    for (std::size_t i = 0; i < frames; ++i)
        samples[i] = static_cast<float>(
            gain * std::sin(2 * std::numbers::pi * frequency * static_cast<double>(i) / rate));
    return samples;
}

/// The amplitude of one frequency in the first channel, between two frames.
double amplitude(const std::vector<float>& samples, std::size_t channels, double rate, double frequency,
                 std::size_t from, std::size_t to) {
    std::complex<double> sum = 0;
    double weights = 0;
    for (std::size_t i = from; i < to; ++i) {
        const double x = static_cast<double>(i - from) / static_cast<double>(to - from);
        const double window = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * x);
        sum += window * double{samples[i * channels]} *
               std::polar(1.0, -2 * std::numbers::pi * frequency * static_cast<double>(i) / rate);
        weights += window;
    }
    return 2 * std::abs(sum) / weights;
}

std::vector<float> rendered(SoundStream& stream, std::size_t frames, std::size_t channels,
                            std::size_t buffer = 512) {
    std::vector<float> out(frames * channels, 99.0F);
    for (std::size_t done = 0; done < frames; done += buffer)
        stream.render(std::span(out).subspan(done * channels, std::min(buffer, frames - done) * channels));
    return out;
}

struct Format {
    int rate;
    int channels;
};

class SoundStreamFormatTest : public testing::TestWithParam<Format> {};

TEST_P(SoundStreamFormatTest, keepsPitchAndLevelOnTheFrontChannelsOnly) {
    const auto [rate, channelCount] = GetParam();
    const auto channels = static_cast<std::size_t>(channelCount);
    const auto samples = tone(1585, SoundOutput::sampleRate, 44100, 0.385);
    SoundStream stream(rate, channelCount);
    stream.send({Command::Kind::play, 0, 1, samples});
    const auto frames = static_cast<std::size_t>(rate);
    const auto out = rendered(stream, frames, channels, 441);
    const std::size_t from = frames / 10;
    const std::size_t to = frames * 9 / 10;
    EXPECT_NEAR(amplitude(out, channels, rate, 1585, from, to), 0.385, 0.385 * 0.002);
    EXPECT_LT(amplitude(out, channels, rate, 1585 * 1.01, from, to), 0.001);
    for (std::size_t i = 0; i < frames; ++i)
        for (std::size_t channel = 1; channel < channels; ++channel)
            ASSERT_EQ(out[i * channels + channel], channel == 1 ? out[i * channels] : 0.0F);
}

TEST_P(SoundStreamFormatTest, takesOutWhatTheDeviceCannotHold) {
    const auto [rate, channelCount] = GetParam();
    const auto channels = static_cast<std::size_t>(channelCount);
    const double high = 16665;  // the highest partial of any sound
    const auto samples = tone(high, SoundOutput::sampleRate, 44100, 0.5);
    SoundStream stream(rate, channelCount);
    stream.send({Command::Kind::play, 0, 1, samples});
    const auto frames = static_cast<std::size_t>(rate);
    const auto out = rendered(stream, frames, channels);
    double loudest = 0;
    for (std::size_t i = frames / 10; i < frames * 9 / 10; ++i)
        loudest = std::max(loudest, std::abs(double{out[i * channels]}));
    if (high < rate / 2.0)
        EXPECT_NEAR(amplitude(out, channels, rate, high, frames / 10, frames * 9 / 10), 0.5, 0.005);
    else
        EXPECT_LT(loudest, 0.5 * 0.001) << "it would come back as another tone";
}

INSTANTIATE_TEST_SUITE_P(formats, SoundStreamFormatTest,
                         testing::Values(Format{44100, 2}, Format{48000, 2}, Format{8000, 1},
                                         Format{96000, 8}, Format{22050, 2}, Format{44099, 1},
                                         Format{192000, 6}),
                         [](const auto& format) {
                             return std::to_string(format.param.rate) + "Hz" +
                                    std::to_string(format.param.channels);
                         });

TEST(SoundStreamTest, equalRatesPassThroughToTheLastBit) {
    const auto samples = tone(700, 44100, 1000, 0.7);
    SoundStream stream(44100, 2);
    stream.send({Command::Kind::play, 4, 1, samples});
    const auto out = rendered(stream, 1200, 2, 100);
    for (std::size_t i = 0; i < 1200; ++i) ASSERT_EQ(out[2 * i], i < 1000 ? samples[i] : 0.0F);
}

TEST(SoundStreamTest, everySampleOfAnHourComesOutInTime) {
    const Resampler once(44100, 48000);
    EXPECT_EQ(once.inputsFor(48000U * 3600U), 44100U * 3600U);
    Resampler steps(44100, 48000);
    std::size_t taken = 0;
    std::vector<float> out(97);
    for (int i = 0; i < 4800; ++i) {
        const std::vector<float> input(steps.inputsFor(out.size()), 1.0F);
        steps.resample(input, out);
        taken += input.size();
    }
    EXPECT_EQ(taken, 97U * 4410U);
    for (const float sample : out) EXPECT_NEAR(sample, 1.0F, 1e-6F) << "a constant stays as it is";
}

TEST(SoundStreamTest, twelveLoudVoicesBendInsteadOfClipping) {
    const auto samples = tone(523.25, SoundOutput::sampleRate, 44100, 0.5);
    SoundStream stream(48000, 2);
    for (int voice = 0; voice < SoundOutput::voiceCount; ++voice)
        stream.send({Command::Kind::play, voice, 1, samples});
    float peak = 0;
    for (const float sample : rendered(stream, 20000, 2)) peak = std::max(peak, std::abs(sample));
    EXPECT_LE(peak, 1.0F);
    EXPECT_GT(peak, 0.98F);
}

TEST(SoundStreamTest, commandsBeyondTheQueueAreRefusedAndTheRestObeyed) {
    const std::vector<float> samples(10, 0.25F);
    SoundStream stream(44100, 1);
    int taken = 0;
    while (stream.send({Command::Kind::play, taken % 12, 1, samples})) ++taken;
    EXPECT_EQ(taken, 256);
    EXPECT_GT(std::abs(rendered(stream, 5, 1).front()), 0.9F);
    EXPECT_TRUE(stream.send({Command::Kind::play, 0, 1, samples}));
}

TEST(SoundStreamTest, fadesOutBeforeItIsClosedAndCanGoOnAfterwards) {
    const auto samples = tone(300, 44100, 44100, 0.5);
    SoundStream stream(44100, 1);
    stream.send({Command::Kind::play, 0, 1, samples});
    auto out = rendered(stream, 37, 1);
    stream.send({Command::Kind::fadeOut, 0, 0, {}});
    EXPECT_FALSE(stream.hasFadedOut());
    const auto rest = rendered(stream, 600, 1);
    out.insert(out.end(), rest.begin(), rest.end());
    EXPECT_TRUE(stream.hasFadedOut());
    EXPECT_EQ(rest.back(), 0.0F);
    for (std::size_t i = 1; i < out.size(); ++i)
        ASSERT_LE(std::abs(out[i] - out[i - 1]), 0.5F * 2 * 3.15F * 300 / 44100 + 0.5F / 441);
    stream.silence();
    stream.send({Command::Kind::play, 0, 1, samples});
    EXPECT_EQ(rendered(stream, 50, 1)[40], samples[40]);
}

// Proves little by itself: it is for the "thread" preset.
TEST(SoundStreamTest, oneThreadSendsWhileAnotherRenders) {
    const auto samples = tone(300, 44100, 2000, 0.5);
    SoundStream stream(48000, 2);
    std::atomic<bool> isOver = false;
    std::thread device([&] {
        std::vector<float> out(128);
        while (!isOver) {
            stream.render(out);
            for (const float sample : out) ASSERT_LE(std::abs(sample), 1.0F);
        }
    });
    for (int i = 0; i < 3000; ++i) {
        const auto kind = i % 7 == 0   ? Command::Kind::loop
                          : i % 5 == 0 ? Command::Kind::loopVolume
                                       : Command::Kind::play;
        while (!stream.send({kind, i % SoundOutput::voiceCount, 0.5F, samples})) std::this_thread::yield();
    }
    while (!stream.send({Command::Kind::fadeOut, 0, 0, {}})) std::this_thread::yield();
    while (!stream.hasFadedOut()) std::this_thread::yield();
    isOver = true;
    device.join();
    stream.silence();
}

}  // namespace
}  // namespace gull
