#include "Gullwick/App/FrameProbe.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Raster/Png.h"
#include "Gullwick/Game/GameController.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>

namespace gull {

FrameProbe::FrameProbe(MainLoop& loop, GameController& game, View view, std::string path)
    : loop_(loop), game_(game), view_(std::move(view)), path_(std::move(path)) {
    sweepTimer_ = loop_.every(GameController::frameInterval, [this] { sweep(); });
    stageTimer_ = loop_.after(warmUp, [this] {
        firstFrame_ = frames_;
        firstTime_ = loop_.now();
        stageTimer_ = loop_.after(interval, [this] { report(); });
    });
}

void FrameProbe::sweep() {
    sweepClock_ += GameController::frameInterval;
    if (game_.phase == GameController::Phase::selecting) return;
    game_.setTarget({0.5 + 0.4 * std::sin(0.9 * sweepClock_), 0.5 + 0.35 * std::sin(1.3 * sweepClock_)});
}

void FrameProbe::report() {
    const double rate = static_cast<double>(frames_ - firstFrame_) / (loop_.now() - firstTime_);
    fmt::print("probe: {:.1f} fps at {}x{} (backing scale {:.0f})\n", rate, view_.width(), view_.height(),
               view_.scale());
    const Image picture = view_.snapshot();
    if (const auto png = picture.empty() ? std::nullopt : encodePng(picture)) {
        SmallFile::replace(path_, std::string_view(reinterpret_cast<const char*>(png->data()), png->size()));
        fmt::print("probe: wrote {}\n", path_);
    }
    std::fflush(stdout);
    loop_.quit(0);
}

}  // namespace gull
