#pragma once

#include "Engine/Language/Message.h"
#include "GullCore/Detector.h"
#include "Gullwick/Game/Controls.h"

#include <optional>

namespace gull {

/// The two hints that lead a beginner to the first find: one at the first signal, one when the coil is right
/// over treasure. The first find ends them. They mention the controls in the player's hand.
class TutorialHints {
  public:
    static constexpr double signalThreshold = 0.05;  ///< reading strength that counts as a first signal
    static constexpr double hintSeconds = 5.0;       ///< how long each hint stays up

    /// The text shown while the beach opens, for openingSeconds.
    static Message opening(const Controls& controls);
    static constexpr double openingSeconds = 6.0;

    /// In place of the hint at the first signal, for whoever neither hears nor feels ticks.
    static Message onSilentSignal(bool ticksAreShown);

    void start() { stage_ = 1; }
    void end() { stage_ = 0; }
    /// 0 off, 1 waiting for a first signal, 2 for a pinpoint on treasure, 3 for the first find.
    int stage() const { return stage_; }
    /// The hint that this reading triggers, if any.
    std::optional<Message> advance(const Reading& reading, const Controls& controls);

  private:
    int stage_ = 0;
};

}  // namespace gull
