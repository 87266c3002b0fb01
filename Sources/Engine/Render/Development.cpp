#include "Engine/Render/Development.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace gull {

Development::Development(VertexStages& stages, const ScreenPass& screen)
    : screen_(screen),
      bright_(stages, "bright pass", {shaders::fullScreen}, {shaders::brightFragment}),
      blur_(stages, "glow", {shaders::fullScreen}, {shaders::blurFragment}),
      film_(stages, "film", {shaders::fullScreen}, {shaders::gradeFragment}),
      noBloom_(plainTarget(Format::rgba16f, 0)),
      noPaint_(plainTarget(Format::rgba8, 1)) {}

unsigned Development::bloom(unsigned light, const Viewpoint& view) {
    const Camera& camera = view.camera;
    if (!camera.hdr || camera.bloomIntensity <= 0) return 0;
    PixelSize quarter{std::max(1, view.size.width / 4), std::max(1, view.size.height / 4)};
    if (!glow_ || !(glow_.size() == quarter)) {
        glow_ = Target(quarter, {{Format::rgba16f}});
        blurred_ = Target(quarter, {{Format::rgba16f}});
    }
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glow_.bind();
    bindTexture(unitSource, light);
    bright_.use();
    bright_.set("texel", glm::vec2(1.0 / view.size.width, 1.0 / view.size.height));
    bright_.set("threshold", static_cast<float>(camera.bloomThreshold));
    screen_.draw(bright_);

    // Nine taps reach two sigma to either side; the camera's radius is two sigma.
    double radius = camera.bloomBlurRadius * view.size.height / 800.0 / 4;
    auto tap = static_cast<float>(std::max(radius / 4, 0.5));
    blur_.use();
    for (int pass = 0; pass < 2; ++pass) {
        float reach = tap * static_cast<float>(pass + 1);
        blurred_.bind();
        bindTexture(unitSource, glow_.colour());
        blur_.set("step_", glm::vec2(reach / static_cast<float>(quarter.width), 0));
        screen_.draw(blur_);
        glow_.bind();
        bindTexture(unitSource, blurred_.colour());
        blur_.set("step_", glm::vec2(0, reach / static_cast<float>(quarter.height)));
        screen_.draw(blur_);
    }
    return glow_.colour();
}

void Development::copyBloom(const Target& to) const {
    copyArea(glow_.colour(), to.colour(), PixelArea::whole(glow_.size()), false);
}

void Development::develop(unsigned light, unsigned bloom, unsigned paint, const Viewpoint& view) {
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    bindTexture(unitSource, light);
    bindTexture(unitBloom, bloom != 0 ? bloom : noBloom_.colour());
    bindTexture(unitKeptPaint, paint != 0 ? paint : noPaint_.colour());
    film_.use();
    film_.set("plain", view.camera.hdr ? 0.0F : 1.0F);
    screen_.draw(film_);
}

}  // namespace gull
