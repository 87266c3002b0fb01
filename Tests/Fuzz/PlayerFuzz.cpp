// A simulated player whose skill and whims come from the input. The same player is then sent to the same
// beach on a machine that has been up for ten years, and must fare alike.

#include "Fuzz/FuzzGame.h"
#include "Fuzz/FuzzInput.h"
#include "GullCore/Rng.h"

#include <cmath>
#include <tuple>

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {};

namespace {

constexpr double tenYears = 10 * 365.25 * 86400;

using Fare = std::tuple<int, int, int, int>;  // stars, haul, junk, pings

/// Sweeps to a place as a hand does, and digs there.
void digAt(FuzzGame& play, const PlotPoint& place) {
    play.game.setTarget(place);
    for (int i = 0; i < 100 && play.game.coil().distance(place) > 0.003; ++i) play.turn(0.05);
    play.game.dig();
    play.turn(1);
    play.check();
}

PlotPoint somewhere(SplitMix64& whim) {
    const auto share = [&] { return static_cast<double>(whim.next() % 1000) / 999; };
    const double x = share();
    return {x, share()};
}

Fare hunt(const std::string& whims, double start) {
    FuzzInput input(reinterpret_cast<const std::uint8_t*>(whims.data()), whims.size());
    const auto seed = input.take<std::uint32_t>();
    const int beach = 1 + input.below(8), skill = input.below(11);
    FuzzGame play(seed, start);
    GameController& game = play.game;
    game.beginBeach(beach, input.below(2) == 0, seed);
    play.turn(2);
    SplitMix64 whim(seed);
    for (const BuriedItem item : std::vector(game.hunt().items())) {
        if (game.phase != GameController::Phase::playing) break;
        const bool wants = isTreasure(item.kind) || skill < 5;
        const bool misses = static_cast<int>(whim.next() % 10) >= skill;
        if (wants && misses) digAt(play, somewhere(whim));
        if (whim.next() % 8 == 0) game.ping();
        if (wants) digAt(play, item.at);
    }
    for (int i = 0; i < 400 && game.phase != GameController::Phase::finished; ++i) play.turn(0.5);
    play.check();
    require(game.phase == GameController::Phase::finished, "the beach does not end");
    const auto found = std::count(game.tray->begin(), game.tray->end(), true);
    require((game.earnedStars > 0) == (found >= game.spec->need), "{} found of {}, and {} stars", found,
            game.spec->need, game.earnedStars.get());
    return {game.earnedStars, game.haul, game.junkCount, game.pings};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string whims = input.rest();
    const Fare now = hunt(whims, 1000);
    require(hunt(whims, 1000) == now, "the same player fares otherwise the second time");
    require(hunt(whims, tenYears) == now, "uptime changes how a player fares");
    return 0;
}
