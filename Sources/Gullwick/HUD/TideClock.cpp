#include "Gullwick/HUD/TideClock.h"

#include "Engine/Views/Layout.h"
#include "Gullwick/HUD/ClockText.h"
#include "Gullwick/HUD/Palette.h"

#include <cmath>

namespace gull {

namespace {

View pingsLine(const HudState& game, int pings) {
    return text(game.language.tr("PINGS {}", pings), Type::mono(10, FontWeight::semibold), Palette::sea, 3);
}

}  // namespace

bool TideClock::isUrgent() const {
    return game.timeLeft <= urgentSeconds && game.phase == HudState::Phase::playing;
}

double TideClock::share() const {
    const double ratio = game.timeLeft / game.spec.tideSeconds;
    if (ratio < 0) return 0;
    return ratio < 1 ? ratio : 1;  // 1 for NaN, too
}

double TideClock::pingsWidth() const {
    return Layout::measure(pingsLine(game, 99)).width;
}

View TideClock::body() const {
    const Colour water = isUrgent() ? Palette::coral : Palette::sea;
    const Font label = Type::mono(10, FontWeight::semibold);
    std::vector<View> lines = views(row(8, Place::centre,
                                        views(sign(Symbol::waves, 18, water),
                                              text(clock(game.timeLeft), Type::digits(32, FontWeight::bold),
                                                   isUrgent() ? Palette::coral : Palette::cream))),
                                    text(game.language.tr("UNTIL HIGH TIDE"), label, Palette::dim, 3),
                                    shape(capsule().filled(Palette::cream.withAlpha(0.15)))
                                        .named("tide.bar")
                                        .under(shape(capsule().filled(water))
                                                   .named("tide.left")
                                                   .framed(barWidth * share(), barHeight)
                                                   .framed(barWidth, barHeight, Place::start))
                                        .framed(barWidth, barHeight));
    if (game.pings >= 1) {
        lines.push_back(pingsLine(game, game.pings));
    }
    return column(4, Place::end, std::move(lines)).shadowed(Palette::black.withAlpha(0.5), 6).named("tide");
}

}  // namespace gull
