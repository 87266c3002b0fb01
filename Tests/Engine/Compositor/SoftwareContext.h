#pragma once

#include "Engine/Compositor/Renderer.h"
#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Gl/Target.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>

namespace gull::test {

/// Gives each test a renderer in a context without a window; a machine without one fails.
class RenderTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string reason;
        context_ = OffscreenContext::create(&reason);
        ASSERT_TRUE(context_) << reason;
        device.emplace();
        renderer.emplace();
    }
    void TearDown() override {
        renderer.reset();
        device.reset();
        context_.reset();
    }

    /// Something to draw into, like a window.
    Target makeWindow(const PixelSize& size) { return Target(*device, size, {{Format::rgba8}}); }

    std::optional<GraphicsDevice> device;  ///< for targets; the renderer has its own
    std::optional<Renderer> renderer;

  private:
    std::unique_ptr<OffscreenContext> context_;
};

/// Peak signal to noise, decibels, over the colours of `area` (all when empty); 99 for equal pictures.
inline double psnr(const Image& a, const Image& b, const PixelRect& area = {}) {
    PixelRect r = area.width > 0 ? area : PixelRect{0, 0, a.width, a.height};
    double sum = 0;
    for (int y = r.y; y < r.y + r.height; ++y)
        for (int x = r.x; x < r.x + r.width; ++x)
            for (int k = 0; k < 3; ++k) {
                double d = double(a.at(x, y)[k]) - double(b.at(x, y)[k]);
                sum += d * d;
            }
    double mean = sum / (3.0 * r.width * r.height);
    return mean > 0 ? 10 * std::log10(255 * 255 / mean) : 99;
}

}  // namespace gull::test
