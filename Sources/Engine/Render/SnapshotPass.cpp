#include "Engine/Render/SnapshotPass.h"

#include "Engine/Render/ContactShadows.h"
#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/PostProcessing.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"
#include "Engine/Render/ShadowMap.h"
#include "Engine/Render/WaterMirror.h"

#include <array>
#include <vector>

namespace gull {

namespace {

/// Rows drawn at once, so that the multisampled buffers stay small for any size of picture.
constexpr int rowsOfTile = 256;

constexpr SkyMaps::Detail skyDetail{32, 512};

using Layers = std::array<const DrawLayer*, 3>;

std::vector<Lamp> allLamps(const Layers& layers) {
    std::vector<Lamp> lamps;
    for (const DrawLayer* layer : layers) lamps.insert(lamps.end(), layer->lamps.begin(), layer->lamps.end());
    return lamps;
}

/// Draws everything into `target`; the picture's `area` lands on the scissor rectangle, if there is one.
void drawScene(RenderContext& context, const SurfacePass& pass, const Layers& layers, const Stage& stage,
               const PixelArea& area) {
    context.device.clear(pass.target, {{{0, 0, 0, 0}}, 1});
    // Surfaces without paint share the static layer's program: one less to compile before the overlay has its
    // first icon.
    SurfacePass plain = pass;
    plain.shading.output = Shading::Output::staticLayer;
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque)
            drawSurface(context, item.material->multiplyMap ? pass : plain, item, area);
    drawSky(context, pass, stage);
    drawBlended(context, pass, layers, area);
}

}  // namespace

Target drawSnapshot(RenderContext& context, const Stage& stage, const PixelSize& size) {
    GraphicsDevice& device = context.device;
    const Viewpoint view = Viewpoint::of(stage, size);
    const DrawList list = DrawList::of(stage, view, context.meshes);
    const Layers layers{&list.still, &list.water, &list.moving};
    const PixelArea whole = PixelArea::whole(size);
    const auto environment = context.environments.get(stage.environment, list.sun.onGround());
    const std::vector<Lamp> lamps = allLamps(layers);
    FrameBlock block = frameBlock(stage, view, list, environment.irradiance, context.options);
    setLamps(block, lamps);
    const InverseToneMapping emissive(block);
    FrameUniforms frame(device);
    frame.upload(block);

    Shading shading;
    shading.lamps = lamps;
    shading.sunShadow = list.sun.castsShadow();
    shading.contactShadows = shading.waterDepth = view.camera.hdr && !view.camera.orthographicScale;
    SurfaceInputs inputs;
    inputs.environment = environment.cube;

    ShadowMap shadow;
    if (shading.sunShadow) {
        shadow.draw(context, layers, {list.sun.matrix, list.sun.light->shadowMapSize});
        inputs.sunShadow = shadow.texture();
    }
    WaterMirror mirror;
    if (const auto level = waterLevel(list.water)) {
        mirror.draw(context, stage, list, view, *level, inputs.sunShadow);
        inputs.waterMirror = mirror.texture();
        block.fogRange.w = static_cast<float>(*level);
        frame.upload(block);
    }
    Target depth;
    ContactShadows contact;
    depth = Target(device, size, {{}, Format::depth24});
    device.clear(depth.whole(), {{}, 1});
    for (const DrawLayer* layer : layers)
        drawDepth(context, depth.whole(), frame.name(), layer->opaque, view);
    if (shading.contactShadows) {
        SkyMaps sky;
        sky.setLight(stage, environment.dome.get(), block, context.options, skyDetail);
        sky.draw(context, layers, 0, sky.parts());
        contact.draw(context, {depth.depth(), inputs.sunShadow, sky, frame.name()}, view, whole);
        inputs.groundDepth = depth.depth();
        inputs.contactShadows = contact.texture();
    }

    Target light(device, size, {{Format::rgba16f}});
    const PixelSize tileSize{size.width, std::min(size.height, rowsOfTile)};
    const Target tile(device, tileSize, {{Format::rgba16f}, Format::depth24, 4});
    for (int y = 0; y < size.height; y += rowsOfTile) {
        const PixelArea area = PixelArea{0, y, size.width, rowsOfTile}.intersection(whole);
        block.tile = {0, y, 0, 0};
        frame.upload(block);
        const DrawTarget target{tile.framebuffer(), whole.moved(0, -y), {}};
        drawScene(context, {target, frame.name(), view, inputs, shading, emissive}, layers, stage, area);
        const PixelArea drawn = area.moved(0, -y);
        resolve(context, tile, {&drawn, 1}, light, 0, y);
    }
    block.tile = {0, 0, 0, 0};
    frame.upload(block);

    Bloom bloom;
    const TextureRef glow = bloom.find(context, light.colour(), view, frame.name());
    Target picture(device, size, {{Format::bgra8}, Format::none, 1, depth.depth()});
    toneMap(context, picture.firstColour(), {light.colour(), glow, {}}, view, frame.name());
    for (const DrawLayer* layer : layers)
        drawDepth(context, depth.whole(), frame.name(), layer->blended, view);
    shading.output = Shading::Output::display;
    shading.noToneMapping = !view.camera.hdr;
    const SurfacePass finished{picture.whole(), frame.name(), view, {}, shading};
    drawUnlitOpaque(context, finished, layers, whole);
    drawUnlit(context, finished, layers, whole, stage.time);
    return picture;
}

}  // namespace gull
