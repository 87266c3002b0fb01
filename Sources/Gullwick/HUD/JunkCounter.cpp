#include "Gullwick/HUD/JunkCounter.h"

#include "Gullwick/HUD/Palette.h"

#include <string>

namespace gull {

View JunkCounter::body() const {
    const Language& language = game.language;
    const std::string label = game.spec.junk != 0 ? language.tr("JUNK DUG") : language.tr("NO JUNK HERE");
    return column(6, Place::end,
                  views(row(8, Place::centre,
                            views(picture(&icons.image(ItemKind::cap))
                                      .framed(26, 26)
                                      .named("junk.icon")
                                      .faded(game.junkCount > 0 ? 1 : 0.4),
                                  text(std::to_string(game.junkCount), Type::digits(22, FontWeight::bold),
                                       game.junkCount >= 1 ? Palette::cream : Palette::dim))),
                        text(label, Type::mono(9, FontWeight::semibold), Palette::dim, 2).shrunkToFit()))
        .padded(14, 10)
        .framed(width, std::nullopt, Place::end)
        .behind(shape(roundedRectangle(10).filled(Palette::panel).stroked(Palette::panelLine)))
        .named("junk");
}

}  // namespace gull
