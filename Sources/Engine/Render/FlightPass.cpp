#include "Engine/Render/FlightPass.h"

#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace gull {

namespace {

constexpr int shadowMapSize = 1024;
constexpr double deepest = 1000;        // world units
constexpr double shadowLife = 3;        // seconds of stage time
constexpr std::size_t manyPixels = 50;  // per triangle: above this, pixels cost more than triangles

std::size_t triangles(const DrawItem& item) {
    const std::vector<Mesh::Chunk>& chunks = item.mesh->chunks;
    const Mesh::Chunk& last = chunks[item.element.firstChunk + item.element.chunkCount - 1];
    return (last.first + last.count - chunks[item.element.firstChunk].first) / 3;
}

bool hasSmallTriangles(const DrawItem& item) {
    return static_cast<std::size_t>(item.area.width) * static_cast<std::size_t>(item.area.height) <
           manyPixels * triangles(item);
}

/// The box that nobody sees from `eye` because it lies below water, which is bottomless in these pictures.
Box belowWater(const DrawLayer& layer, const glm::dvec3& eye) {
    Box hidden;
    for (const DrawItem& item : layer.blended) {
        if (!isWater(item) || isFilm(item)) continue;
        Box below = transformed(item.mesh->bounds, item.model);
        if (eye.y <= below.max.y) continue;
        below.max.y = below.min.y;
        below.min.y -= deepest;
        hidden = below;
    }
    return hidden;
}

}  // namespace

FlightPass::FlightPass(RenderContext& context) : context_(context), frame_(context.device) {}

const Target& FlightPass::draw(const Stage& stage, const Viewpoint& fullView, double share) {
    Viewpoint view = fullView;
    view.size = {std::max(1, static_cast<int>(fullView.size.width * share)),
                 std::max(1, static_cast<int>(fullView.size.height * share))};
    ensureSize(context_.device, picture_, view.size, {{Format::bgra8}, Format::depth16});
    DrawList list =
        DrawList::of(stage, view, context_.meshes, DrawList::Which::all, DrawList::Detail::coarse);
    const auto environment = context_.environments.get(stage.environment, list.sun.onGround());
    FrameBlock block = frameBlock(stage, view, list, environment.irradiance, context_.options);
    setLamps(block, {});
    frame_.upload(block);

    SurfacePass pass{picture_.whole(), frame_.name(), view, {}, {}};
    pass.inputs.environment = environment.cube;
    pass.inputs.sunShadow = sunShadow(stage, list);
    pass.emissive = InverseToneMapping(block);
    pass.shading.output = Shading::Output::display;
    pass.shading.noToneMapping = !view.camera.hdr;
    pass.shading.matt = true;
    pass.shading.sunShadow = list.sun.castsShadow();
    pass.shading.hidden = belowWater(list.water, view.eye);

    const PixelArea whole = PixelArea::whole(view.size);
    const std::array<const DrawLayer*, 3> layers{&list.still, &list.water, &list.moving};
    context_.device.clear(picture_.whole(), {{{0, 0, 0, 0}}, 1});
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) {
            pass.shading.small = hasSmallTriangles(item);
            drawSurface(context_, pass, item, whole);
        }
    pass.shading.small = false;
    pass.shading.hidden = {};
    // Water comes before the sky and everything else blended, because it is opaque here.
    std::erase_if(list.water.blended, [&](const DrawItem& item) {
        if (isWater(item) && !isFilm(item)) drawSurface(context_, pass, item, whole);
        return isWater(item);
    });
    drawSky(context_, pass, stage);
    drawBlended(context_, pass, layers, whole);
    drawUnlit(context_, pass, layers, whole, stage.time);
    return picture_;
}

/// The rig barely moves against its surroundings during a flight, so its shadow goes into the same map, which
/// is drawn when the flight begins.
TextureRef FlightPass::sunShadow(const Stage& stage, const DrawList& list) {
    if (!list.sun.castsShadow()) return {};
    const std::pair content(stage.id(), stage.stillSerial());
    if (shadowOf_ != content || std::abs(stage.time - shadowTime_) > shadowLife) {
        const std::array<const DrawLayer*, 3> layers{&list.still, &list.water, &list.moving};
        shadow_.draw(context_, layers, {list.sun.matrix, shadowMapSize});
        shadowOf_ = content;
        shadowTime_ = stage.time;
    }
    return shadow_.texture();
}

void FlightPass::arrived() {
    picture_ = {};
    shadow_ = {};
    shadowOf_ = {};
}

}  // namespace gull
