#include "Engine/Render/ContactShadows.h"

#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

namespace gull {

namespace {
// Passed as uniforms so that the loops stay loops; see the shaders.
constexpr int tapCount = 12;
constexpr int blurRows = 4;
}  // namespace

void ContactShadows::draw(RenderContext& context, const Inputs& inputs, const Viewpoint& view,
                          const PixelArea& area) {
    const PixelSize half{(view.size.width + 1) / 2, (view.size.height + 1) / 2};
    ensureSize(context.device, raw_, half, {{Format::rgba8}});
    ensureSize(context.device, result_, half, {{Format::rgba8}});
    const RenderOptions& options = context.options;
    const glm::dmat4& p = view.projection;
    const double aspect = static_cast<double>(view.size.width) / view.size.height;
    const auto halved = [](const PixelArea& a) {
        return PixelArea{a.x / 2, a.y / 2, a.width / 2 + 1, a.height / 2 + 1};
    };

    DrawState find;
    find.target = raw_.whole().within(halved(area.grown(8)));
    find.program = &context.programs.get({ProgramKind::contactShadows});
    find.frameUniforms = inputs.frameUniforms;
    find.textures = {{unitStaticDepth, inputs.depth}};
    find.uniforms = {
        {"reach", glm::vec4(options.contactShadowRadius, options.contactShadowRadius * p[1][1] / 2,
                            options.contactShadowStrength, 1 / aspect)},
        {"tapCount", tapCount},
        {"eyeTurn", glm::mat3(glm::dmat3(view.world))},
        {"skyExponent", options.contactShadowOfSky}};
    find.textures.push_back(
        {unitSunShadow, inputs.sunShadow ? inputs.sunShadow : context.standIns.farthestShadow.depth()});
    inputs.sky.addTo(context, find);
    drawScreen(context, std::move(find));

    DrawState blur;
    blur.target = result_.whole().within(halved(area));
    blur.program = &context.programs.get({ProgramKind::contactShadowBlur});
    blur.frameUniforms = inputs.frameUniforms;
    blur.textures = {{unitStaticDepth, inputs.depth}, {unitSource, raw_.colour()}};
    blur.uniforms = {{"texel", glm::vec2(1.0 / half.width, 1.0 / half.height)}, {"rows", blurRows}};
    drawScreen(context, std::move(blur));
}

}  // namespace gull
