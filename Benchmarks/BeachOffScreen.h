#pragma once

#include "Engine/Compositor/Renderer.h"
#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Gl/Target.h"
#include "Engine/Loop/Clock.h"
#include "Gullwick/Scene/BeachScene.h"

#include <memory>

namespace gull {

/// A beach, a renderer and a target, at 1240 x 800 unless told otherwise, without a window. The coil rests
/// until step() moves it.
struct BeachOffScreen {
    PixelSize size;
    std::unique_ptr<OffscreenContext> context = OffscreenContext::create();
    ManualClock clock;
    MainLoop loop{clock};
    DelayedWork work{loop};
    BeachScene scene{work};
    Renderer renderer;
    GraphicsDevice device;
    Target window{device, size, {{Format::bgra8}}};

    explicit BeachOffScreen(RenderTier tier = RenderTier::fast, const PixelSize& of = {1240, 800})
        : size(of) {
        scene.frame(static_cast<double>(size.width) / size.height);
        renderer.setTier(tier);
    }
    void step(double time, double dt, const PlotPoint& coil = {0.4, 0.4}) {
        scene.update(time, dt, coil, {0.1, 0}, 0, 0.6, {1, 0.76, 0.28, 1});
    }
    void draw(BuildMode mode) { renderer.draw(scene.stage(), size, window.framebuffer(), mode); }
};

}  // namespace gull
