#include "Engine/Sound/AudioDevice.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace gull {
namespace {

/// Selects SDL's audio driver for the length of a test.
class Driver {
  public:
    explicit Driver(const char* name) { setenv("SDL_AUDIODRIVER", name, 1); }
    ~Driver() {
        unsetenv("SDL_AUDIODRIVER");
        unsetenv("SDL_DISKAUDIOFILE");
    }
};

TEST(AudioDeviceTest, capturesWhatIsHeard) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "heard.raw";
    const Driver driver("disk");
    setenv("SDL_DISKAUDIOFILE", file.c_str(), 1);
    const std::vector<float> steady(44100, 0.25F);
    {
        AudioDevice device;
        EXPECT_FALSE(device.describe().isOpen) << "nothing is opened before it is needed";
        ASSERT_TRUE(device.start());
        device.await(10);
        device.poll(0);
        device.loop(steady);
        device.setLoopVolume(1);
        // Half a second of it.
        for (int i = 0;
             i < 10000 && (!std::filesystem::exists(file) || std::filesystem::file_size(file) < 200000); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        device.poll(1);
        const auto found = device.describe();
        EXPECT_TRUE(found.isOpen);
        EXPECT_EQ(found.driver, "disk");
        EXPECT_EQ(found.rate, 48000);
        EXPECT_EQ(found.channels, 2);
        EXPECT_EQ(found.bufferFrames, 512);
    }
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), {});
    std::vector<float> heard(bytes.size() / sizeof(float));
    std::memcpy(heard.data(), bytes.data(), heard.size() * sizeof(float));
    ASSERT_GT(heard.size(), 2 * 48000 * 0.15);
    float peak = 0;
    float step = 0;
    for (std::size_t i = 2; i < heard.size(); ++i) {
        peak = std::max(peak, std::abs(heard[i]));
        step = std::max(step, std::abs(heard[i] - heard[i - 2]));
    }
    EXPECT_NEAR(peak, 0.25F, 0.001F);
    EXPECT_LT(step, 0.001F) << "it must start and end without a click";
    EXPECT_EQ(heard.back(), 0.0F);
}

/// A sound system that does as a test tells it.
struct FakeSystem final : AudioSystem {
    /// The state in the test's hand; it outlives the system, which may be left behind.
    struct Strings {
        std::atomic<bool> isThere = true;     ///< a device can be opened
        std::atomic<bool> isLost = false;     ///< the open one was taken away
        std::atomic<bool> isHanging = false;  ///< nothing comes back
        std::atomic<int> attempts = 0;
        std::atomic<int> closings = 0;
        std::mutex mutex;
        Fill fill;  ///< of the open device

        /// What the device's thread would play next.
        std::vector<float> heard(std::size_t frames) {
            std::vector<float> out(frames, -1);
            const std::lock_guard lock(mutex);
            if (fill) fill(out);
            return out;
        }
        void hang() const {
            while (isHanging) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };

    explicit FakeSystem(std::shared_ptr<Strings> pulled) : strings(std::move(pulled)) {}
    bool open(const std::function<Fill(const Format&)>& begin, std::string& problem) override {
        ++strings->attempts;
        strings->hang();
        if (!strings->isThere) {
            problem = "nobody is there";
            return false;
        }
        strings->isLost = false;
        const std::lock_guard lock(strings->mutex);
        strings->fill = begin({44100, 1, 64});
        return true;
    }
    void close() override {
        strings->hang();
        ++strings->closings;
        const std::lock_guard lock(strings->mutex);
        strings->fill = {};
    }
    bool isLost() override { return strings->isLost; }
    std::string driver() override { return "fake"; }
    std::vector<std::string> devices() override { return {"a fake"}; }

    std::shared_ptr<Strings> strings;
};

struct FakeAudio : testing::Test {
    std::shared_ptr<FakeSystem::Strings> system = std::make_shared<FakeSystem::Strings>();
    static constexpr AudioDevice::Timing quick{0.002, 0.005, 3, 0.05};
    std::optional<AudioDevice> device{std::in_place, std::make_unique<FakeSystem>(system), quick};
    const std::vector<float> steady = std::vector<float>(1000, 0.25F);
    double now = 0;

    /// Polls until `done` or for ten seconds.
    bool poll(const std::function<bool()>& done) {
        for (int i = 0; i < 10000 && !done(); ++i) {
            device->poll(now += 0.001);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return done();
    }
    bool isOpen() { return device->describe().isOpen; }
    bool hearsTheLoop() {
        device->poll(now += 0.001);
        const std::vector<float> heard = system->heard(2000);
        return std::abs(heard.back() - 0.25F) < 0.01F;
    }
    void startTheLoop() {
        EXPECT_TRUE(device->start());
        device->loop(steady);
        device->setLoopVolume(1);
        ASSERT_TRUE(poll([&] { return hearsTheLoop(); }));
    }
};

TEST_F(FakeAudio, WithoutADeviceItSaysSoOnceAndTakesTheFirstThatAppears) {
    system->isThere = false;
    testing::internal::CaptureStderr();
    device->start();
    device->loop(steady);
    device->setLoopVolume(1);
    device->play(0, steady, 1);
    EXPECT_TRUE(poll([&] { return system->attempts > 5; }));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(device->describe().problem, "nobody is there");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, "gullwick: no sound: nobody is there. Playing on in silence.\n");

    system->isThere = true;
    EXPECT_TRUE(poll([&] { return hearsTheLoop(); }));
    EXPECT_TRUE(device->describe().problem.empty());
}

TEST_F(FakeAudio, ALostDeviceIsClosedAndTheLoopGoesOnOnTheNext) {
    startTheLoop();
    system->isThere = false;
    system->isLost = true;
    EXPECT_TRUE(poll([&] { return system->attempts > 4; }));
    EXPECT_EQ(system->closings, 1);
    EXPECT_FALSE(isOpen());
    system->isThere = true;
    EXPECT_TRUE(poll([&] { return hearsTheLoop(); }));
}

TEST_F(FakeAudio, AHangingSystemHoldsUpNeitherStartNorEnd) {
    system->isHanging = true;
    testing::internal::CaptureStderr();
    EXPECT_TRUE(device->start());
    device->loop(steady);
    device->setLoopVolume(1);
    device->play(3, steady, 1);
    for (int frame = 0; frame < 600; ++frame) device->poll(now += 1 / 60.0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "gullwick: no sound: the sound system does not answer. Playing on in silence.\n");
    EXPECT_FALSE(isOpen());
    system->isHanging = false;
    EXPECT_TRUE(poll([&] { return hearsTheLoop(); })) << "it is heard once the system goes on";

    system->isHanging = true;
    device.reset();  // returns, although the system hangs until further down
    EXPECT_EQ(system->heard(100), std::vector<float>(100, 0)) << "what it played is let go of";
    system->isHanging = false;
    for (int i = 0; i < 5000 && system->closings == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(system->closings, 1) << "the one left behind tidies up when it can";
}

TEST_F(FakeAudio, WhatWasPlayedIntoAHangingDeviceIsNotHeardAfterwards) {
    startTheLoop();
    device->setLoopVolume(0);
    system->heard(4000);
    std::this_thread::sleep_for(std::chrono::milliseconds(400));  // nobody asks for samples
    const std::vector<float> shot(4000, 0.5F);
    for (int voice = 0; voice < 12; ++voice) device->play(voice, shot, 1);
    EXPECT_EQ(system->heard(1000).back(), 0.0F);
    device->play(0, shot, 1);
    EXPECT_NEAR(system->heard(1000).back(), 0.5F, 0.01F);
}

}  // namespace
}  // namespace gull
