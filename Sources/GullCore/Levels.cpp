#include "GullCore/Levels.h"

#include "Engine/Language/Message.h"

#include <algorithm>

namespace gull {

const std::vector<BeachSpec>& Campaign::beaches() {
    using enum ItemKind;
    // clang-format off
    static const std::vector<BeachSpec> table{
        // treasures                                    junk  range  tide  need deep showsKind
        {1, translatable("Calm Cove"),
         translatable("Low tide, warm sand. Sweep slowly and you'll feel it."),
         {coin, ring, coin},                               0, 0.55, 100,   2,   0,   true},
        {2, translatable("Shell Bay"),
         translatable("Not everything that beeps is gold."),
         {coin, key, ring, coin},                          2, 0.50, 100,   3,   0,   true},
        {3, translatable("Pier Shallows"),
         translatable("Under the boardwalk, everybody drops something."),
         {watch, coin, ring, coin},                        4, 0.46,  95,   3,   1,   true},
        {4, translatable("Smugglers' Inlet"),
         translatable("Bottle caps by the hundred. Gold by the handful."),
         {key, compass, coin, gem},                        5, 0.43,  95,   3,   1,   true},
        {5, translatable("Lighthouse Point"),
         translatable("The old detector's screen is dead. Steady ticks are gold; double ticks are junk."),
         {ring, watch, coin, compass, coin},               6, 0.41, 100,   4,   2,   false},
        {6, translatable("Wreck Sands"),
         translatable("A brig broke up on the bar in 1888. Some of it is still here."),
         {gem, coin, coin, watch, compass},                7, 0.39, 100,   4,   2,   false},
        {7, translatable("Storm Beach"),
         translatable("Last night's storm turned the whole beach over."),
         {ring, gem, key, coin, watch, coin},              9, 0.37, 110,   5,   3,   false},
        {8, translatable("Pirates' Landing"),
         translatable("X never marks the spot."),
         {chest, gem, compass, coin, ring, watch},        10, 0.36, 125,   5,   3,   false},
    };
    // clang-format on
    return table;
}

const BeachSpec& Campaign::beach(std::int64_t number) {
    const auto& table = beaches();
    const auto last = static_cast<std::int64_t>(table.size());
    return table[static_cast<std::size_t>(std::clamp<std::int64_t>(number, 1, last) - 1)];
}

}  // namespace gull
