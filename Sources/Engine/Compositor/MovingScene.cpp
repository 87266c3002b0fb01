#include "Engine/Compositor/MovingScene.h"

#include "Engine/Render/RenderContext.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

/// The weakest visible light on a surface: about half an 8-bit step.
constexpr double weakestLight = 0.006;

/// How far the light of `lamp`, which has a limit, is visible. `exposure`: from scene light to the tone
/// curve.
double visibleReach(const Lamp& lamp, double exposure) {
    const double strength = std::max({lamp.colour.r, lamp.colour.g, lamp.colour.b}) * exposure;
    if (strength <= weakestLight) return 0;
    // Attenuation: the remaining share of the way to the end, to the lamp's exponent.
    const double left = std::pow(weakestLight / strength, 1 / lamp.exponent);
    return lamp.end - std::max(lamp.end - lamp.start, 0.0) * left;
}

void markLamps(const std::vector<Lamp>& lamps, const FrameBlock& block, ReliefGrid& relief) {
    const double exposure = block.eye.w * std::max({block.toneGain.r, block.toneGain.g, block.toneGain.b});
    for (const Lamp& lamp : lamps) {
        if (lamp.end > 0)
            relief.markReach(lamp.position, visibleReach(lamp, exposure));
        else
            relief.markAllLit();
    }
}

}  // namespace

MovingScene MovingScene::gather(RenderContext& context, const Stage& stage, StaticLayer& layer,
                                DrawList::Detail detail, MovingShadow& shadow, FrameUniforms& frame) {
    const Viewpoint& view = layer.view();
    MovingScene scene{stage,
                      view,
                      DrawList::of(stage, view, context.meshes, DrawList::Which::notStill, detail),
                      layer.pictures(),
                      {},
                      {},
                      {},
                      frame.name()};
    const DrawList& list = scene.list;
    const auto environment = context.environments.get(stage.environment, list.sun.onGround());
    scene.environment = environment.cube;
    FrameBlock block = frameBlock(stage, view, list, environment.irradiance, context.options);
    setLamps(block, list.moving.lamps);
    block.fogRange.w = static_cast<float>(scene.ground.mirrorLevel);
    ReliefGrid& relief = layer.relief();
    relief.clear();
    markLamps(list.moving.lamps, block, relief);
    scene.movingShadow = shadow.draw(context, list.moving, list.sun, block, relief);
    scene.reach.lamps = FrameBlock::lampsInProgram(list.moving.lamps.size());
    scene.reach.shadow = static_cast<bool>(scene.movingShadow);
    for (int marks = 1; marks < 4; ++marks)
        scene.reach.areas[static_cast<std::size_t>(marks)] = relief.marked(marks);
    scene.emissive = InverseToneMapping(block);
    frame.upload(block);
    return scene;
}

SurfacePass MovingScene::surfacePass(const DrawTarget& target, Shading::Output output, bool lamps) const {
    SurfacePass pass{target, frameUniforms, view, {}, {}, emissive};
    pass.inputs.environment = environment;
    pass.inputs.sunShadow = ground.sunShadow;
    pass.inputs.groundDepth = ground.depth;
    pass.inputs.groundLight = ground.lit;
    pass.inputs.bloom = ground.bloom;
    pass.inputs.waterMirror = ground.waterMirror;
    pass.shading.output = output;
    pass.shading.sunShadow = list.sun.castsShadow();
    if (lamps) pass.shading.lamps = list.moving.lamps;
    return pass;
}

}  // namespace gull
