#include "Engine/Compositor/Renderer.h"

#include "Engine/Compositor/OverlayLayers.h"
#include "Engine/Compositor/Presenter.h"
#include "Engine/Compositor/ShaderWarmUp.h"
#include "Engine/Compositor/WindowCompositor.h"
#include "Engine/Log/Require.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/SnapshotPass.h"

#include <array>
#include <vector>

namespace gull {

namespace {

void requireSize(const PixelSize& size) {
    require(size.width > 0 && size.height > 0, "Renderer: a picture of {} x {} cannot be drawn", size.width,
            size.height);
}

std::array<float, 4> clearColour(const Colour& c) {
    return {static_cast<float>(c.r), static_cast<float>(c.g), static_cast<float>(c.b), 1};
}

}  // namespace

struct Renderer::Impl {
    RenderContext context;
    WindowCompositor window{context};
    OverlayLayers overlay{context};
    Presenter presenter{context};
    ShaderWarmUp warmUp{context};
    RenderTier tier = RenderTier::full;

    /// The window system and others may have used the context since the last call.
    GraphicsDevice& device() {
        context.device.forgetState();
        return context.device;
    }
};

Renderer::Renderer() : impl_(std::make_unique<Impl>()) {}
Renderer::~Renderer() = default;

void Renderer::setTier(RenderTier tier) {
    impl_->tier = tier;
}
RenderTier Renderer::tier() const {
    return impl_->tier;
}
void Renderer::frameTook(double seconds) {
    impl_->window.frameTook(seconds);
}
void Renderer::finish() {
    impl_->context.device.finish();
}
bool Renderer::warmUp(double budget) {
    impl_->device();
    return impl_->warmUp.run(impl_->tier, budget);
}
bool Renderer::onlyWaterMoved() const {
    return impl_->tier == RenderTier::fast && impl_->window.onlyWaterMoved();
}
bool Renderer::settled() const {
    return impl_->window.settled();
}

void Renderer::fillPlaceholder(const PixelSize& size, unsigned framebuffer, const Colour& above,
                               const Colour& below, double share) {
    const DrawTarget whole{framebuffer, PixelArea::whole(size), {}};
    const PixelArea lower{0, 0, size.width, size.height - static_cast<int>(size.height * share)};
    GraphicsDevice& device = impl_->device();
    device.clear(whole, {clearColour(above), {}});
    device.clear(whole.within(lower), {clearColour(below), {}});
}

void Renderer::draw(const Stage& stage, const PixelSize& size, unsigned framebuffer, BuildMode mode) {
    requireSize(size);
    impl_->device();
    impl_->presenter.begin(framebuffer, size);
    impl_->window.draw(stage, impl_->presenter, impl_->tier, mode);
}

void Renderer::drawOverlay(std::span<const OverlayLayer> layers) {
    impl_->device();
    Presenter& presenter = impl_->presenter;
    const std::vector<PixelArea> changes = impl_->overlay.show(layers, presenter.size());
    impl_->overlay.draw(presenter.target(), presenter.uncover(changes));
}

void Renderer::setPicturePreserved(bool preserved) {
    impl_->presenter.setPreserved(preserved);
}

std::vector<PixelRect> Renderer::changes() const {
    std::vector<PixelRect> changes;
    for (const PixelArea& area : impl_->presenter.changes())
        changes.push_back({area.x, impl_->presenter.size().height - area.top(), area.width, area.height});
    return changes;
}

Image Renderer::readBack(const PixelSize& size) {
    return impl_->device().readColour(impl_->presenter.target().framebuffer, size);
}

Image Renderer::snapshot(const Stage& stage, const PixelSize& size) {
    requireSize(size);
    GraphicsDevice& device = impl_->device();
    const Target picture = drawSnapshot(impl_->context, stage, size);
    return device.readColour(picture.framebuffer(), size);
}

void Renderer::collectGarbage() {
    impl_->context.collectGarbage();
}

std::vector<ProgramKey> Renderer::programs() const {
    return impl_->context.programs.keys();
}

void Renderer::setSpoiling(bool spoiling) {
    impl_->context.device.setSpoiling(spoiling);
}

}  // namespace gull
