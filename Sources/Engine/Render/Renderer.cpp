#include "Engine/Render/Renderer.h"

#include "Engine/Render/Presenter.h"
#include "Engine/Render/SheetPainter.h"
#include "Engine/Render/SnapshotPainter.h"
#include "Engine/Render/Studio.h"
#include "Engine/Render/WindowPainter.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace gull {

namespace {

std::string glString(GLenum name) {
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text ? text : "";
}

/// Before any other OpenGL call of the renderer, so that an old context gets a clear answer.
struct VersionCheck {
    VersionCheck() {
        const int version = epoxy_gl_version();
        if (version < 33 || (version < 41 && !epoxy_has_gl_extension("GL_ARB_separate_shader_objects")))
            throw std::runtime_error(fmt::format(
                "OpenGL 4.1, or 3.3 with separate shader objects, is needed; this machine offers \"{}\"",
                glString(GL_VERSION)));
    }
};

void requireSize(const Renderer::Size& size) {
    if (size.width > 0 && size.height > 0) return;
    std::fprintf(stderr, "Renderer: a picture of %d x %d cannot be drawn\n", size.width, size.height);
    std::abort();
}

}  // namespace

struct Renderer::Impl {
    VersionCheck check;
    Studio studio;
    SnapshotPainter snapshots{studio};
    RenderTier tier = RenderTier::full;
    WindowPainter window{studio, snapshots};
    SheetPainter sheets{studio.stages};
    Presenter presenter{studio.copy};
};

Renderer::Renderer() : impl_(std::make_unique<Impl>()) {}
Renderer::~Renderer() = default;

GraphicsInfo Renderer::graphicsInfo() {
    GraphicsInfo info{glString(GL_VENDOR), glString(GL_RENDERER), glString(GL_VERSION), false, 0};
    for (std::string_view name : {"llvmpipe", "softpipe", "swrast", "SWR", "Software"})
        if (info.renderer.find(name) != std::string::npos) info.isSoftware = true;
    GLint texture = 0, viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &texture);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    info.maximumSize = std::min({texture, viewport[0], viewport[1]});
    return info;
}

void Renderer::setTier(RenderTier tier) {
    impl_->tier = tier;
}
RenderTier Renderer::tier() const {
    return impl_->tier;
}
void Renderer::frameTook(double seconds) {
    impl_->studio.pace.frameTook(seconds);
}
bool Renderer::rehearse(const Stage& stage, double budget) {
    return impl_->window.rehearse(stage, impl_->tier, budget);
}
bool Renderer::settled() const {
    return impl_->window.settled();
}

void Renderer::sketch(const Size& size, unsigned framebuffer, const Colour& above, const Colour& below,
                      double share) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    auto fill = [](const Colour& c) {
        glClearColor(static_cast<float>(c.r), static_cast<float>(c.g), static_cast<float>(c.b), 1);
        glClear(GL_COLOR_BUFFER_BIT);
    };
    fill(above);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, size.width, size.height - static_cast<int>(size.height * share));
    fill(below);
    glDisable(GL_SCISSOR_TEST);
}

void Renderer::draw(const Stage& stage, const Size& size, unsigned framebuffer, bool wait) {
    requireSize(size);
    Presenter& presenter = impl_->presenter;
    presenter.begin(framebuffer, {size.width, size.height});
    impl_->window.draw(stage, presenter, impl_->tier, wait);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, size.width, size.height);
}

void Renderer::drawOverlay(std::span<const Sheet> sheets) {
    Presenter& presenter = impl_->presenter;
    glBindFramebuffer(GL_FRAMEBUFFER, presenter.framebuffer());
    impl_->sheets.draw(presenter.uncover(impl_->sheets.show(sheets, presenter.size())));
}

void Renderer::setPictureKept(bool kept) {
    impl_->presenter.setKept(kept);
}

std::vector<PixelRect> Renderer::changes() const {
    std::vector<PixelRect> changes;
    for (const PixelArea& area : impl_->presenter.changes())
        changes.push_back({area.x, impl_->presenter.size().height - area.top(), area.width, area.height});
    return changes;
}

Image Renderer::readBack(const Size& size) {
    glBindFramebuffer(GL_FRAMEBUFFER, impl_->presenter.framebuffer());
    return readPixels({size.width, size.height});
}

Image Renderer::snapshot(const Stage& stage, const Size& size) {
    requireSize(size);
    Target picture = impl_->snapshots.draw(stage, {size.width, size.height});
    glBindFramebuffer(GL_FRAMEBUFFER, picture.framebuffer());
    return readPixels(picture.size());
}

void Renderer::collectGarbage() {
    impl_->studio.collectGarbage();
}

}  // namespace gull
