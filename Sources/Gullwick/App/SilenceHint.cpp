#include "Gullwick/App/SilenceHint.h"

#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Settings/AppSettings.h"

namespace gull {

namespace {

constexpr double lookInterval = 0.25;  // seconds: asking for a device costs a little
constexpr double hintSeconds = 6;

}  // namespace

bool SilenceHint::isSilent() {
    return !settings_.showTicks() && !feedback_.muted && !feedback_.isHeard() && !feedback_.isFelt();
}

void SilenceHint::poll(double now) {
    if (game_.phase != GameController::Phase::playing || now < nextLook_) return;
    nextLook_ = now + lookInterval;
    if (!isSilent()) {
        silentSince_ = -1;
        return;
    }
    if (silentSince_ < 0) silentSince_ = now;
    bool& told = settings_.sound() ? toldNoDevice_ : toldTurnedOff_;
    if (told || now - silentSince_ < patience) return;
    told = true;
    game_.queueHint(settings_.sound()
                        ? message("No sound can come out here — Options > Show Ticks draws every tick")
                        : message("The sound is off — Options > Show Ticks draws every tick"),
                    hintSeconds);
}

}  // namespace gull
