#pragma once

#include "Engine/Stage/Camera.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Scene/Terrain.h"
#include "Gullwick/Settings/AppSettings.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

namespace gull::session {

/// The layout when the program is started with `--seed 7`, from a controller of our own driven in the same
/// way, and where the mouse must be to bring the coil there in a window of 1240 x 800.
class PlayersMap {
  public:
    /// With the progress file that the program will find; empty: a new player.
    explicit PlayersMap(const std::filesystem::path& progress = {})
        : game_(loop_, settings_, feedback_, progress, !progress.empty(), 7) {
        game_.world().frame(1240.0 / 800.0);
        game_.world().update(0, 0, {0.5, 0.28}, {0, 0}, 0, 0, {1, 1, 1, 1});
    }

    const Hunt& hunt() const { return game_.hunt(); }
    std::vector<BuriedItem> treasures() const { return hunt().buriedTreasures(); }
    std::vector<BuriedItem> junk() const {
        std::vector<BuriedItem> result;
        for (const BuriedItem& item : hunt().items()) {
            if (!isTreasure(item.kind)) result.push_back(item);
        }
        return result;
    }

    glm::ivec2 mouse(const PlotPoint& point) const {
        const Stage& stage = game_.world().stage();
        const glm::dvec3 at = project(*stage.pointOfView->camera, stage.pointOfView->worldTransform(),
                                      Terrain::world(point), {1240, 800});
        return {static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
    }

  private:
    ManualClock clock_;
    MainLoop loop_{clock_};
    AppSettings settings_{{}};
    Feedback feedback_{settings_, loop_, nullptr, nullptr};
    GameController game_;
};

}  // namespace gull::session
