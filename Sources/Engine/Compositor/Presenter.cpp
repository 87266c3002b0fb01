#include "Engine/Compositor/Presenter.h"

#include "Engine/Render/PicturePass.h"
#include "Engine/Render/RenderContext.h"

namespace gull {

void Presenter::begin(unsigned framebuffer, const PixelSize& size) {
    const bool same = framebuffer == framebuffer_ && size == squares_.size();
    if (!same) squares_.begin(size);
    if (!preserved_) squares_.markAll();
    preserved_ = false;
    framebuffer_ = framebuffer;
    changes_.clear();
}

void Presenter::copy(TextureRef picture, const std::vector<PixelArea>& changes) {
    if (!(picture == picture_)) squares_.markAll();
    picture_ = picture;
    for (const PixelArea& area : changes) squares_.mark(area);
    changes_ = squares_.take();
    copyPicture(context_, target(), picture, changes_);
}

void Presenter::stretch(TextureRef picture) {
    stretchPicture(context_, target(), picture);
    redrawn();
}

void Presenter::bend(TextureRef picture, const glm::dmat3& toPicture) {
    bendPicture(context_, target(), picture, toPicture);
    redrawn();
}

void Presenter::fade(TextureRef picture, double opacity) {
    stretchPicture(context_, target(), picture, opacity);
    redrawn();
}

void Presenter::redrawn() {
    picture_ = {};
    squares_.markAll();
    changes_ = squares_.take();
}

const std::vector<PixelArea>& Presenter::uncover(const std::vector<PixelArea>& areas) {
    const bool wasWhole = changes_.size() == 1 && changes_.front() == PixelArea::whole(size());
    if (areas.empty() || wasWhole) return changes_;
    for (const PixelArea& area : areas) squares_.mark(area);
    const std::vector<PixelArea> uncovered = squares_.take();
    copyPicture(context_, target(), picture_, uncovered);
    for (const PixelArea& area : uncovered) squares_.mark(area);
    for (const PixelArea& area : changes_) squares_.mark(area);
    changes_ = squares_.take();
    return changes_;
}

}  // namespace gull
