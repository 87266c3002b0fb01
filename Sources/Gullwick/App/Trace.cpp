#include "Gullwick/App/Trace.h"

#include "Engine/Language/Language.h"
#include "Engine/Sound/AudioDevice.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/Window.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/Game/GameController.h"

#include <fmt/format.h>

namespace gull {
namespace {

const char* name(GameController::Phase phase) {
    constexpr const char* names[] = {"intro", "playing", "flooding", "finished", "selecting"};
    return names[static_cast<int>(phase)];
}

}  // namespace

Trace::Trace() {
    if (const auto path = environmentVariable("GULLWICK_TRACE")) file_.reset(std::fopen(path->c_str(), "we"));
}

void Trace::follow(double now, bool isMeant, const GameController& game, const Window& window,
                   const Trackpads& trackpads, const AudioDevice& audio) {
    if (!file_) return;
    std::string line = fmt::format(
        "coil={:.3f},{:.3f} target={:.3f},{:.3f} captured={:d} phase={} paused={:d} meant={:d} fingers={} "
        "holes={} "
        "ticks={} "
        "driver={} size={}x{} scale={:.2f} full={:d} sound={:d} toast={}",
        game.coil().x, game.coil().y, game.target().x, game.target().y, game.captured.get(),
        name(game.phase.get()), game.isPaused.get(), isMeant, trackpads.contacts().size(),
        game.hunt().holes().size(), game.tickStamp.get(), window.driverName(), window.pixelWidth(),
        window.pixelHeight(), window.scale(), window.isFullScreen(), audio.describe().isOpen,
        game.toast.get() ? Language().tr(*game.toast.get()) : "-");
    if (line == last_) return;
    last_ = std::move(line);
    fmt::print(file_.get(), "{:.4f} {}\n", now, last_);
    std::fflush(file_.get());
}

void Trace::frameShown(double now) {
    if (file_) fmt::print(file_.get(), "{:.4f} frame\n", now);
}

}  // namespace gull
