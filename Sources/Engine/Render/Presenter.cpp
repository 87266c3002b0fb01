#include "Engine/Render/Presenter.h"

#include <epoxy/gl.h>

namespace gull {

void Presenter::begin(unsigned framebuffer, const PixelSize& size) {
    const bool same = framebuffer == framebuffer_ && size == squares_.size();
    if (!same) squares_.begin(size);
    if (!kept_) squares_.markAll();
    kept_ = false;
    framebuffer_ = framebuffer;
    changes_.clear();
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
}

void Presenter::copy(unsigned picture, const std::vector<PixelArea>& changes) {
    if (picture != picture_) squares_.markAll();
    picture_ = picture;
    for (const PixelArea& area : changes) squares_.mark(area);
    changes_ = squares_.take();
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    pass_.draw(picture, size(), changes_);
}

void Presenter::stretch(unsigned picture) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    pass_.stretch(picture, size());
    redrawn();
}

void Presenter::bend(unsigned picture, const glm::dmat3& toPicture) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    pass_.drawBent(picture, size(), toPicture);
    redrawn();
}

void Presenter::fade(unsigned picture, double opacity) {
    pass_.stretch(picture, size(), opacity);
    redrawn();
}

void Presenter::redrawn() {
    picture_ = 0;
    squares_.markAll();
    changes_ = squares_.take();
}

const std::vector<PixelArea>& Presenter::uncover(const std::vector<PixelArea>& areas) {
    const bool wasWhole = changes_.size() == 1 && changes_.front() == PixelArea::whole(size());
    if (areas.empty() || wasWhole) return changes_;
    for (const PixelArea& area : areas) squares_.mark(area);
    const std::vector<PixelArea> uncovered = squares_.take();
    pass_.draw(picture_, size(), uncovered);
    for (const PixelArea& area : uncovered) squares_.mark(area);
    for (const PixelArea& area : changes_) squares_.mark(area);
    changes_ = squares_.take();
    return changes_;
}

}  // namespace gull
