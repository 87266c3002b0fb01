#include "Engine/Sound/AudioDevice.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>
#include <vector>

namespace gull {
namespace {

/// Which way SDL is told to be heard, for the length of a test.
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
        device.loop(steady);
        device.setLoopVolume(1);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
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

TEST(AudioDeviceTest, withoutADeviceItSaysSoOnceAndStaysSilent) {
    const Driver driver("nosuchdriver");
    AudioDevice device;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(device.start());
    EXPECT_FALSE(device.start());
    const std::vector<float> samples(10, 0.1F);
    device.play(0, samples, 1);
    device.loop(samples);
    device.setLoopVolume(0.3F);
    for (int frame = 0; frame < 6000; ++frame) device.poll(frame / 60.0);
    device.silence();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said.find("no sound"), said.rfind("no sound"));
    EXPECT_NE(said.find("no sound"), std::string::npos);
    EXPECT_FALSE(device.describe().problem.empty());
}

TEST(AudioDeviceTest, aDeviceThatAppearsLaterIsTaken) {
    AudioDevice device;
    const std::vector<float> samples(10, 0.1F);
    {
        const Driver none("nosuchdriver");
        testing::internal::CaptureStderr();
        EXPECT_FALSE(device.start());
        device.poll(0);
        testing::internal::GetCapturedStderr();
    }
    const Driver driver("dummy");
    device.poll(0.5);
    EXPECT_FALSE(device.start()) << "attempts keep their distance";
    device.poll(40);
    EXPECT_TRUE(device.start());
}

}  // namespace
}  // namespace gull
