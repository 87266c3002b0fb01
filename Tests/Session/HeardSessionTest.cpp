// The sound of the real program while it is played, captured from its audio device.

#include "GullCore/Detector.h"
#include "Session/Desktop.h"
#include "Session/GameTrace.h"
#include "Session/PlayersMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

namespace gull::session {
namespace {

constexpr double captureRate = 48000;  ///< stereo floats, as the program asks its device for
constexpr double frame = 1.0 / 60;
constexpr double buffer = 512 / captureRate;
constexpr double analysis = 0.004;  ///< two steps of levels()
constexpr double mostOfThem = 0.7;  ///< a frame may delay a tick
/// The rhythm is judged by a capture during which the machine kept up; a machine that is too busy in all of
/// these has only its ticks counted.
constexpr int attempts = 4;

/// The left channel of a raw capture.
std::vector<float> samples(const std::filesystem::path& file) {
    const std::string bytes = contents(file);
    std::vector<float> result(bytes.size() / (2 * sizeof(float)));
    for (std::size_t i = 0; i < result.size(); ++i) {
        std::copy_n(bytes.data() + i * 2 * sizeof(float), sizeof(float), reinterpret_cast<char*>(&result[i]));
    }
    return result;
}

/// The strength of `frequency` in the 8 ms around each 2 ms step (Goertzel's algorithm).
std::vector<double> levels(const std::vector<float>& sound, double frequency) {
    constexpr std::size_t window = 384, step = 96;
    const double turn = 2 * std::cos(2 * std::numbers::pi * frequency / captureRate);
    std::vector<double> result;
    for (std::size_t first = 0; first + window <= sound.size(); first += step) {
        double s1 = 0, s2 = 0;
        for (std::size_t i = 0; i < window; ++i) {
            const double s0 = static_cast<double>(sound[first + i]) + turn * s1 - s2;
            s2 = s1;
            s1 = s0;
        }
        result.push_back(std::sqrt(std::max(0.0, s1 * s1 + s2 * s2 - turn * s1 * s2)) * 2 / window);
    }
    return result;
}

/// The times, in seconds, at which `frequency` rises above half of its maximum.
std::vector<double> onsets(const std::vector<float>& sound, double frequency) {
    const std::vector<double> level = levels(sound, frequency);
    const double bound = 0.5 * *std::max_element(level.begin(), level.end());
    std::vector<double> result;
    for (std::size_t i = 1; i < level.size(); ++i) {
        const double time = static_cast<double>(i) * 0.002;
        const bool rises = level[i] >= bound && level[i - 1] < bound;
        if (rises && (result.empty() || time - result.back() > 0.03)) result.push_back(time);
    }
    return result;
}

std::vector<double> gaps(const std::vector<double>& times) {
    std::vector<double> result;
    for (std::size_t i = 1; i < times.size(); ++i) result.push_back(times[i] - times[i - 1]);
    return result;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

double shareNear(const std::vector<double>& values, double wanted, double tolerance) {
    const auto count = std::count_if(values.begin(), values.end(),
                                     [&](double value) { return std::abs(value - wanted) <= tolerance; });
    return values.empty() ? 0 : static_cast<double>(count) / static_cast<double>(values.size());
}

class HeardSession : public testing::Test {
  protected:
    static constexpr double seconds = 5;

    struct Capture {
        std::vector<float> sound;
        double pace = 1;   ///< of the device: seconds of sound a second
        double ticks = 0;  ///< that the game says it has given
        bool keptUp = false;
    };

    /// Some seconds of a game in which the coil rests at `point`. The window is half its size, so that a
    /// software rasteriser comes nearer to sixty frames a second.
    Capture listen(const PlayersMap& map, const PlotPoint& point) {
        const auto file = home_.path() / "capture.raw", traceFile = home_.path() / "trace";
        std::filesystem::remove(traceFile);
        Environment environment = desktop_.environment(home_.path());
        environment["SDL_AUDIODRIVER"] = "disk";
        environment["SDL_DISKAUDIOFILE"] = file.string();
        environment["GULLWICK_SCALE"] = "0.5";
        environment["GULLWICK_TRACE"] = traceFile.string();
        const GameTrace trace(traceFile);
        Process game(GULLWICK_BINARY, {"--seed", "7"}, environment, home_.path());
        EXPECT_TRUE(desktop_.waitForWindow("Gullwick", patience)) << game.errors();
        EXPECT_TRUE(trace.wait("phase", "playing") && trace.wait("meant", "1"));
        const glm::ivec2 at = map.mouse(point) / 2;
        desktop_.moveMouse(at.x, at.y);
        EXPECT_TRUE(trace.waitForCoil(point.x, point.y));
        EXPECT_TRUE(trace.waitForPictures(60));  // the coil has come to rest, and the picture too
        const auto bytesBefore = std::filesystem::file_size(file);
        const double ticksBefore = trace.number("ticks");
        const std::size_t framesBefore = trace.frames().size();
        pause(seconds);
        const auto bytesAfter = std::filesystem::file_size(file);
        const double ticks = trace.number("ticks") - ticksBefore;
        const std::size_t frames = trace.frames().size() - framesBefore;
        game.terminate();
        game.wait(patience);
        const std::vector<float> all = samples(file);
        const auto index = [](std::uintmax_t bytes) { return static_cast<std::ptrdiff_t>(bytes / 8); };
        return {
            {all.begin() + index(bytesBefore), all.begin() + index(bytesAfter)},
            // SDL's disk device only nearly keeps time: what it wrote in these seconds is stretched to them.
            static_cast<double>(bytesAfter - bytesBefore) / 8 / captureRate / seconds,
            ticks,
            static_cast<double>(frames) > 45 * seconds};
    }

    Desktop desktop_{1280, 860};
    ScratchFolder home_;
};

TEST_F(HeardSession, TreasureTicksComeByTheRule) {
    const PlayersMap map;
    const BuriedItem item = map.treasures().front();
    const double aside = item.at.x < 0.5 ? 0.05 : -0.05;
    const PlotPoint spot{item.at.x + aside, item.at.y};
    const Reading reading = map.hunt().reading(spot);
    ASSERT_TRUE(reading.isTreasure());

    const int level = std::min(static_cast<int>(reading.strength * 10), 9);
    const double rule = PulseClock::interval(reading.strength, true);
    std::vector<double> between;
    Capture capture;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        capture = listen(map, spot);
        between = gaps(onsets(capture.sound, 640 + 105.0 * level));
        for (double& gap : between) gap /= capture.pace;
        if (capture.keptUp && shareNear(between, rule, frame + buffer + analysis) >= mostOfThem) break;
    }
    ASSERT_GE(between.size(), 10U);
    EXPECT_NEAR(static_cast<double>(between.size()) + 1, capture.ticks, std::max(2.0, 0.15 * capture.ticks));
    if (!capture.keptUp) return;
    EXPECT_NEAR(median(between), rule, frame + buffer);
    EXPECT_GE(shareNear(between, rule, frame + buffer + analysis), mostOfThem);
}

TEST_F(HeardSession, JunkTicksInPairs) {
    const auto progress = home_.path() / "data" / "Gullwick" / "progress.json";
    std::filesystem::create_directories(progress.parent_path());
    std::ofstream(progress) << R"({"stars":{"1":3},"bestHaul":{"1":220}})";
    const PlayersMap map(progress);
    const PlotPoint spot = map.junk().front().at;
    const Reading reading = map.hunt().reading(spot);
    ASSERT_TRUE(reading.item && !reading.isTreasure());

    std::vector<double> within, apart;
    Capture capture;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        within.clear();
        apart.clear();
        capture = listen(map, spot);
        // The third harmonic of the buzz: the surf has little there.
        for (const double gap : gaps(onsets(capture.sound, 3 * 165.0))) {
            (gap < 0.085 ? within : apart).push_back(gap / capture.pace);
        }
        if (capture.keptUp && shareNear(within, PulseClock::pairGap, 0.02) >= mostOfThem) break;
    }
    ASSERT_GE(within.size() + apart.size(), 10U);
    if (!capture.keptUp) return;
    ASSERT_GE(within.size(), 8U);
    EXPECT_NEAR(median(within), PulseClock::pairGap, 0.02);
    EXPECT_GE(shareNear(within, PulseClock::pairGap, 0.02), mostOfThem);
    EXPECT_NEAR(median(apart) + PulseClock::pairGap, PulseClock::interval(reading.strength, false),
                frame + buffer);
}

}  // namespace
}  // namespace gull::session
