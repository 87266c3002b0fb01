#include "Gullwick/HUD/StarsView.h"

#include "Gullwick/HUD/Palette.h"

namespace gull {

View StarsView::body() const {
    std::vector<View> stars;
    for (std::int64_t i = 0; i < 3; ++i) {
        stars.push_back(i < count ? sign(Symbol::starFill, size, Palette::gold)
                                  : sign(Symbol::star, size, times(Palette::dim, 0.6)));
    }
    return row(size * 0.18, Place::centre, std::move(stars));
}

}  // namespace gull
