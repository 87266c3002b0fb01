#include "Gullwick/HUD/BeachSelect.h"

#include "Engine/Log/Require.h"
#include "Gullwick/HUD/Palette.h"
#include "Gullwick/HUD/StarsView.h"
#include "Gullwick/Scene/Look.h"

#include <fmt/format.h>

#include <algorithm>

namespace gull {

namespace {

constexpr double radius = 10;
constexpr const char* tilePrefix = "select.tile.";

/// From the beach's sky down to its sand.
std::vector<GradientStop> gradient(int number, double opacity) {
    const BeachLook& look = BeachLook::forBeach(number);
    return {{0, look.skyMid.colour(opacity)},
            {0.5, look.horizon.colour(opacity)},
            {1, look.sand.scaled(0.8).colour(opacity)}};
}

}  // namespace

View BeachSelect::tile(const BeachSpec& beach, double swell) const {
    const bool unlocked = game.progress.isUnlocked(beach.number);
    const double chosen = std::clamp(swell, 0.0, 1.0);
    const Colour ink = unlocked ? Palette::cream : times(Palette::dim, 0.5);
    const Colour nameInk = unlocked ? Palette::cream : Palette::dim;  // small, but must be legible
    const auto best = game.progress.stars.find(beach.number);
    View result = unlocked ? StarsView{best == game.progress.stars.end() ? 0 : best->second, 11}.body()
                           : sign(Symbol::lockFill, 12, times(Palette::dim, 0.5));
    View content =
        column(8, Place::centre,
               views(text(fmt::format("{:02}", beach.number), Type::mono(26, FontWeight::bold), ink),
                     text(upperCase(game.language.translated(beach.name)),
                          Type::mono(9, FontWeight::semibold), nameInk, 1, TextAlign::centre, 2)
                         .noWiderThan(tileWidth - 12)
                         .framed(std::nullopt, 26),
                     std::move(result)));
    const double opacity = unlocked ? 0.32 + (0.55 - 0.32) * chosen : 0.12;
    const Colour border = mixed(times(Palette::dim, 0.3), Palette::coral, chosen);
    return std::move(content)
        .framed(tileWidth, tileHeight)
        .behind(shape(
            roundedRectangle(radius).filled(gradient(beach.number, opacity)).stroked(border, 1 + chosen)))
        .named(fmt::format("{}{}", tilePrefix, beach.number))
        .scaled(1 + swelling * swell);
}

std::optional<int> BeachSelect::tileAt(const Drawing& drawing, double x, double y) {
    const std::string name = drawing.at(x, y, tilePrefix);
    if (name.empty()) return std::nullopt;
    return std::stoi(name.substr(std::string_view(tilePrefix).size()));
}

View BeachSelect::hint() const {
    const Language& language = game.language;
    const Font font = Type::mono(10, FontWeight::regular);
    if (game.refusedBeach > 1 && game.refusedBeach == game.selection) {
        const BeachSpec& before = Campaign::beach(game.refusedBeach - 1);
        return text(language.tr("locked  ·  a star on beach {}, {}, opens it", before.number,
                                marked(before.name)),
                    font, Palette::coral, 1)
            .named("select.hint");
    }
    std::string words;
    switch (game.controls.kind) {
        case Controls::Kind::trackpad:
            words = language.tr(
                "touch the trackpad or use ← → ↑ ↓ to choose  ·  click or ↩ to go  ·  esc to go back");
            break;
        case Controls::Kind::mouse:
            words = language.tr("use ← → ↑ ↓ to choose  ·  click a beach or ↩ to go  ·  esc to go back");
            break;
        case Controls::Kind::controller:
            words = language.tr("left stick to choose  ·  {} to go  ·  {} to go back",
                                Controls::label(game.controls.buttons.dig),
                                Controls::label(game.controls.buttons.back));
            break;
    }
    return text(std::move(words), font, Palette::dim, 1).named("select.hint");
}

View BeachSelect::body() const {
    const std::vector<BeachSpec>& beaches = Campaign::beaches();
    require(beaches.size() >= static_cast<std::size_t>(rows * columns),
            "BeachSelect: a campaign of {} beaches does not fill the grid", beaches.size());
    std::vector<View> grid;
    for (std::size_t r = 0; r < rows; ++r) {
        std::vector<View> tiles;
        for (std::size_t c = 0; c < columns; ++c) {
            const std::size_t index = c + columns * r;
            tiles.push_back(tile(beaches[index], swollen[index]));
        }
        grid.push_back(row(spacing, Place::centre, std::move(tiles)));
    }
    return column(
               22, Place::centre,
               views(
                   text(game.language.tr("ALL BEACHES"), Type::mono(22, FontWeight::bold), Palette::coral, 8),
                   text(campaignTotal(game.progress), Type::mono(12, FontWeight::semibold), Palette::dim, 3),
                   column(spacing, Place::centre, std::move(grid)), hint()))
        .named("select");
}

}  // namespace gull
