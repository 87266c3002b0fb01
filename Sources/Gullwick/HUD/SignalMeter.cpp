#include "Gullwick/HUD/SignalMeter.h"

#include "Engine/Log/Require.h"
#include "Gullwick/HUD/Palette.h"

#include <cmath>

namespace gull {

long long SignalMeter::lit() const {
    const double count = std::ceil(game.meter * bars);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    require(count >= -limit && count < limit, "SignalMeter: a signal of {} cannot be shown", game.meter);
    return static_cast<long long>(count);
}

Colour SignalMeter::litColour() const {
    if (!game.spec.showsKind) return Palette::sea;
    return game.meterIsTreasure ? Palette::gold : Palette::slate;
}

std::string SignalMeter::caption() const {
    const Language& language = game.language;
    if (!game.spec.showsKind) return language.tr("SIGNAL · NO DISPLAY");
    if (game.meter < faintest) return language.tr("SIGNAL");
    return game.meterIsTreasure ? language.tr("SIGNAL · METAL") : language.tr("SIGNAL · JUNK?");
}

View SignalMeter::tickMark() const {
    constexpr double size = 12;
    // One colour for all: without a display, the meter must not tell more than the ear hears.
    const Colour light = Palette::sea.withAlpha(tick);
    return shape(capsule().filled(light).stroked(tick > 0 ? Palette::sea : Palette::cream.withAlpha(0.28)))
        .framed(size, size)
        .named("signal.tick");
}

View SignalMeter::body() const {
    const long long count = lit();
    std::vector<View> row1;
    for (int i = 0; i < bars; ++i) {
        const Colour colour = i < count ? litColour() : Palette::cream.withAlpha(0.14);
        row1.push_back(shape(roundedRectangle(1.5).filled(colour))
                           .framed(7, 8 + 2.2 * i)
                           .named("signal.bar." + std::to_string(i)));
    }
    View levels = row(3, Place::end, std::move(row1));
    if (game.showTicks) levels = row(14, Place::end, views(std::move(levels), tickMark()));
    return column(6, Place::start,
                  views(std::move(levels),
                        text(caption(), Type::mono(9, FontWeight::semibold), Palette::dim, 2).shrunkToFit()))
        .padded(14, 10)
        .framed(width, std::nullopt, Place::start)
        .behind(shape(roundedRectangle(10).filled(Palette::panel).stroked(Palette::panelLine)))
        .named("signal");
}

}  // namespace gull
