#pragma once

#include "Engine/Loop/MainLoop.h"
#include "Gullwick/App/SnapshotOptions.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Settings/AppSettings.h"

#include <optional>

namespace gull {

/// A game stopped at the moment given by options: played to it step by step under a manual clock, muted,
/// without reading or writing files.
class StillBeach {
  public:
    explicit StillBeach(const SnapshotOptions& options);

    GameController& game() { return game_; }
    AppSettings& settings() { return settings_; }
    const MainLoop& loop() const { return loop_; }

  private:
    static constexpr double startTime = 100;  ///< scene time of the first update, seconds
    static constexpr double digTime = 4;      ///< given to every dig: longer than any reveal

    void digUp(const std::vector<BuriedItem>& items, int count);
    void dig(const BuriedItem& item);
    void sweepTrail();
    void closeUp();

    ManualClock clock_;
    MainLoop loop_{clock_};
    AppSettings settings_{{}};
    Feedback feedback_{settings_, loop_, nullptr, nullptr};
    GameController game_;
    double time_ = startTime;
};

}  // namespace gull
