#include "Engine/Compositor/FullFrame.h"

#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/ScenePasses.h"

#include <array>

namespace gull {

FullFrame::FullFrame(RenderContext& context) : context_(context), frame_(context.device), light_(context) {}

const Target& FullFrame::draw(const Stage& stage, StaticLayer& layer) {
    const MovingScene scene =
        MovingScene::gather(context_, stage, layer, DrawList::Detail::fine, shadow_, frame_);
    const PixelSize& size = scene.view.size;
    const PixelArea whole = PixelArea::whole(size);
    ensureSize(context_.device, multisampled_, size, {{Format::rgba16f}, Format::depth24, 4});
    ensureSize(context_.device, resolved_, size, {{Format::rgba16f}});
    ensureSize(context_.device, picture_, size, {{Format::bgra8}, Format::depth24});

    // 1. The static layer's light and depth under moving shadows and lamps.
    light_.relight(scene.lightInputs(), multisampled_);

    // 2. Water and moving things over it.
    SurfacePass pass = scene.surfacePass(multisampled_.whole(), Shading::Output::linear);
    pass.shading.waterDepth = !scene.view.camera.orthographicScale;
    const std::array<const DrawLayer*, 2> layers{&scene.list.water, &scene.list.moving};
    for (const DrawLayer* drawn : layers)
        for (const DrawItem& item : drawn->opaque) drawSurface(context_, pass, item, whole);
    drawBlended(context_, pass, layers, whole);

    // 3. One sample a pixel, its glow, and the screen's colours; unlit things over them.
    resolve(context_, multisampled_, {&whole, 1}, resolved_, 0, 0);
    const TextureRef glow = bloom_.find(context_, resolved_.colour(), scene.view, frame_.name());
    toneMap(context_, picture_.firstColour(), {resolved_.colour(), glow, {}}, scene.view, frame_.name());
    drawPictureDepth(scene, layers);
    const SurfacePass finished = scene.surfacePass(picture_.whole(), Shading::Output::display);
    drawUnlitOpaque(context_, finished, layers, whole);
    drawUnlit(context_, finished, layers, whole, stage.time);
    return picture_;
}

/// Gives the picture the depth of all that it shows.
void FullFrame::drawPictureDepth(const MovingScene& scene, std::span<const DrawLayer* const> layers) {
    context_.device.copyDepth(scene.ground.depth, picture_.depth(), PixelArea::whole(scene.view.size));
    for (const DrawLayer* layer : layers)
        for (const std::vector<DrawItem>* items : {&layer->opaque, &layer->blended})
            drawDepth(context_, picture_.whole(), frame_.name(), *items, scene.view);
}

}  // namespace gull
