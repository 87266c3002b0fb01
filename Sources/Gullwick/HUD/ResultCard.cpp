#include "Gullwick/HUD/ResultCard.h"

#include "Gullwick/HUD/ClockText.h"
#include "Gullwick/HUD/Palette.h"
#include "Gullwick/HUD/StarsView.h"

#include <fmt/format.h>

namespace gull {

namespace {

constexpr double slotSize = 48;
constexpr double defaultSymbolSize = 13;
constexpr Colour cardColour{0.02, 0.08, 0.1, 0.88};

View figure(const std::string& value, const std::string& label) {
    return column(4, Place::centre,
                  views(text(value, Type::digits(20, FontWeight::bold), Palette::cream),
                        text(label, Type::mono(9, FontWeight::semibold), Palette::dim, 3)));
}

View hint(std::string words) {
    return text(std::move(words), Type::mono(11, FontWeight::semibold), Palette::cream, 1.5)
        .padded(10, 6)
        .behind(shape(roundedRectangle(5).stroked(Palette::dim)));
}

}  // namespace

std::string ResultCard::headline() const {
    const Language& language = game.language;
    if (game.earnedStars >= 3)
        return game.isLastBeach() ? language.tr("THE PIRATES' GOLD") : language.tr("CLEAN SWEEP");
    if (game.earnedStars == 2) return language.tr("EVERY LAST ONE");
    return isPassed() ? language.tr("BEACH CLEARED") : language.tr("THE TIDE CAME IN");
}

std::string ResultCard::verdict() const {
    const Language& language = game.language;
    if (game.earnedStars >= 3) {
        return game.isLastBeach() ? language.tr("Every beach combed. The chest is yours.")
                                  : language.tr("Every treasure, not one bottle cap.");
    }
    if (game.earnedStars == 2)
        return language.tr("All found. Leave the junk in the sand for the third star.");
    if (isPassed()) return language.tr("Some treasure is still down there. Find it all for a second star.");
    return language.tr("You needed {} finds and dug up {}.", game.spec.need, game.finds());
}

View ResultCard::treasures() const {
    std::vector<View> slots;
    for (std::size_t i = 0; i < game.spec.treasures.size(); ++i) {
        View content = game.isFound(i)
                           ? picture(&icons.image(game.spec.treasures[i])).framed(slotSize - 8, slotSize - 8)
                           : sign(Symbol::questionMark, defaultSymbolSize, times(Palette::dim, 0.5));
        slots.push_back(std::move(content)
                            .framed(slotSize, slotSize)
                            .behind(shape(roundedRectangle(8).filled(Palette::white.withAlpha(0.06))))
                            .named("card.slot." + std::to_string(i)));
    }
    return row(10, Place::centre, std::move(slots));
}

View ResultCard::figures() const {
    const Language& language = game.language;
    std::vector<View> all =
        views(figure(std::to_string(game.haul), language.tr("HAUL")),
              figure(fmt::format("{}/{}", game.finds(), game.spec.treasures.size()), language.tr("FINDS")),
              figure(std::to_string(game.junkCount), language.tr("JUNK")),
              figure(clock(game.timeLeft), language.tr("TIDE LEFT")));
    if (game.pings > 0) all.push_back(figure(std::to_string(game.pings), language.tr("PINGS")));
    return row(30, Place::centre, std::move(all)).named("card.figures");
}

View ResultCard::hints() const {
    const Language& language = game.language;
    std::vector<View> all;
    const bool byController = game.controls.kind == Controls::Kind::controller;
    const Controls::Buttons& buttons = game.controls.buttons;
    const auto key = [&](const std::string& button, const char* letter) {
        return byController ? language.tr(Controls::label(button)) : std::string(letter);
    };
    const std::string goOn =
        byController ? language.tr(Controls::label(buttons.dig)) : language.tr("click / ↩");
    if (isPassed() && !game.isLastBeach()) all.push_back(hint(language.tr("{}  next beach", goOn)));
    if (!isPassed()) all.push_back(hint(language.tr("{}  try again", goOn)));
    all.push_back(hint(language.tr("{}  replay", key(buttons.restart, "R"))));
    all.push_back(hint(language.tr("{}  all beaches", key(buttons.beaches, "L"))));
    return row(14, Place::centre, std::move(all)).named("card.hints").padded(0, 4, 0, 0);
}

View ResultCard::lesson() const {
    const std::string key = game.controls.kind == Controls::Kind::controller
                                ? game.language.tr(Controls::label(game.controls.buttons.ping))
                                : "H";
    return text(game.language.tr("{} points to the nearest treasure, for 5 s of tide", key),
                Type::mono(11, FontWeight::semibold), Palette::sea, 1)
        .named("card.lesson");
}

View ResultCard::body() const {
    const Colour mood = isPassed() ? Palette::gold : Palette::coral;
    std::vector<View> lines =
        views(text(headline(), Type::mono(28, FontWeight::bold), mood, 6),
              text(verdict(), Type::italic(15), Palette::cream.withAlpha(0.85)),
              StarsView{game.earnedStars, 30}.body().named("card.stars"), treasures(), figures());
    if (game.isFirstLoss && !isPassed()) lines.push_back(lesson());
    if (game.isNewBest && isPassed()) {
        lines.push_back(
            text(game.language.tr("NEW BEST HAUL"), Type::mono(10, FontWeight::bold), Palette::sea, 4));
    }
    if (game.isLastBeach() && isPassed()) {
        lines.push_back(text(game.language.tr("TOTAL {}", campaignTotal(game.progress)),
                             Type::mono(11, FontWeight::semibold), Palette::dim, 3));
    }
    lines.push_back(hints());
    View outline = shape(roundedRectangle(16).filled(cardColour).stroked(mood.withAlpha(0.5)))
                       .shadowed(Palette::black.withAlpha(0.5), 30);
    return column(16, Place::centre, std::move(lines))
        .padded(40, 26)
        .behind(std::move(outline))
        .named("card");
}

}  // namespace gull
