#pragma once

#include "GullCore/Detector.h"

#include <string_view>

namespace gull {

/// The two hints that lead a beginner to the first find: one at the first signal, one when the coil stands
/// right over treasure. The first find ends them.
class TutorialHints {
  public:
    static constexpr double signalThreshold = 0.05;  ///< reading strength that counts as a first signal
    static constexpr double hintSeconds = 5.0;       ///< how long each hint stands

    /// What stands while the beach opens, for openingSeconds.
    static constexpr std::string_view opening =
        "Rest one finger on the trackpad and slide it — the trackpad is the beach";
    static constexpr double openingSeconds = 6.0;

    void start() { stage_ = 1; }
    void end() { stage_ = 0; }
    /// 0 off, 1 waiting for a first signal, 2 for a pinpoint on treasure, 3 for the first find.
    int stage() const { return stage_; }
    /// The hint that this reading brings up; empty for none.
    std::string_view advance(const Reading& reading);

  private:
    int stage_ = 0;
};

}  // namespace gull
