#include "Engine/Render/PostProcessing.h"

#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <cmath>

namespace gull {

TextureRef Bloom::find(RenderContext& context, TextureRef light, const Viewpoint& view,
                       unsigned frameUniforms) {
    const Camera& camera = view.camera;
    if (!camera.hdr || camera.bloomIntensity <= 0) return {};
    const PixelSize quarter{std::max(1, view.size.width / 4), std::max(1, view.size.height / 4)};
    ensureSize(context.device, glow_, quarter, {{Format::rgba16f}});
    ensureSize(context.device, blurred_, quarter, {{Format::rgba16f}});

    DrawState bright;
    bright.target = glow_.whole();
    bright.program = &context.programs.get({ProgramKind::brightPass});
    bright.frameUniforms = frameUniforms;
    bright.textures = {{unitSource, light}};
    bright.uniforms = {{"texel", glm::vec2(1.0 / view.size.width, 1.0 / view.size.height)},
                       {"threshold", static_cast<float>(camera.bloomThreshold)}};
    drawScreen(context, bright);

    DrawState blur;
    blur.program = &context.programs.get({ProgramKind::bloomBlur});
    blur.frameUniforms = frameUniforms;
    const auto blurred = [&](const Target& from, const Target& to, const glm::vec2& step) {
        blur.target = to.whole();
        blur.textures = {{unitSource, from.colour()}};
        blur.uniforms = {{"step_", step}};
        drawScreen(context, blur);
    };
    // Nine taps reach two sigma to either side; the camera's radius is two sigma of both passes, of which the
    // second reaches twice as far: their variances add up to five times the first one's.
    const double radius = camera.bloomBlurRadius * view.size.height / 800.0 / 4;
    const auto tap = static_cast<float>(std::max(radius / 4 / std::sqrt(5.0), 0.25));
    for (int pass = 0; pass < 2; ++pass) {
        const float reach = tap * static_cast<float>(pass + 1);
        blurred(glow_, blurred_, {reach / static_cast<float>(quarter.width), 0});
        blurred(blurred_, glow_, {0, reach / static_cast<float>(quarter.height)});
    }
    return glow_.colour();
}

void toneMap(RenderContext& context, const DrawTarget& target, const ToneMappingInputs& inputs,
             const Viewpoint& view, unsigned frameUniforms) {
    DrawState state;
    state.target = target;
    state.program = &context.programs.get({ProgramKind::toneMapping});
    state.frameUniforms = frameUniforms;
    state.textures = {{unitSource, inputs.light},
                      {unitBloom, inputs.bloom ? inputs.bloom : context.standIns.black.colour()},
                      {unitPaint, inputs.paint ? inputs.paint : context.standIns.white.colour()}};
    state.uniforms = {{"encodeOnly", view.camera.hdr ? 0.0F : 1.0F}};
    drawScreen(context, std::move(state));
}

}  // namespace gull
