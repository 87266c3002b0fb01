#include "Engine/Compositor/StaticPasses.h"

#include "Engine/Compositor/CoarsePixels.h"
#include "Engine/Compositor/WaterVisibility.h"
#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/PicturePass.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>

namespace gull {

namespace {

constexpr SkyMaps::Detail skyDetail{16, 384};

}  // namespace

StaticPasses::StaticPasses(RenderContext& context) : context_(context), frame_(context.device) {}

void StaticPasses::begin(const Viewpoint& view, int mostShadow) {
    GraphicsDevice& device = context_.device;
    view_ = view;
    mostShadow_ = mostShadow;
    const PixelSize& size = view.size;
    if (!light_ || !(light_.size() == size)) {
        light_ = {};
        depth_ = Target(device, size, {{}, Format::depth24});
        light_ = Target(device, size,
                        {{Format::rgba16f, Format::rgba8, Format::rgba8, Format::rgba8},
                         Format::none,
                         1,
                         depth_.depth()});
        farthest_ = Target(device, coarse(size), {{}, Format::depth24});
        picture_ = Target(device, size, {{Format::bgra8}});
    }
    mirror_ = {};
    device.clear(light_.whole(), {{{0, 0, 0, 0}}, {}});  // the background is skipped where unseen
    if (!tile_) tile_ = Target(device, EdgeCells::tileSize, {{Format::rgba16f}, Format::depth24, 4});
}

void StaticPasses::prepare(const Scene& scene) {
    const auto environment = context_.environments.get(scene.stage.environment, scene.list.sun.onGround());
    environment_ = environment.cube;
    sunShadow_ = castsSunShadow(scene);
    block_ = frameBlock(scene.stage, view_, scene.list, environment.irradiance, context_.options);
    setLamps(block_, scene.list.still.lamps);
    if (const auto level = waterLevel(scene.list.water)) block_.sunShape.z = static_cast<float>(*level);
    block_.fogRange.w = static_cast<float>(mirror_.level());
    frame_.upload(block_);
    dome_ = environment.dome;
    paint_.begin(context_, scene.list.still.opaque, view_.size);
}

int StaticPasses::shadowSize(const Scene& scene) const {
    return std::min(scene.list.sun.light->shadowMapSize, mostShadow_);
}

void StaticPasses::drawSunShadow(const Scene& scene, const PixelArea& texels) {
    shadow_.drawPart(context_, scene.list.still, {scene.list.sun.matrix, shadowSize(scene)}, texels);
}

void StaticPasses::redrawSunShadow(const Scene& scene, const Box& changed) {
    shadow_.redraw(context_, scene.list.still, {scene.list.sun.matrix, shadowSize(scene)}, changed);
}

int StaticPasses::skyMaps() const {
    return hasContactShadows() ? skyDetail.parts : 0;
}

void StaticPasses::drawSkyMaps(const Scene& scene, int first, int count) {
    const DrawLayer* layers[] = {&scene.list.still};
    if (first == 0) sky_.setLight(scene.stage, dome_.get(), block_, context_.options, skyDetail);
    sky_.draw(context_, layers, first, count);
}

void StaticPasses::drawMirror(const Scene& scene) {
    const auto level = waterLevel(scene.list.water);
    if (!level) return;
    mirror_.draw(context_, scene.stage, scene.list, view_, *level,
                 sunShadow_ ? shadow_.texture() : TextureRef());
    block_.fogRange.w = static_cast<float>(*level);
    frame_.upload(block_);
}

void StaticPasses::drawDepth(const Scene& scene, const PixelArea& area) {
    const DrawTarget target = depth_.whole().within(area);
    context_.device.clear(target, {{}, 1});
    gull::drawDepth(context_, target, frame_.name(), scene.list.still.opaque, view_);

    DrawState farthest;
    farthest.target = farthest_.whole().within(coarse(area, view_.size).grown(1));
    farthest.program = &context_.programs.get({ProgramKind::farthestDepth});
    farthest.textures = {{unitStaticDepth, depth_.depth()}};
    farthest.depthTest = DepthTest::always;
    farthest.writesDepth = true;
    farthest.frameUniforms = frame_.name();
    farthest.uniforms = {{"ratio", glm::vec2(view_.size.width, view_.size.height) /
                                       glm::vec2(farthest_.size().width, farthest_.size().height)}};
    drawScreen(context_, std::move(farthest));
}

void StaticPasses::readDepth(const Scene& scene, const PixelArea& area) {
    const PixelSize& size = view_.size;
    depths_.resize(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), 1);
    context_.device.readDepth(depth_.framebuffer(), area, size.width, depths_);
    relief_.read(depths_, view_, scene.list.sun.toward, area);
    edges_.find(depths_, view_, area);
}

bool StaticPasses::hasContactShadows() const {
    return view_.camera.hdr && !view_.camera.orthographicScale;
}

void StaticPasses::drawContactShadows(const PixelArea& area) {
    if (!hasContactShadows()) return;
    contact_.draw(context_,
                  {depth_.depth(), sunShadow_ ? shadow_.texture() : TextureRef(), sky_, frame_.name()}, view_,
                  area);
}

SurfacePass StaticPasses::surfacePass(const Scene& scene, const DrawTarget& target) const {
    SurfacePass pass{target, frame_.name(), view_, {}, {}, InverseToneMapping(block_)};
    pass.inputs.environment = environment_;
    if (sunShadow_) pass.inputs.sunShadow = shadow_.texture();
    if (hasContactShadows()) pass.inputs.contactShadows = contact_.texture();
    pass.shading.output = Shading::Output::staticLayer;
    pass.shading.lamps = scene.list.still.lamps;
    pass.shading.sunShadow = sunShadow_;
    pass.shading.contactShadows = hasContactShadows();
    return pass;
}

void StaticPasses::drawScene(const Scene& scene, const SurfacePass& pass, const PixelArea& area) {
    for (const DrawItem& item : scene.list.still.opaque) drawSurface(context_, pass, item, area);
    if (showsSky(scene.list, area)) drawSky(context_, pass, scene.stage);
}

void StaticPasses::drawSurfaces(const Scene& scene, const PixelArea& area) {
    const DrawTarget target = light_.whole().within(area);
    if (!scene.stage.background) context_.device.clear(target, {{{0, 0, 0, 0}}, {}});
    drawScene(scene, surfacePass(scene, target), area);
}

void StaticPasses::drawEdges(const Scene& scene, const PixelArea& area) {
    std::vector<PixelArea> cells = edges_.within(area);
    if (cells.empty()) return;
    PixelArea part;
    for (const PixelArea& cell : cells) part = part.united(cell);
    block_.tile = {area.x, area.y, 0, 0};
    frame_.upload(block_);
    DrawTarget target{tile_.framebuffer(), PixelArea::whole(view_.size).moved(-area.x, -area.y),
                      part.moved(-area.x, -area.y)};
    // The nearest depth keeps everything out; the cells are opened with the farthest.
    context_.device.clear(target, {{{0, 0, 0, 0}}, 0});
    DrawState open;
    open.target = target;
    open.program = &context_.programs.get({ProgramKind::areaDepth});
    open.uniforms = {{"shift", glm::vec2(0)},
                     {"texel", 1.0F / glm::vec2(view_.size.width, view_.size.height)},
                     {"depth", 1.0F}};
    open.depthTest = DepthTest::always;
    open.writesDepth = true;
    open.writesColour = false;
    drawAreas(context_, std::move(open), cells);
    drawScene(scene, surfacePass(scene, target), part);
    for (PixelArea& cell : cells) cell = cell.moved(-area.x, -area.y);
    resolve(context_, tile_, cells, light_, area.x, area.y);
    block_.tile = {0, 0, 0, 0};
    frame_.upload(block_);
}

/// Whether the background may be visible in `area`, judging by the depth just read. It is not where water,
/// bottomless here, lies in front of it and of everything around it; its program then need not be compiled.
bool StaticPasses::showsSky(const DrawList& list, const PixelArea& area) const {
    // One more pixel all round: some of its samples may lie in `area`'s pixels.
    const PixelArea looked = area.grown(1).intersection(PixelArea::whole(view_.size));
    const auto width = static_cast<std::size_t>(view_.size.width);
    PixelArea sky;
    for (int y = looked.y; y < looked.top(); ++y) {
        const float* row = &depths_[static_cast<std::size_t>(y) * width];
        const auto isSky = [](float depth) { return depth >= 1; };
        if (std::any_of(row + looked.x, row + looked.right(), isSky))
            sky = sky.united({looked.x, y, looked.width, 1});
    }
    if (sky.empty()) return false;
    const double highest = relief_.highest(sky.grown(1));
    return std::none_of(list.water.blended.begin(), list.water.blended.end(), [&](const DrawItem& item) {
        return isWater(item) && covers(item, view_, sky, highest);
    });
}

void StaticPasses::findBloom(const Scene& scene) {
    glow_ = {};
    if (!view_.camera.hdr || view_.camera.bloomIntensity <= 0) return;
    // Where the sun cannot glitter, the sea is left out and its program need not be compiled.
    std::vector<const DrawItem*> glittering;
    for (const DrawItem& item : scene.list.water.blended) {
        if (!isWater(item)) continue;
        const PixelArea seen = relief_.below(transformed(item.mesh->bounds, item.model).max.y);
        if (glitters(view_, seen, scene.list.sun.toward)) glittering.push_back(&item);
    }
    if (glittering.empty()) {
        glow_ = bloom_.find(context_, light_.colour(), view_, frame_.name());
        return;
    }
    const Target light = lightWithWater(scene, glittering);
    glow_ = bloom_.find(context_, light.colour(), view_, frame_.name());
}

/// The scene light in coarse pixels with `water` over it.
Target StaticPasses::lightWithWater(const Scene& scene, const std::vector<const DrawItem*>& water) {
    const PixelSize half = farthest_.size();
    Target light(context_.device, half, {{Format::rgba16f}, Format::depth24});
    stretchPicture(context_, light.whole(), light_.colour());
    context_.device.copyDepth(farthest_.depth(), light.depth(), PixelArea::whole(half));

    FrameBlock block = block_;
    block.picture = {half.width, half.height, 1.0F / static_cast<float>(half.width),
                     1.0F / static_cast<float>(half.height)};
    FrameUniforms frame(context_.device);
    frame.upload(block);
    SurfacePass pass{light.whole(), frame.name(), view_, {}, {}};
    pass.inputs.environment = environment_;
    if (sunShadow_) pass.inputs.sunShadow = shadow_.texture();
    pass.inputs.groundDepth = depth_.depth();
    pass.inputs.waterMirror = mirror_.texture();
    pass.shading.sunShadow = castsSunShadow(scene);
    pass.shading.waterDepth = true;
    const PixelArea whole = PixelArea::whole(view_.size);
    drawWaterDepth(context_, pass, water, whole);
    for (const DrawItem* item : water) drawSurface(context_, pass, *item, whole);
    return light;
}

void StaticPasses::drawPicture(const PixelArea& area) {
    paint_.draw(context_, {view_, frame_.name(), light_.colour(2), light_.colour(3), depth_.depth()}, area);
    toneMap(context_, picture_.whole().within(area), {light_.colour(0), glow_, paint_.texture()}, view_,
            frame_.name());
}

StaticPictures StaticPasses::pictures() const {
    return {light_.colour(0),  light_.colour(1),
            light_.colour(2),  light_.colour(3),
            depth_.depth(),    farthest_.depth(),
            picture_.colour(), glow_,
            paint_.texture(),  sunShadow_ ? shadow_.texture() : TextureRef(),
            mirror_.texture(), mirror_.level()};
}

}  // namespace gull
