#include "Gullwick/App/StillBeach.h"

#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace gull {

namespace {

std::vector<BuriedItem> itemsOf(const Hunt& hunt, bool treasure) {
    std::vector<BuriedItem> result;
    std::copy_if(hunt.items().begin(), hunt.items().end(), std::back_inserter(result),
                 [&](const BuriedItem& item) { return isTreasure(item.kind) == treasure; });
    return result;
}

}  // namespace

StillBeach::StillBeach(const SnapshotOptions& options)
    : game_(loop_, settings_, feedback_, "/dev/null", false, options.seed) {
    feedback_.muted = true;
    game_.beginBeach(options.beach, false, options.seed);
    game_.debugForcePlaying();

    BeachScene& world = game_.world();
    world.frame(static_cast<double>(options.width) / options.height);
    world.update(time_, GameController::frameInterval, game_.coil(), {0, 0}, 0, 0, {1, 1, 1, 1});

    if (options.elapse) game_.debugAdvance(*options.elapse);
    const std::vector<BuriedItem> treasures = itemsOf(game_.hunt(), true);
    digUp(treasures, options.find);
    digUp(itemsOf(game_.hunt(), false), options.junk);
    if (options.coil) game_.setCoil(*options.coil);
    if (options.trail) sweepTrail();
    if (options.reveal && options.find < static_cast<int>(treasures.size())) {
        dig(treasures[static_cast<std::size_t>(options.find)]);
        time_ += *options.reveal;
    }
    if (options.ping && !game_.hunt().buriedTreasures().empty()) {
        game_.ping();
        time_ += 0.5;
    }
    if (options.flood) {
        world.floodStart = world.time;
        time_ += 2.2;
    }
    if (options.finish) game_.finish();
    if (options.select) game_.openSelect();

    const Reading reading = game_.hunt().reading(game_.coil());
    if (reading.strength > 0 && game_.phase != GameController::Phase::finished) {
        world.ripple(game_.coil(), {1, 0.76, 0.28, 1}, reading.strength, 1);
    }
    game_.debugSettle(time_ + 0.12);
    if (options.closeUp) closeUp();
}

void StillBeach::digUp(const std::vector<BuriedItem>& items, int count) {
    const std::size_t wanted = std::min(static_cast<std::size_t>(count), items.size());
    for (std::size_t i = 0; i < wanted; ++i) {
        dig(items[i]);
        time_ += digTime;
        game_.debugSettle(time_);
    }
}

void StillBeach::dig(const BuriedItem& item) {
    game_.setCoil(item.at);
    game_.debugSettle(time_);
    game_.clearBusy();
    game_.dig();
}

void StillBeach::sweepTrail() {
    constexpr int stamps = 240;
    for (int i = 0; i < stamps; ++i) {
        const double t = static_cast<double>(i) / stamps;
        game_.world().trail.sweep({0.15 + 0.7 * t, 0.3 + 0.25 * std::sin(12 * t)});
    }
}

void StillBeach::closeUp() {
    Stage& stage = game_.world().stage();
    const glm::dvec3 coil = Terrain::world(game_.coil());
    Node& camera = *stage.pointOfView;
    camera.position = coil + glm::dvec3(1.5, 3, 4.6);
    camera.lookAt({coil.x - 0.1, coil.y + 0.95, coil.z});
    camera.camera->vignettingIntensity = 0;
    camera.camera->fieldOfView = 40;
}

}  // namespace gull
