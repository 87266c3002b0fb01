#include "Engine/Compositor/FastFrame.h"

#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <cstdlib>

namespace gull {

namespace {

/// How far beyond a shape's area its edges are smoothed, pixels.
constexpr int smoothedMargin = 2;
/// The least area that is smoothed, pixels; smaller shapes would only blur.
constexpr int leastSmoothed = 400;
/// Pixels of its area for each triangle that a shape needs to be smoothed: finely cut ones cost too much.
constexpr int smoothedPerTriangle = 4;

/// Pixels that a shape moves from one frame to the next beyond which nobody sees its edges.
constexpr int fast = 8;

bool isSmoothed(const DrawItem& item) {
    std::size_t triangles = 0;
    for (std::size_t i = 0; i < item.element.chunkCount; ++i)
        triangles += item.mesh->chunks[item.element.firstChunk + i].count / 3;
    const int area = item.area.width * item.area.height;
    return area >= leastSmoothed && static_cast<std::size_t>(area) >= smoothedPerTriangle * triangles;
}

}  // namespace

FastFrame::FastFrame(RenderContext& context)
    : context_(context),
      frame_(context.device),
      light_(context),
      water_(context),
      quickEnvironment_(makeSampler(context.device, {Filter::linearNearestMip, true, true})) {}

const Target& FastFrame::draw(const Stage& stage, StaticLayer& layer, int stripPixels) {
    const MovingScene scene =
        MovingScene::gather(context_, stage, layer, DrawList::Detail::coarse, shadow_, frame_);
    const unsigned mirrors = quickEnvironment_.name();
    if (ensureSize(context_.device, picture_, scene.view.size, {{Format::bgra8}, Format::depth24}))
        for (DirtySquares* squares : {&stale_, &staleDepth_, &changes_}) squares->begin(scene.view.size);

    // 1. The next strip of water, then the picture without moving things.
    const std::vector<PixelArea> renewed = water_.update(scene, layer, stripPixels, mirrors);
    const PixelArea part = restore(scene, renewed);
    if (part.empty()) return picture_;

    // 2. How moving shadows and lamps change the static layer's picture, at half resolution.
    const TextureRef change = light_.findChange(scene.lightInputs(), part);

    // 3. Where moving things may stand in the water, the water is drawn after them, so bare ground comes
    // first.
    const PixelArea wet = wetPart(scene).intersection(part);
    context_.device.copyColour(scene.ground.picture, picture_.colour(), wet);
    context_.device.copyDepth(scene.ground.depth, picture_.depth(), wet);
    markCovered(scene, wet, part);

    // 4. Light, opaque things, the water they stand in, blended things, the edges; unlit things.
    const DrawTarget target = picture_.whole().within(part);
    light_.applyChange(change, scene.reach, part, picture_.firstColour());
    SurfacePass pass = scene.surfacePass(target, Shading::Output::display);
    pass.inputs.environmentSampler = mirrors;
    pass.shading.noToneMapping = !scene.view.camera.hdr;
    pass.shading.small = true;
    for (const DrawItem& item : scene.list.moving.opaque) drawSurface(context_, pass, item, part);
    water_.draw(scene, wet, picture_.whole(), mirrors);
    const DrawLayer* layers[] = {&scene.list.moving};
    drawBlended(context_, pass, layers, part);
    smoothEdges(scene, part);  // with what is blended behind the edges
    drawUnlit(context_, pass, layers, part, stage.time);
    rememberPlaces(scene.list.moving);
    return picture_;
}

/// Restores the water layer's picture, which has just changed in `renewed`, and returns the part in which to
/// draw moving things: all of it, or only `renewed` while nothing else changed.
PixelArea FastFrame::restore(const MovingScene& scene, const std::vector<PixelArea>& renewed) {
    const std::optional<std::uint64_t> appearance = appearanceHash(scene.list.moving);
    const bool unchanged = appearance && appearance == appearance_ && !hasRoughEdges_;
    appearance_ = appearance;
    onlyWaterMoved_ = unchanged;
    if (unchanged) {
        PixelArea part;
        for (const PixelArea& area : renewed) part = part.united(area);
        restoreColour(part);
        restoreDepth(part);
        return part;
    }
    for (const PixelArea& area : renewed) {
        stale_.mark(area);
        staleDepth_.mark(area);
    }
    for (const PixelArea& area : stale_.take()) restoreColour(area);
    for (const PixelArea& area : staleDepth_.take()) restoreDepth(area);
    return PixelArea::whole(scene.view.size);
}

void FastFrame::restoreColour(const PixelArea& area) {
    context_.device.copyColour(water_.picture().colour(), picture_.colour(), area);
    changes_.mark(area);
}

void FastFrame::restoreDepth(const PixelArea& area) {
    context_.device.copyDepth(water_.picture().depth(), picture_.depth(), area);
}

void FastFrame::markCovered(const MovingScene& scene, const PixelArea& wet, const PixelArea& part) {
    const auto mark = [&](const PixelArea& area) {
        stale_.mark(area);
        changes_.mark(area.intersection(part));
    };
    mark(wet);
    staleDepth_.mark(wet);
    for (const std::vector<PixelArea>& areas : scene.reach.areas)
        for (const PixelArea& area : areas) mark(area);
    const DrawLayer& moving = scene.list.moving;
    for (const std::vector<DrawItem>* items : {&moving.opaque, &moving.blended})
        for (const DrawItem& item : *items) {
            mark(item.area.grown(smoothedMargin));
            if (item.material->writesDepth) staleDepth_.mark(item.area);
        }
    for (const ParticleItem& item : moving.particles) {
        const glm::dvec3 far(reach(*item.system));
        mark(scene.view.area({-far, far}, item.model).grown(2));
    }
}

/// Smooths the picture where opaque things stand in it: one sample a pixel leaves stair-steps.
void FastFrame::smoothEdges(const MovingScene& scene, const PixelArea& part) {
    PixelArea area;
    hasRoughEdges_ = false;
    for (const DrawItem& item : scene.list.moving.opaque) {
        if (movesFast(item))
            hasRoughEdges_ = true;
        else
            area = area.united(item.area.intersection(part));
    }
    if (area.empty()) return;
    ensureSize(context_.device, unsmoothed_, scene.view.size, {{Format::bgra8}});
    // A little more than the shapes, because edges are smoothed along their direction. Around a part of the
    // picture the copy keeps what it was given when the rest was drawn.
    context_.device.copyColour(picture_.colour(), unsmoothed_.colour(), area.grown(4).intersection(part));
    DrawState state;
    state.target = picture_.whole().within(part);
    state.program = &context_.programs.get({ProgramKind::edgeSmoothing});
    state.frameUniforms = frame_.name();
    state.textures = {{unitSource, unsmoothed_.colour()}};
    state.depthTest = DepthTest::lessOrEqual;
    for (const DrawItem& item : scene.list.moving.opaque) {
        if (item.area.intersection(part).empty() || !isSmoothed(item) || movesFast(item)) continue;
        state.culling = materialCulling(item);
        state.uniforms = {{"model", glm::mat4(item.model)}, {"normalMatrix", item.normalMatrix}};
        drawMesh(context_, state, item, scene.view, part);
    }
}

/// Compares the item's place with the one it had in the frame before.
bool FastFrame::movesFast(const DrawItem& item) const {
    const auto same = [&](const Place& place) {
        return place.mesh == item.mesh && place.firstChunk == item.element.firstChunk;
    };
    const auto before = std::find_if(placesBefore_.begin(), placesBefore_.end(), same);
    if (before == placesBefore_.end()) return false;
    const PixelArea &a = before->area, &b = item.area;
    return std::max({std::abs(a.x - b.x), std::abs(a.y - b.y), std::abs(a.right() - b.right()),
                     std::abs(a.top() - b.top())}) > fast;
}

void FastFrame::rememberPlaces(const DrawLayer& moving) {
    placesBefore_.clear();
    for (const DrawItem& item : moving.opaque)
        placesBefore_.push_back({item.mesh, item.element.firstChunk, item.area});
}

PixelArea FastFrame::wetPart(const MovingScene& scene) const {
    PixelArea wet;
    for (const std::vector<PixelArea>& areas : scene.reach.areas)
        for (const PixelArea& area : areas) wet = wet.united(area.intersection(water_.reach()));
    for (const DrawItem& item : scene.list.moving.opaque)
        wet = wet.united(item.area.intersection(water_.reach()));
    return wet;
}

}  // namespace gull
