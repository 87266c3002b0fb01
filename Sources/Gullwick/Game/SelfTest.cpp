#include "Gullwick/Game/SelfTest.h"

#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace gull::SelfTest {
namespace {

using Phase = GameController::Phase;

std::optional<int> integer(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

/// The grid point of the plot farthest from everything buried, if it is far enough for a dig to miss.
std::optional<PlotPoint> emptySpot(const Hunt& hunt) {
    std::optional<PlotPoint> best;
    double bestClearance = 0.15;
    for (int i = 0; i <= 10; ++i) {
        for (int j = 0; j <= 10; ++j) {
            const PlotPoint candidate{0.05 + 0.09 * i, 0.05 + 0.09 * j};
            double clearance = hunt.items().empty() ? 1.0 : std::numeric_limits<double>::infinity();
            for (const BuriedItem& item : hunt.items())
                clearance = std::min(clearance, candidate.distance(item.at));
            if (clearance > bestClearance) {
                best = candidate;
                bestClearance = clearance;
            }
        }
    }
    return best;
}

/// One run on one controller. The tasks refer to it, so it must not move while they run.
class Script {
  public:
    Script(MainLoop& loop, GameController& game, Output output)
        : loop_(loop), game_(game), output_(std::move(output)) {}

    Task<> beach(int number);
    Task<> highTide();
    void beachSelect();
    /// The verdict; returns the exit status.
    int verdict();

  private:
    void check(bool passed, const std::string& label);
    /// Waits until `condition` holds, at most `timeout` seconds; returns whether it holds.
    Task<bool> wait(double timeout, std::function<bool()> condition);
    /// Sends the coil to `at` and waits for it; false if it did not get there.
    Task<bool> settle(PlotPoint at);
    Task<> approach(BuriedItem item);
    Task<> digJunk(BuriedItem junk);
    Task<> spendPing();
    Task<> digNothing();
    Task<> digTreasures(std::vector<BuriedItem> treasures);

    Task<bool> waitForPhase(double timeout, Phase phase) {
        return wait(timeout, [this, phase] { return game_.phase == phase; });
    }
    void point(const PlotPoint& at) { game_.fingerMoved(at.x * 0.9 + 0.05, at.y * 0.9 + 0.05); }
    std::ptrdiff_t found() const { return std::ranges::count(game_.tray.get(), true); }
    bool reads(const BuriedItem& item) const {
        return game_.reading().item && game_.reading().item->id == item.id;
    }

    MainLoop& loop_;
    GameController& game_;
    Output output_;
    int failures_ = 0;
};

void Script::check(bool passed, const std::string& label) {
    output_((passed ? "  ok    " : "  FAIL  ") + label);
    if (!passed) ++failures_;
}

Task<bool> Script::wait(double timeout, std::function<bool()> condition) {
    const double deadline = loop_.now() + timeout;
    while (loop_.now() < deadline) {
        if (condition()) co_return true;
        co_await sleep(loop_, 0.015);
    }
    co_return condition();
}

Task<bool> Script::settle(PlotPoint at) {
    point(at);
    const bool arrived = co_await wait(1.5, [this, at] { return game_.coil().distance(at) < 0.004; });
    co_return arrived;
}

Task<> Script::beach(int number) {
    const BeachSpec spec = Campaign::beach(number);
    output_(fmt::format("beach {}: {}", number, spec.name));
    game_.beginBeach(number, false, static_cast<std::uint64_t>(number) * 101);
    const bool entered = co_await waitForPhase(2.0, Phase::playing);
    check(entered, "enters play");
    check(found() == 0 && game_.tray->size() == spec.treasures.size(),
          fmt::format("tray starts empty ({} slots)", spec.treasures.size()));
    check(std::abs(game_.timeLeft - spec.tideSeconds) < 0.5, "tide clock starts full");

    std::vector<BuriedItem> treasures, junk;
    for (const BuriedItem& item : game_.hunt().items())
        (isTreasure(item.kind) ? treasures : junk).push_back(item);
    co_await approach(treasures.at(0));
    if (number == 2 && !junk.empty()) co_await digJunk(junk.front());
    if (number == 3) co_await spendPing();
    co_await digNothing();
    co_await digTreasures(treasures);

    const bool ended = co_await waitForPhase(6.0, Phase::finished);
    check(ended, "beach ends when everything is found");
    const int expected = number == 2 ? 2 : 3;
    const int earned = game_.earnedStars;
    check(earned == expected, fmt::format("stars: {} (expected {})", earned, expected));
    const auto recorded = game_.progress->stars.find(number);
    check(recorded != game_.progress->stars.end() && recorded->second == earned, "stars recorded");
    const int last = static_cast<int>(Campaign::beaches().size());
    check(game_.progress->isUnlocked(std::min(number + 1, last)), "next beach unlocked");
}

Task<> Script::approach(BuriedItem item) {
    const double reach = game_.hunt().detector().reach(item);
    const double side = item.at.x < 0.5 ? reach : -reach;
    const PlotPoint start = PlotPoint{item.at.x + side * 0.85 / Plot::aspect, item.at.y}.clamped();
    co_await settle(start);

    std::vector<double> samples;
    constexpr int steps = 24;
    for (int k = 0; k <= steps; ++k) {
        const double share = static_cast<double>(k) / steps;
        const PlotPoint way{start.x + (item.at.x - start.x) * share, start.y + (item.at.y - start.y) * share};
        point(way.clamped());
        co_await sleep(loop_, 0.03);
        if (reads(item)) samples.push_back(game_.reading().strength);
    }
    co_await settle(item.at);

    const double first = samples.empty() ? -1 : samples.front();
    const double last = samples.empty() ? -1 : samples.back();
    check(!samples.empty() && last > first + 0.2,
          fmt::format("signal builds on approach ({:.2f} → {:.2f})", first, last));
    check(game_.reading().isPinpoint && reads(item), "locks on right over it");
}

Task<> Script::digJunk(BuriedItem junk) {
    co_await settle(junk.at);
    check(!game_.reading().item || !isTreasure(game_.reading().item->kind), "junk reads as junk");
    game_.click();
    const bool counted = co_await wait(1.0, [this] { return game_.junkCount == 1; });
    check(counted, "digging junk counts it");
    co_await sleep(loop_, 0.7);
}

Task<> Script::spendPing() {
    const double before = game_.timeLeft;
    game_.ping();
    co_await sleep(loop_, 0.1);
    check(game_.pings == 1 && game_.timeLeft < before - Hunt::pingCost + 0.5, "ping costs tide");
}

Task<> Script::digNothing() {
    const std::optional<PlotPoint> spot = emptySpot(game_.hunt());
    if (!spot) co_return;
    co_await settle(*spot);
    game_.click();
    co_await sleep(loop_, 0.5);
    check(!game_.hunt().holes().empty() && found() == 0, "an empty dig finds nothing");
}

Task<> Script::digTreasures(std::vector<BuriedItem> treasures) {
    for (std::size_t k = 0; k < treasures.size(); ++k) {
        const BuriedItem& treasure = treasures[k];
        const bool arrived = co_await settle(treasure.at);
        check(arrived, fmt::format("coil reaches treasure {} ({})", k + 1, rawValue(treasure.kind)));
        game_.click();
        const auto wanted = static_cast<std::ptrdiff_t>(k + 1);
        const bool kept = co_await wait(1.2, [this, wanted] { return found() == wanted; });
        check(kept, fmt::format("{} goes in the tray", name(treasure.kind)));
        if (k + 1 < treasures.size()) co_await sleep(loop_, 0.7);
    }
}

Task<> Script::highTide() {
    output_("high tide");
    game_.beginBeach(1, false, 5);
    co_await waitForPhase(2.0, Phase::playing);
    game_.debugAdvance(Campaign::beach(1).tideSeconds - 0.3);
    const bool flooded = co_await waitForPhase(2.0, Phase::flooding);
    check(flooded, "the tide comes in");
    const bool ended = co_await waitForPhase(4.0, Phase::finished);
    check(ended, "result card after the flood");
    check(game_.earnedStars == 0, "nothing found = lost");
    game_.click();
    const bool again = co_await waitForPhase(3.0, Phase::playing);
    check(again, "click tries again");
}

void Script::beachSelect() {
    output_("beach select");
    game_.openSelect();
    check(game_.phase == Phase::selecting, "opens");
    game_.fingerMoved(0.32, 0.77);
    check(game_.selection == 2, fmt::format("finger picks a tile ({})", game_.selection.get()));
    game_.key(KeyAction::Move{1, 1});
    check(game_.selection == 7, fmt::format("arrows move the cursor ({})", game_.selection.get()));
    game_.closeSelect();
    check(game_.phase != Phase::selecting, "closes");
}

int Script::verdict() {
    output_(failures_ == 0 ? std::string("ALL GOOD") : fmt::format("{} FAILURES", failures_));
    return failures_ > 0 ? 1 : 0;
}

}  // namespace

std::vector<int> beaches(const std::vector<std::string>& arguments) {
    std::vector<int> numbers;
    const std::string_view last = arguments.empty() ? std::string_view() : arguments.back();
    if (last.find(',') == std::string_view::npos && !integer(last)) {
        for (const BeachSpec& spec : Campaign::beaches()) numbers.push_back(spec.number);
        return numbers;
    }
    for (std::size_t start = 0; start <= last.size();) {
        const std::size_t end = std::min(last.find(',', start), last.size());
        if (const auto number = integer(last.substr(start, end - start))) numbers.push_back(*number);
        start = end + 1;
    }
    return numbers;
}

Task<int> play(MainLoop& loop, GameController& game, std::vector<int> beaches, Output output) {
    Script script(loop, game, std::move(output));
    for (const int number : beaches) co_await script.beach(number);
    co_await script.highTide();
    script.beachSelect();
    co_return script.verdict();
}

Task<int> run(MainLoop& loop, const AppSettings& settings, Feedback& feedback,
              std::vector<std::string> arguments, Output output) {
    feedback.muted = true;
    std::error_code noTemporaryFolder;  // nothing is ever written, so any path will do
    const auto file = std::filesystem::temp_directory_path(noTemporaryFolder) / "gullwick-selftest.json";
    GameController game(loop, settings, feedback, file, false, 1);
    const int status = co_await play(loop, game, beaches(arguments), std::move(output));
    co_return status;
}

}  // namespace gull::SelfTest
