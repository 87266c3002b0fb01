#include "Gullwick/HUD/FindPopup.h"

#include "Gullwick/HUD/HudState.h"
#include "Gullwick/HUD/Palette.h"

#include <fmt/format.h>

namespace gull {

View FindPopup::body() const {
    if (!pose.shown || pose.alpha <= 0) return {};
    const ItemKind kind = *pose.shown;
    View card = row(10, Place::centre,
                    views(picture(&icons.image(kind)).framed(44, 44),
                          column(2, Place::start,
                                 views(text(fmt::format("+{}", value(kind)), Type::mono(22, FontWeight::bold),
                                            Palette::gold),
                                       text(upperCase(language.translated(name(kind))),
                                            Type::mono(11, FontWeight::semibold), Palette::cream, 3)))))
                    .padded(16, 8)
                    .behind(shape(capsule().filled(Palette::panel).stroked(Palette::gold.withAlpha(0.6))))
                    .named("popup")
                    .onLayer("popup", pose.alpha, 0, -pose.lift);
    return column(0, Place::centre, views(gap(), std::move(card), gap(bottomGap)));
}

}  // namespace gull
