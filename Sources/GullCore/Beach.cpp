#include "GullCore/Beach.h"

#include "Engine/Language/Message.h"

#include <cmath>
#include <cstddef>

namespace gull {
namespace {

struct KindRow {
    std::string_view rawValue;
    std::string_view name;
    int value;
};

// In the order of ItemKind.
constexpr std::array<KindRow, 11> kindTable{{
    {"coin", translatable("Gold doubloon"), 50},
    {"ring", translatable("Signet ring"), 120},
    {"watch", translatable("Pocket watch"), 200},
    {"key", translatable("Iron key"), 80},
    {"gem", translatable("Emerald"), 250},
    {"compass", translatable("Brass compass"), 150},
    {"chest", translatable("Treasure chest"), 1000},
    {"cap", translatable("Bottle cap"), 0},
    {"can", translatable("Soda can"), 0},
    {"nail", translatable("Rusty nail"), 0},
    {"foil", translatable("Foil wrapper"), 0},
}};

const KindRow& row(ItemKind kind) {
    return kindTable.at(static_cast<std::size_t>(kind));
}

/// std::clamp would treat -0 and NaN differently.
double unit(double v) {
    if (v <= 0) return 0;
    if (v > 1) return 1;
    return v;
}

}  // namespace

double PlotPoint::distance(const PlotPoint& to) const {
    const double dx = Plot::aspect * (to.x - x);
    const double dy = to.y - y;
    return std::sqrt(dx * dx + dy * dy);
}

PlotPoint PlotPoint::clamped() const {
    return {unit(x), unit(y)};
}

PlotPoint PadMap::plotPoint(double nx, double ny) {
    constexpr double inner = 0.9;  // 1 - 2 * inset, to the last bit
    return PlotPoint{(nx - inset) / inner, (ny - inset) / inner}.clamped();
}

std::string_view rawValue(ItemKind kind) {
    return row(kind).rawValue;
}

std::optional<ItemKind> itemKind(std::string_view rawValue) {
    for (const ItemKind kind : allKinds()) {
        if (row(kind).rawValue == rawValue) return kind;
    }
    return std::nullopt;
}

std::string_view name(ItemKind kind) {
    return row(kind).name;
}

int value(ItemKind kind) {
    return row(kind).value;
}

bool isTreasure(ItemKind kind) {
    return kind <= ItemKind::chest;
}

const std::array<ItemKind, 11>& allKinds() {
    using enum ItemKind;
    static constexpr std::array<ItemKind, 11> kinds{coin,  ring, watch, key,  gem, compass,
                                                    chest, cap,  can,   nail, foil};
    return kinds;
}

const std::array<ItemKind, 4>& junkKinds() {
    using enum ItemKind;
    static constexpr std::array<ItemKind, 4> kinds{cap, can, nail, foil};
    return kinds;
}

}  // namespace gull
