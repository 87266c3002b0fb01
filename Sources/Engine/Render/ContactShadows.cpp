#include "Engine/Render/ContactShadows.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

namespace {
// Uniforms only so that the loops stay loops, see the shaders.
constexpr int looks = 12;
constexpr int blurRows = 4;
}  // namespace

ContactShadows::Programs::Programs(VertexStages& stages)
    : find(stages, "contact shadows", {shaders::fullScreen}, {shaders::occlusionFragment}),
      blur(stages, "contact shadow blur", {shaders::fullScreen}, {shaders::occlusionBlurFragment}) {}

void ContactShadows::draw(unsigned depth, const Viewpoint& view, const PixelArea& area) {
    PixelSize half{(view.size.width + 1) / 2, (view.size.height + 1) / 2};
    if (!raw_ || !(raw_.size() == half)) {
        raw_ = Target(half, {{Format::rgba8}});
        result_ = Target(half, {{Format::rgba8}});
    }
    const glm::dmat4& p = view.projection;
    double aspect = static_cast<double>(view.size.width) / view.size.height;
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glEnable(GL_SCISSOR_TEST);
    bindTexture(unitKeptDepth, depth);

    raw_.bind();
    PixelArea around = area.grown(8);
    glScissor(around.x / 2, around.y / 2, around.width / 2 + 1, around.height / 2 + 1);
    programs_.find.use();
    programs_.find.set("reach", glm::vec4(options_.occlusionRadius, options_.occlusionRadius * p[1][1] / 2,
                                          options_.occlusionStrength, 1 / aspect));
    programs_.find.set("looks", looks);
    screen_.draw(programs_.find);

    result_.bind();
    glScissor(area.x / 2, area.y / 2, area.width / 2 + 1, area.height / 2 + 1);
    bindTexture(unitSource, raw_.colour());
    programs_.blur.use();
    programs_.blur.set("texel", glm::vec2(1.0 / half.width, 1.0 / half.height));
    programs_.blur.set("rows", blurRows);
    screen_.draw(programs_.blur);
    glDisable(GL_SCISSOR_TEST);
}

void ContactShadows::clear() {
    if (result_ && !raw_) return;  // clear already
    raw_ = Target();
    result_ = plainTarget(Format::rgba8, 1);
}

void ContactShadows::bind() const {
    bindTexture(unitOcclusion, result_ ? result_.colour() : 0);
}

}  // namespace gull
