// Starts the game in a real window and opens beaches, several times each: how soon something is seen, how
// soon the picture is complete, and how evenly the frames of the fly-in come.
//
//     build/Benchmarks/Openings [times] [beach...]     (once 1 and 8 without arguments)

#include "Engine/Loop/Task.h"
#include "Gullwick/App/AppDelegate.h"
#include "Gullwick/App/Memory.h"
#include "Gullwick/Game/GameController.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace gull {
namespace {

constexpr double flight = 1.4;  // seconds
constexpr double watched = 2.6;

/// Of all threads, seconds.
double processorTime() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
}

class Openings {
  public:
    Openings(AppDelegate& app, double started) : app_(app), opened_(started) {
        app.onFrame([this](const FrameTiming& timing) {
            frames_.push_back({timing.time, processorTime(), timing.isComplete});
        });
    }

    Task<int> play(int times, std::vector<int> beaches) {
        fmt::print("{:>10}{:>9}{:>10}{:>9}{:>7}{:>8}{:>8}{:>8}{:>8}{:>12}\n", "opened", "first", "complete",
                   "frames", "fps", "p50", "p95", "max", "later", "processor");
        co_await sleep(app_.loop(), watched);
        report("start");
        for (int i = 0; i < times; ++i)
            for (const int beach : beaches) {
                frames_.clear();
                processor_ = processorTime();
                opened_ = app_.loop().now();
                app_.game().beginBeach(beach, true, static_cast<std::uint64_t>(beach) * 101);
                co_await sleep(app_.loop(), watched);
                report(fmt::format("beach {}", beach));
            }
        co_return 0;
    }

  private:
    struct Frame {
        double time;
        double processor;
        bool complete;
    };

    /// Times in ms; the flight's intervals begin with the second frame, `later` is the longest after it.
    void report(const std::string& name) const {
        if (frames_.empty()) return;
        const double first = frames_.front().time, landed = first + flight;
        double complete = 0, later = 0;
        std::vector<double> intervals;
        for (std::size_t i = 0; i < frames_.size(); ++i) {
            if (complete == 0 && frames_[i].complete) complete = frames_[i].time - opened_;
            if (i == 0) continue;
            const double interval = frames_[i].time - frames_[i - 1].time;
            if (frames_[i].time <= landed)
                intervals.push_back(interval);
            else
                later = std::max(later, interval);
        }
        if (std::getenv("FRAMES"))
            for (std::size_t i = 1; i < frames_.size(); ++i)
                fmt::print("  {:6.0f} {:5.1f} cpu {:5.1f}{}\n", (frames_[i].time - opened_) * 1000,
                           (frames_[i].time - frames_[i - 1].time) * 1000,
                           (frames_[i].processor - frames_[i - 1].processor) * 1000,
                           frames_[i].complete ? " complete" : "");
        double total = 0;
        for (const double interval : intervals) total += interval;
        std::sort(intervals.begin(), intervals.end());
        auto quantile = [&](double share) {
            const auto at = static_cast<std::size_t>(share * static_cast<double>(intervals.size()));
            return intervals.empty() ? 0 : intervals[std::min(at, intervals.size() - 1)] * 1000;
        };
        fmt::print("{:>10}{:>9.0f}{:>10.0f}{:>9}{:>7.1f}{:>8.1f}{:>8.1f}{:>8.1f}{:>8.1f}{:>12.0f}\n", name,
                   (first - opened_) * 1000, complete * 1000, intervals.size(),
                   static_cast<double>(intervals.size()) / total, quantile(0.5), quantile(0.95), quantile(1),
                   later * 1000, (frames_.front().processor - processor_) * 1000);
        std::fflush(stdout);
    }

    AppDelegate& app_;
    double opened_;
    double processor_ = 0;  ///< when the beach was opened
    std::vector<Frame> frames_;
};

}  // namespace
}  // namespace gull

int main(int argc, char** argv) {
    gull::returnLargeBlocks();
    const int times = argc > 1 ? std::atoi(argv[1]) : 1;
    std::vector<int> beaches;
    for (int i = 2; i < argc; ++i) beaches.push_back(std::atoi(argv[i]));
    if (beaches.empty()) beaches = {1, 8};
    setenv("GULLWICK_SAVE", "/dev/null", 1);  // nobody's progress
    const double started = gull::UptimeClock().now();
    gull::AppDelegate app(gull::CommandLine({}));
    gull::Openings openings(app, started);
    auto play = openings.play(times, beaches);
    play.start([&](int status) { app.loop().quit(status); });
    return app.run();
}
