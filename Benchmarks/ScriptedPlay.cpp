// Plays a beach in a real window without a player and prints how the frames came: a histogram of the
// intervals between presents, the work of a frame, and the longest interval of every moment. Everything that
// happens in play happens here: fly-in, sweeps, a ping, an empty dig, junk, every treasure, the flood, the
// result card, the beach select.
//
//     build/Benchmarks/ScriptedPlay [beach...]        (all eight without arguments; under Xvfb where no
//     display is)

#include "Engine/Loop/Task.h"
#include "Gullwick/App/AppDelegate.h"
#include "Gullwick/App/Memory.h"
#include "Gullwick/Game/GameController.h"
#include "ResidentMemory.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace gull {
namespace {

struct Frame {
    std::string moment;
    double interval;
    double work;
    double processor;  ///< time of all threads since the frame before, which other programs do not stretch
};

class ScriptedPlay {
  public:
    explicit ScriptedPlay(AppDelegate& app) : app_(app), game_(app.game()), loop_(app.loop()) {
        app.onFrame([this](const FrameTiming& timing) { record(timing); });
    }

    /// `started`: the uptime when the program started.
    Task<int> play(std::vector<int> beaches, double started) {
        while (complete_ == 0) co_await sleep(loop_, GameController::frameInterval);
        fmt::print("start to the first complete picture: {:.0f} ms\n", (complete_ - started) * 1000);
        for (const int beach : beaches) co_await playBeach(beach);
        co_return 0;
    }

  private:
    Task<bool> wait(double seconds) {
        co_await sleep(loop_, seconds);
        co_return true;
    }

    Task<bool> sweep(double seconds) {
        const double start = loop_.now();
        while (loop_.now() - start < seconds) {
            const double t = loop_.now() - start;
            game_.setTarget({0.5 + 0.4 * std::sin(0.9 * t), 0.5 + 0.35 * std::sin(1.3 * t)});
            co_await sleep(loop_, GameController::frameInterval);
        }
        co_return true;
    }

    Task<bool> digAt(PlotPoint point) {
        game_.setTarget(point);
        co_await sleep(loop_, 0.7);
        game_.click();
        co_await sleep(loop_, 1.2);
        co_return true;
    }

    /// A place of the plot where the detector hears nothing, the farthest from all items.
    PlotPoint silentPlace() const {
        PlotPoint best{0.5, 0.3};
        double farthest = 0;
        for (double x = 0.1; x < 0.95; x += 0.1)
            for (double y = 0.1; y < 0.95; y += 0.1) {
                double nearest = 1e9;
                for (const BuriedItem& item : game_.hunt().items())
                    nearest = std::min(nearest, PlotPoint{x, y}.distance(item.at));
                if (nearest > farthest) best = {x, y};
                farthest = std::max(farthest, nearest);
            }
        return best;
    }

    Task<bool> playBeach(int beach) {
        frames_.clear();
        moment_ = "fly-in";
        opened_ = loop_.now();
        firstFrame_ = complete_ = 0;
        game_.beginBeach(beach, true, static_cast<std::uint64_t>(beach) * 101);
        co_await wait(1.4);
        moment_ = "arrival";
        co_await wait(0.4);
        game_.setTarget(silentPlace());
        co_await wait(0.8);
        moment_ = "rest";
        co_await wait(3);
        moment_ = "sweep";
        co_await sweep(5);
        moment_ = "ping";
        game_.ping();
        co_await sweep(2.6);
        moment_ = "miss";
        co_await digAt({0.02, 0.98});
        const auto items = game_.hunt().items();
        for (const BuriedItem& item : items) {
            if (isTreasure(item.kind)) continue;
            moment_ = "junk";
            co_await digAt(item.at);
            break;
        }
        const auto treasure = game_.hunt().buriedTreasures();
        for (const BuriedItem& item : treasure) {
            if (item.id == treasure.back().id) break;
            moment_ = "treasure";
            co_await digAt(item.at);
        }
        moment_ = "flood";
        game_.debugAdvance(1000);
        co_await wait(2.3);
        moment_ = "result";
        co_await wait(1.5);
        moment_ = "select";
        game_.openSelect();
        co_await wait(0.6);
        game_.key(KeyAction::Move{1, 0});
        co_await wait(0.6);
        moment_ = "select still";
        co_await wait(1.5);
        game_.closeSelect();
        report(beach);
        co_return true;
    }

    void record(const FrameTiming& timing) {
        const double processor = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
        if (last_ > 0)
            frames_.push_back({moment_, timing.time - last_, timing.work, processor - lastProcessor_});
        lastProcessor_ = processor;
        last_ = timing.time;
        if (firstFrame_ == 0) firstFrame_ = timing.time;
        if (complete_ == 0 && timing.isComplete) complete_ = timing.time;
    }

    static double quantile(std::vector<double> values, double share) {
        if (values.empty()) return 0;
        std::sort(values.begin(), values.end());
        return values[std::min(values.size() - 1,
                               static_cast<std::size_t>(share * static_cast<double>(values.size())))];
    }

    void report(int beach) const {
        fmt::print(
            "\nbeach {}: {} frames; first frame after {:.0f} ms, complete after {:.0f} ms; {:.0f} MB "
            "resident\n",
            beach, frames_.size(), (firstFrame_ - opened_) * 1000, (complete_ - opened_) * 1000,
            residentMemory());
        fmt::print("  {:<10}{:>7}{:>9}{:>11}{:>11}{:>15}{:>14}{:>14}\n", "moment", "frames", "fps",
                   "work p50", "work p95", "processor p50", "interval p95", "interval max");
        std::vector<std::string> order;
        std::map<std::string, std::vector<double>> intervals, works, processors;
        for (const Frame& frame : frames_) {
            if (!intervals.contains(frame.moment)) order.push_back(frame.moment);
            intervals[frame.moment].push_back(frame.interval * 1000);
            works[frame.moment].push_back(frame.work * 1000);
            processors[frame.moment].push_back(frame.processor * 1000);
        }
        for (const std::string& moment : order) {
            const auto& values = intervals[moment];
            double total = 0;
            for (const double value : values) total += value;
            fmt::print("  {:<10}{:>7}{:>9.1f}{:>11.2f}{:>11.2f}{:>15.2f}{:>14.2f}{:>14.2f}\n", moment,
                       values.size(), 1000.0 * static_cast<double>(values.size()) / total,
                       quantile(works[moment], 0.5), quantile(works[moment], 0.95),
                       quantile(processors[moment], 0.5), quantile(values, 0.95), quantile(values, 1.0));
        }
        constexpr double edges[] = {10, 15, 16, 17, 18, 20, 25, 33.4, 50, 100, 1e9};
        double low = 0;
        for (const double high : edges) {
            const auto count = std::count_if(frames_.begin(), frames_.end(), [&](const Frame& frame) {
                return frame.interval * 1000 >= low && frame.interval * 1000 < high;
            });
            if (count > 0) fmt::print("  {:>6.1f} ms and up {:>6}\n", low, count);
            low = high;
        }
        std::fflush(stdout);
    }

    AppDelegate& app_;
    GameController& game_;
    MainLoop& loop_;
    std::string moment_ = "start";
    double last_ = 0;
    double lastProcessor_ = 0;
    double opened_ = 0;
    double firstFrame_ = 0;
    double complete_ = 0;
    std::vector<Frame> frames_;
};

}  // namespace
}  // namespace gull

int main(int argc, char** argv) {
    gull::returnLargeBlocks();
    std::vector<int> beaches;
    for (int i = 1; i < argc; ++i) beaches.push_back(std::atoi(argv[i]));
    if (beaches.empty()) beaches = {1, 2, 3, 4, 5, 6, 7, 8};
    setenv("GULLWICK_SAVE", "/dev/null", 1);  // nobody's progress
    const double started = gull::UptimeClock().now();
    gull::AppDelegate app(gull::CommandLine({}));
    gull::ScriptedPlay script(app);
    auto play = script.play(beaches, started);
    play.start([&](int status) { app.loop().quit(status); });
    return app.run();
}
