#pragma once

#include "Engine/Input/Haptics.h"
#include "Engine/Language/Language.h"
#include "Engine/Loop/Clock.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Sound/SoundOutput.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Feedback/Sounds.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Settings/AppSettings.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace gull {

/// What the player heard and felt, with times.
struct Sensation {
    double time;
    std::string what;  ///< "beep 3", "miss"; "generic", "alignment", "levelChange"
    float gain;        ///< 0 for a haptic pulse
};

/// Receives the game's sounds and pulses in place of a device and recognises each sound by its samples.
class Senses final : public SoundOutput, public HapticPerformer {
  public:
    explicit Senses(const MainLoop& loop) : loop_(loop) {}

    std::vector<Sensation> all;
    float surf = 0;  ///< its volume
    bool isPluggedIn = true;

    bool start() override { return isPluggedIn; }
    bool isAvailable() const override { return isPluggedIn; }
    void play(int, std::span<const float> samples, float volume) override {
        all.push_back({loop_.now(), nameOf(samples), volume});
    }
    void loop(std::span<const float>) override {}
    void setLoopVolume(float volume) override { surf = volume; }
    void silence() override {}
    void perform(HapticPattern pattern) override {
        static constexpr const char* names[] = {"generic", "alignment", "levelChange"};
        all.push_back({loop_.now(), names[static_cast<int>(pattern)], 0});
    }

    /// The times at which something of this name was sensed; "beep" stands for every level.
    std::vector<double> times(const std::string& name) const {
        std::vector<double> found;
        for (const Sensation& sensation : all)
            if (sensation.what == name || sensation.what.starts_with(name + " "))
                found.push_back(sensation.time);
        return found;
    }
    std::size_t count(const std::string& name) const { return times(name).size(); }
    /// All names in order, separated by blanks.
    std::string story() const {
        std::string text;
        for (const Sensation& sensation : all) text += (text.empty() ? "" : ", ") + sensation.what;
        return text;
    }

  private:
    static const std::vector<std::pair<std::string, std::vector<float>>>& known() {
        static const auto sounds = [] {
            std::vector<std::pair<std::string, std::vector<float>>> list;
            const auto add = [&](std::string name, Sound sound) {
                list.emplace_back(std::move(name), Sounds::make(sound));
            };
            for (int level = 0; level <= 9; ++level) {
                add("beep " + std::to_string(level), Sound::beep(level));
                add("buzz " + std::to_string(level), Sound::buzz(level));
            }
            add("lockOn", Sound::lockOn);
            add("shovel", Sound::shovel);
            add("miss", Sound::miss);
            add("found", Sound::found);
            add("chest", Sound::chest);
            add("junk", Sound::junk);
            add("ping", Sound::ping);
            add("countdown", Sound::countdown);
            add("wave", Sound::wave);
            add("win", Sound::win);
            add("lose", Sound::lose);
            add("tap", Sound::tap);
            return list;
        }();
        return sounds;
    }
    std::string nameOf(std::span<const float> samples) {
        std::string& name = names_[samples.data()];
        if (name.empty()) {
            for (const auto& [candidate, expected] : known())
                if (std::ranges::equal(samples, expected)) name = candidate;
            if (name.empty()) name = "unknown";
        }
        return name;
    }

    const MainLoop& loop_;
    std::map<const float*, std::string> names_;
};

/// A whole game under a manual clock.
struct GameHarness : testing::Test {
    using Phase = GameController::Phase;

    const std::filesystem::path folder = [] {
        auto path =
            std::filesystem::temp_directory_path() / ("gullwick-game-test-" + std::to_string(getpid()));
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
        return path;
    }();
    const std::filesystem::path progressFile = folder / "progress.json";

    ManualClock clock;
    MainLoop loop{clock};
    AppSettings settings{folder / "settings.json"};
    Senses senses{loop};
    Feedback feedback{settings, loop, &senses, &senses};
    std::unique_ptr<GameController> owned =
        std::make_unique<GameController>(loop, settings, feedback, progressFile, false, 1);
    GameController& game = *owned;

    ~GameHarness() override {
        owned.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    void turn(double seconds) { loop.turn(clock, seconds); }

    /// Opens a beach at once and plays its first frames.
    void play(int number, std::uint64_t seed = 7) {
        game.beginBeach(number, false, seed);
        turn(0.05);
        ASSERT_EQ(game.phase, Phase::playing);
        senses.all.clear();
    }
    /// Everything of the beach that is treasure, or junk, in burial order.
    std::vector<BuriedItem> buried(bool treasure) const {
        std::vector<BuriedItem> items;
        for (const BuriedItem& item : game.hunt().items())
            if (isTreasure(item.kind) == treasure) items.push_back(item);
        return items;
    }
    /// Puts the coil right over `item` and digs it up, waiting until the dig is over.
    void digUp(const BuriedItem& item) {
        game.setCoil(item.at);
        game.dig();
        turn(0.7);
    }
    /// A place where a dig finds nothing.
    PlotPoint nowhere() const {
        for (double x = 0.02; x < 1; x += 0.02)
            for (double y = 0.02; y < 1; y += 0.02)
                if (std::ranges::all_of(game.hunt().items(), [&](const BuriedItem& item) {
                        return item.at.distance({x, y}) > 0.15;
                    }))
                    return {x, y};
        ADD_FAILURE() << "the beach is full";
        return {};
    }
    void wait(Phase phase, double limit = 10) {
        for (double waited = 0; game.phase != phase && waited < limit; waited += 0.01) turn(0.01);
        ASSERT_EQ(game.phase, phase);
    }
    /// Lets the tide run out and the flood end.
    void lose() {
        game.debugAdvance(game.spec->tideSeconds);
        wait(Phase::finished);
    }
    /// Finds everything.
    void win() {
        for (const BuriedItem& item : buried(true)) digUp(item);
        wait(Phase::finished);
    }
    /// In English.
    std::string toast() const { return game.toast.get() ? Language().tr(*game.toast.get()) : ""; }
};

inline void PrintTo(GameController::Phase phase, std::ostream* out) {
    static constexpr const char* names[] = {"intro", "playing", "flooding", "finished", "selecting"};
    *out << names[static_cast<int>(phase)];
}

}  // namespace gull
