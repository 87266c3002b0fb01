#include "Engine/Sound/SoundStream.h"
#include "GameHarness.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace gull {
namespace {

/// Plays like a device, one buffer of 512 frames at 48 kHz after the other, and records the sound. The surf
/// is left out.
class Ears final : public SoundOutput {
  public:
    static constexpr double rate = 48000;
    static constexpr std::size_t bufferFrames = 512;

    bool start() override { return true; }
    void play(int voice, std::span<const float> samples, float volume) override {
        stream_.send({SoundStream::Command::Kind::play, voice, volume, samples});
    }
    void loop(std::span<const float>) override {}
    void setLoopVolume(float) override {}
    void silence() override { stream_.silence(); }

    double heardSeconds() const { return static_cast<double>(heard_.size()) / rate; }
    void hear() {
        std::vector<float> buffer(bufferFrames);
        stream_.render(buffer);
        heard_.insert(heard_.end(), buffer.begin(), buffer.end());
    }
    /// The first time after `from` seconds at which a sound begins after at least 2 ms of quiet.
    std::vector<double> onsets(double from) const {
        constexpr float quietBelow = 0.02F;
        constexpr int quietFrames = 96;
        std::vector<double> result;
        int quiet = 0;
        for (auto i = static_cast<std::size_t>(from * rate); i < heard_.size(); ++i) {
            const bool isQuiet = std::abs(heard_[i]) < quietBelow;
            if (!isQuiet && quiet > quietFrames) result.push_back(static_cast<double>(i) / rate);
            quiet = isQuiet ? quiet + 1 : 0;
        }
        return result;
    }

  private:
    SoundStream stream_{static_cast<int>(rate), 1};
    std::vector<float> heard_;
};

/// A game with every sample recorded.
class HeardTicksTest : public testing::Test {
  protected:
    void play(int beach) {
        game.beginBeach(beach, false, 7);
        turn(0.1);
        ASSERT_EQ(game.phase, GameController::Phase::playing);
    }
    void turn(double seconds) {
        const double end = clock.now() + seconds;
        while (clock.now() < end) {
            loop.turn(clock, Ears::bufferFrames / Ears::rate);
            ears.hear();
        }
    }
    /// Times between the onsets heard while the coil rests at `at`, of which the first half second (the
    /// lock's own sound) is left out.
    std::vector<double> gapsAt(const PlotPoint& at) {
        game.setCoil(at);
        turn(0.5);
        const double from = ears.heardSeconds();
        turn(4);
        const auto onsets = ears.onsets(from);
        std::vector<double> gaps;
        for (std::size_t i = 1; i < onsets.size(); ++i) gaps.push_back(onsets[i] - onsets[i - 1]);
        return gaps;
    }
    /// Places around the items of a kind where the detector hears an item of that kind.
    std::vector<PlotPoint> placesOver(bool treasure) const {
        std::vector<PlotPoint> places;
        for (const BuriedItem& item : game.hunt().items()) {
            for (const double aside : {0.0, 0.04, 0.08}) {
                const PlotPoint at{item.at.x + aside, item.at.y};
                const Reading reading = game.hunt().reading(at);
                if (reading.item && reading.isTreasure() == treasure && reading.strength > 0.1)
                    places.push_back(at);
            }
        }
        return places;
    }

    static constexpr double frame = GameController::frameInterval;
    static constexpr double buffer = Ears::bufferFrames / Ears::rate;
    /// How much the time at which a sound passes the threshold varies with its level.
    static constexpr double slack = 0.0015;

    TemporaryFolder folder;
    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{folder / "settings.json"};
    Ears ears;
    Feedback feedback{settings, loop, &ears, nullptr};
    GameController game{loop, settings, feedback, folder / "progress.json", false, 1};
};

TEST_F(HeardTicksTest, treasureTicksAtTheIntervalOfItsSignal) {
    play(2);
    const auto places = placesOver(true);
    ASSERT_GE(places.size(), 4U);
    for (const PlotPoint& at : places) {
        const auto gaps = gapsAt(at);
        const double expected = PulseClock::interval(game.reading().strength, true);
        ASSERT_GE(gaps.size(), 3U);
        for (const double gap : gaps) {
            EXPECT_GE(gap, expected - buffer - slack) << "strength " << game.reading().strength;
            EXPECT_LE(gap, expected + frame + buffer + slack) << "strength " << game.reading().strength;
        }
    }
}

TEST_F(HeardTicksTest, junkTicksInPairs) {
    play(2);
    const auto places = placesOver(false);
    ASSERT_GE(places.size(), 2U);
    for (const PlotPoint& at : places) {
        const auto gaps = gapsAt(at);
        ASSERT_GE(gaps.size(), 4U);
        std::size_t pairs = 0;
        for (std::size_t i = 0; i < gaps.size(); ++i) {
            const bool isPair = gaps[i] < 0.1;
            pairs += isPair ? 1 : 0;
            if (isPair) {
                EXPECT_NEAR(gaps[i], PulseClock::pairGap, buffer + slack);
            }
            if (i > 0) {
                EXPECT_NE(isPair, gaps[i - 1] < 0.1) << "a pair, a pause, a pair";
            }
        }
        EXPECT_GE(pairs, gaps.size() / 2);
    }
}

}  // namespace
}  // namespace gull
