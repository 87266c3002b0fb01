#include "Gullwick/HUD/Tray.h"

#include "Gullwick/HUD/Palette.h"

#include <algorithm>

namespace gull {

namespace {

constexpr double iconInset = 5;
constexpr double needOffset = 31;  // from a slot's centre into the gap after it
constexpr double smallest = 1e-5;  // a found item grows from this

}  // namespace

View Tray::slot(std::size_t index) const {
    const double spring = index < sprung.size() ? sprung[index] : (game.isFound(index) ? 1 : 0);
    const double filled = std::clamp(spring, 0.0, 1.0);
    std::vector<View> parts =
        views(shape(roundedRectangle(9)
                        .filled(Palette::panel)
                        .stroked(mixed(Palette::cream.withAlpha(0.28), Palette::gold.withAlpha(0.8), filled),
                                 1 + 0.5 * filled))
                  .framed(slotSize, slotSize));
    if (filled < 1) {
        parts.push_back(
            text("?", Type::mono(16, FontWeight::bold), Palette::cream.withAlpha(0.3 * (1 - filled))));
    }
    if (filled > 0) {
        const double side = slotSize - 2 * iconInset;
        parts.push_back(picture(&icons.image(game.spec.treasures[index]))
                            .framed(side, side)
                            .scaled(std::max(spring, smallest))
                            .faded(filled));
    }
    if (static_cast<long long>(index) == static_cast<long long>(game.spec.need) - 1) {
        parts.push_back(shape(rectangle().filled(Palette::coral.withAlpha(0.85)))
                            .framed(2, slotSize)
                            .named("tray.need")
                            .offset(needOffset, 0));
    }
    return layers(std::move(parts)).framed(slotSize, slotSize).named("tray.slot." + std::to_string(index));
}

View Tray::body() const {
    std::vector<View> slots;
    for (std::size_t i = 0; i < game.spec.treasures.size(); ++i) slots.push_back(slot(i));
    const std::string summary = game.language.tr("FINDS {} / {}  ·  NEED {}  ·  HAUL {}", game.finds(),
                                                 game.spec.treasures.size(), game.spec.need, game.haul);
    return column(6, Place::centre,
                  views(row(slotSpacing, Place::centre, std::move(slots)),
                        text(summary, Type::mono(9, FontWeight::semibold), Palette::dim, 2)))
        .padded(12, 9)
        .behind(shape(roundedRectangle(12).filled(times(Palette::panel, 0.6))))
        .named("tray");
}

}  // namespace gull
