#include "Engine/Compositor/WaterLayer.h"

#include "Engine/Compositor/CoarsePixels.h"
#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>

namespace gull {

namespace {

/// True for foam, which is drawn onto the water.
bool floats(const DrawItem& item) {
    return item.material->smooth && item.material->blend == Material::Blend::alpha && !isWater(item);
}

/// The highest point of `layer`, world units.
double top(const DrawLayer& layer) {
    Box box;
    for (const std::vector<DrawItem>* items : {&layer.opaque, &layer.blended})
        for (const DrawItem& item : *items) box.include(transformed(item.mesh->bounds, item.model));
    return box.max.y;
}

}  // namespace

std::vector<PixelArea> WaterLayer::update(const MovingScene& scene, StaticLayer& layer, int stripPixels,
                                          unsigned environmentSampler) {
    const PixelArea whole = PixelArea::whole(scene.view.size);
    std::vector<PixelArea> areas = layer.takeChanges();
    if (ensureTargets(scene.view.size)) areas = {whole};
    const bool everything = areas == std::vector<PixelArea>{whole};
    if (everything) reach_ = {};
    growReach(scene, layer.relief());
    for (const PixelArea& area : areas)
        context_.device.copyDepth(
            scene.ground.farthestDepth, coarse_.depth(),
            coarse(area, scene.view.size).intersection(PixelArea::whole(coarse_.size())));
    if (everything) {
        shade(scene, reach_, environmentSampler);
    } else if (stripPixels > 0 && !reach_.empty() && !layer.pending()) {  // a change fills a frame
        areas.push_back(nextStrip(stripPixels));
        shade(scene, areas.back(), environmentSampler);
    }
    for (const PixelArea& area : areas) {
        context_.device.copyColour(scene.ground.picture, picture_.colour(), area);
        context_.device.copyDepth(scene.ground.depth, picture_.depth(), area);
        draw(scene, area, picture_.whole(), environmentSampler);
    }
    return areas;
}

bool WaterLayer::ensureTargets(const PixelSize& size) {
    ensureSize(context_.device, coarse_, coarse(size), {{Format::bgra8}, Format::depth24});
    return ensureSize(context_.device, picture_, size, {{Format::bgra8}, Format::depth24});
}

void WaterLayer::growReach(const MovingScene& scene, const ReliefGrid& relief) {
    // The reach only grows, so that nothing is left behind where the water fell.
    const DrawLayer& water = scene.list.water;
    if (!water.opaque.empty() || !water.blended.empty()) reach_ = reach_.united(relief.below(top(water)));
}

PixelArea WaterLayer::nextStrip(int stripPixels) {
    // A large screen takes longer for a turn.
    const int side = coarsePixel(picture_.size()), most = mostStrips * side / 2;
    const int strips =
        std::clamp((reach_.width * reach_.height + stripPixels - 1) / stripPixels, fewestStrips, most);
    // Whole coarse pixels.
    const int rows = ((reach_.height + strips - 1) / strips + side - 1) / side * side;
    if (nextRow_ < reach_.y || nextRow_ >= reach_.top()) nextRow_ = reach_.y;
    const PixelArea strip{reach_.x, nextRow_, reach_.width, std::min(rows, reach_.top() - nextRow_)};
    nextRow_ = strip.top();
    return strip;
}

void WaterLayer::shade(const MovingScene& scene, const PixelArea& area, unsigned environmentSampler) {
    if (area.empty()) return;
    const DrawTarget target = coarse_.whole().within(coarse(area, scene.view.size));
    const PixelArea reached = area.grown(4);  // at full resolution
    context_.device.clear(target, {{{0, 0, 0, 0}}, {}});
    SurfacePass foam = scene.surfacePass(target, Shading::Output::display, false);
    foam.inputs.environmentSampler = environmentSampler;
    foam.inputs.groundDepth = scene.ground.farthestDepth;
    foam.shading.noToneMapping = !scene.view.camera.hdr;
    SurfacePass water = foam;
    water.shading.output = Shading::Output::water;
    water.shading.bloom = static_cast<bool>(scene.ground.bloom);
    for (const DrawItem& item : scene.list.water.blended)
        if (isWater(item) && !isFilm(item)) drawSurface(context_, water, item, reached);
    for (const DrawItem& item : scene.list.water.blended)
        if (isFilm(item)) shadeFilm(scene, item, water, reached);
    // Foam hides the water and anything seen through it.
    for (const DrawItem& item : scene.list.water.blended)
        if (floats(item)) drawSurface(context_, foam, item, reached);
}

/// Shades `film` where no other water lies over it.
void WaterLayer::shadeFilm(const MovingScene& scene, const DrawItem& film, const SurfacePass& pass,
                           const PixelArea& area) {
    const PixelArea part = film.area.intersection(area);
    if (part.empty()) return;
    const PixelArea texels = coarse(part, scene.view.size).intersection(*pass.target.scissor);
    for (const DrawItem& item : scene.list.water.blended)
        if (isWater(item) && !isFilm(item))
            drawDepth(context_, pass.target.within(texels), pass.frameUniforms, item, pass.view, part);
    drawSurface(context_, pass, film, part);
    context_.device.copyDepth(scene.ground.farthestDepth, coarse_.depth(),
                              texels.intersection(PixelArea::whole(coarse_.size())));
}

void WaterLayer::draw(const MovingScene& scene, const PixelArea& area, const DrawTarget& target,
                      unsigned environmentSampler) {
    const PixelArea visible = area.intersection(reach_);
    if (visible.empty()) return;
    SurfacePass pass = scene.surfacePass(target.within(visible), Shading::Output::display, false);
    pass.inputs.environmentSampler = environmentSampler;
    pass.shading.noToneMapping = !scene.view.camera.hdr;
    const DrawLayer& layer = scene.list.water;
    for (const DrawItem& item : layer.opaque) drawSurface(context_, pass, item, visible);
    // The water first: everything blended after it lies above all of it.
    const bool hasCoarse = scene.view.camera.hdr;
    std::vector<const DrawItem*> sheets;
    for (const DrawItem& item : layer.blended) sheets.push_back(&item);
    if (hasCoarse) drawWaterDepth(context_, pass, sheets, visible);
    DrawLayer over;
    over.particles = layer.particles;
    for (const DrawItem& item : layer.blended) {
        if (hasCoarse && isWater(item))
            overlay(scene, item, pass.target);
        else if (!hasCoarse || !floats(item))
            over.blended.push_back(item);
    }
    const DrawLayer* layers[] = {&over};
    drawBlended(context_, pass, layers, visible);
    drawUnlit(context_, pass, layers, visible, scene.stage.time);
}

/// Lays the coarse water over the picture, on the water's own geometry so that edges and depth are
/// exact. Of what stands before it, the static layer's light knows through which share of a pixel it is seen.
void WaterLayer::overlay(const MovingScene& scene, const DrawItem& water, const DrawTarget& target) {
    DrawState state;
    state.target = target;
    state.program = &context_.programs.get({ProgramKind::waterOverlay});
    state.frameUniforms = scene.frameUniforms;
    state.textures = {{unitSource, coarse_.colour()}};
    state.uniforms = {{"model", glm::mat4(water.model)}};
    state.depthTest = DepthTest::lessOrEqual;
    state.writesDepth = water.material->writesDepth;
    state.blending = Blending::over;
    drawMesh(context_, state, water, scene.view, *target.scissor);
    if (isFilm(water)) return;
    state.program = &context_.programs.get({ProgramKind::waterOverlay, {Feature::edges}});
    state.textures.push_back({unitStaticLit, scene.ground.lit});
    state.textures.push_back({unitStaticDepth, scene.ground.depth});
    state.depthTest = DepthTest::greater;
    state.writesDepth = false;
    drawMesh(context_, state, water, scene.view, *target.scissor);
}

}  // namespace gull
