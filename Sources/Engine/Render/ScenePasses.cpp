#include "Engine/Render/ScenePasses.h"

#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/ParticlePass.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <vector>

namespace gull {

void drawSky(RenderContext& context, const SurfacePass& pass, const Stage& stage) {
    if (!stage.background) return;
    // Below the horizon a sky picture has no detail, so the environment, which is small and needed anyway,
    // serves as well.
    const bool coarse = stage.environment && !pass.view.seesHorizon();
    ProgramKey key{ProgramKind::sky};
    key.features.set(Feature::staticOutput, pass.shading.output == Shading::Output::staticLayer);
    key.features.set(Feature::displayOutput, pass.shading.output == Shading::Output::display);
    DrawState state;
    state.target = pass.target;
    state.program = &context.programs.get(key);
    state.frameUniforms = pass.frameUniforms;
    state.textures = {context.textures.binding(unitDiffuse, coarse ? stage.environment : stage.background,
                                               Wrap::repeat, Wrap::clamp, TextureCache::Quality::base)};
    state.depthTest = DepthTest::lessOrEqual;
    drawScreen(context, std::move(state), 1);
}

void drawBlended(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area, double time) {
    struct Entry {
        int order;
        double distance;
        const DrawItem* surface;
        const ParticleItem* particles;
    };
    std::vector<Entry> entries;
    for (const DrawLayer* layer : layers) {
        for (const DrawItem& item : layer->blended)
            entries.push_back({item.order, item.distance, &item, nullptr});
        for (const ParticleItem& item : layer->particles)
            entries.push_back({item.order, item.distance, nullptr, &item});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        // Particles hide nothing drawn after them, but water would hide the particles above it.
        if ((a.particles != nullptr) != (b.particles != nullptr)) return b.particles != nullptr;
        return a.order != b.order ? a.order < b.order : a.distance > b.distance;
    });
    for (const Entry& entry : entries) {
        if (entry.surface)
            drawSurface(context, pass, *entry.surface, area);
        else
            drawParticles(context, pass, *entry.particles, time);
    }
}

}  // namespace gull
