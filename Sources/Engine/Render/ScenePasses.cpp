#include "Engine/Render/ScenePasses.h"

#include "Engine/Log/Require.h"
#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/MeshDraws.h"
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

void drawWaterDepth(RenderContext& context, const SurfacePass& pass, std::span<const DrawItem* const> items,
                    const PixelArea& area) {
    // Only where a film may lie over or under the rest.
    PixelArea shared;
    for (const DrawItem* item : items)
        if (isFilm(*item)) shared = shared.united(item->area.intersection(area));
    if (shared.empty()) return;
    const PixelArea& viewport = pass.target.viewport;
    PixelArea part = shared.moved(viewport.x, viewport.y);
    if (pass.target.scissor) part = part.intersection(*pass.target.scissor);
    for (const DrawItem* item : items)
        if (isWater(*item))
            drawDepth(context, pass.target.within(part), pass.frameUniforms, *item, pass.view, shared);
}

namespace {

/// Surfaces in the order in which they are blended: by their rendering order, then the farthest first.
void drawInOrder(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area, bool unlit) {
    std::vector<const DrawItem*> items;
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->blended)
            if (isUnlit(item) == unlit) items.push_back(&item);
    std::stable_sort(items.begin(), items.end(), [](const DrawItem* a, const DrawItem* b) {
        return a->order != b->order ? a->order < b->order : a->distance > b->distance;
    });
    bool hasWaterDepth = unlit;
    for (const DrawItem* item : items) {
        if (!hasWaterDepth && isWater(*item)) {
            drawWaterDepth(context, pass, items, area);
            hasWaterDepth = true;
        }
        drawSurface(context, pass, *item, area);
    }
}

/// Emission is given as it is shown, too.
SurfacePass shownAsGiven(SurfacePass pass) {
    pass.emissive = {};
    return pass;
}

}  // namespace

void drawBlended(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area) {
    drawInOrder(context, pass, layers, area, false);
}

void drawUnlit(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
               const PixelArea& area, double time) {
    require(pass.shading.output == Shading::Output::display, "unlit things need display output");
    drawInOrder(context, shownAsGiven(pass), layers, area, true);
    std::vector<const ParticleItem*> particles;
    for (const DrawLayer* layer : layers)
        for (const ParticleItem& item : layer->particles) particles.push_back(&item);
    std::stable_sort(particles.begin(), particles.end(), [](const ParticleItem* a, const ParticleItem* b) {
        return a->order != b->order ? a->order < b->order : a->distance > b->distance;
    });
    for (const ParticleItem* item : particles) drawParticles(context, pass, *item, time);
}

void drawUnlitOpaque(RenderContext& context, const SurfacePass& pass,
                     std::span<const DrawLayer* const> layers, const PixelArea& area) {
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque)
            if (isUnlit(item)) drawSurface(context, shownAsGiven(pass), item, area);
}

}  // namespace gull
