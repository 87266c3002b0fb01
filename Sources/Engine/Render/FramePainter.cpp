#include "Engine/Render/FramePainter.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace gull {

struct FramePainter::Frame {
    const Stage& stage;
    const View& view;
    DrawList list;
    FrameBlock block;
    std::vector<PixelArea> relit;  ///< where moving shadows and lamps reach
    bool shadow = false;
    int lamps = 0;
};

namespace {

Shading movingShading(const DrawList& list, Shading::Output output) {
    Shading shading;
    shading.output = output;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.lamps = list.moving.lamps;
    return shading;
}

}  // namespace

FramePainter::FramePainter(Studio& studio) : studio_(studio), backdrop_(studio) {}

FramePainter::Frame FramePainter::begin(const Stage& stage, KeptLayer& kept) {
    const View& view = kept.view();
    Frame frame{
        stage, view, DrawList::of(stage, view, studio_.meshes, DrawList::Which::notKept), FrameBlock(), {}};
    const DrawList& list = frame.list;
    frame.block =
        frameBlock(stage, view, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                   studio_.options);
    std::vector<Lamp> lamps = list.moving.lamps;
    setLamps(frame.block, lamps);
    frame.lamps = std::min(static_cast<int>(lamps.size()), FrameBlock::mostLamps);
    ReliefGrid& relief = kept.relief();
    relief.clear();
    for (const Lamp& lamp : lamps) {
        if (lamp.end > 0)
            relief.markReach(lamp.position, lamp.end);
        else
            relief.markAll();
    }
    frame.shadow =
        shadow_.draw(list.moving, list.sun, studio_.sunDepth, studio_.options, frame.block, relief);
    frame.relit = relief.marked();
    studio_.uniforms.upload(frame.block);
    if (frame.shadow) shadow_.bind(unitMovingShadow);
    kept.shadow().bind(unitSunShadow);
    bindTexture(unitKeptLit, kept.light().colour(0));
    bindTexture(unitKeptShade, kept.light().colour(1));
    bindTexture(unitKeptSurface, kept.light().colour(2));
    bindTexture(unitKeptNormal, kept.light().colour(3));
    bindTexture(unitKeptDepth, kept.depth());
    bindTexture(unitBloom, kept.bloom());
    bindTexture(unitKeptPaint, kept.paint());
    return frame;
}

void FramePainter::relight(const Frame& frame, const KeptLayer& kept, bool display) {
    bool bloom = display && kept.bloom() != 0, plain = !frame.view.camera.hdr, paint = kept.paint() != 0;
    int key = (frame.shadow ? 1 : 0) + frame.lamps * 64 + (bloom ? 4 : 0) + (display ? 8 : 0) +
              (plain ? 16 : 0) + (paint ? 32 : 0);
    auto found = relightPrograms_.find(key);
    if (found == relightPrograms_.end()) {
        std::vector<std::string> defines;
        if (frame.shadow) defines.emplace_back("MOVING_SHADOW");
        if (frame.lamps > 0) defines.push_back("LAMPS " + std::to_string(frame.lamps));
        if (bloom) defines.emplace_back("BLOOM");
        if (display) defines.emplace_back("OUT_DISPLAY");
        if (plain) defines.emplace_back("PLAIN_FILM");
        if (paint) defines.emplace_back("PAINT");
        found =
            relightPrograms_
                .emplace(key, Program("relight", shaders::relightVertex, shaders::relightFragment, defines))
                .first;
    }
    glDisable(GL_BLEND);
    found->second.use();
    if (display)
        areas_.draw(frame.relit);
    else
        studio_.screen.draw(found->second);
}

const Target& FramePainter::drawFull(const Stage& stage, KeptLayer& kept) {
    Frame frame = begin(stage, kept);
    const PixelSize& size = frame.view.size;
    if (!light_ || !(light_.size() == size)) {
        multisampled_ = Target(size, {{Format::rgba16f}, Format::depth24, 4});
        light_ = Target(size, {{Format::rgba16f}});
        picture_ = Target(size, {{Format::rgba8}});
    }
    PixelArea whole = PixelArea::whole(size);
    multisampled_.bind();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glDepthMask(GL_TRUE);
    relight(frame, kept, false);

    glDepthFunc(GL_LEQUAL);
    Shading shading = movingShading(frame.list, Shading::Output::linear);
    shading.waterDepth = !frame.view.camera.orthographicScale;
    const DrawLayer* layers[] = {&frame.list.drifting, &frame.list.moving};
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) studio_.surfaces.draw(item, shading, frame.view, whole);
    studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    multisampled_.resolve(0, whole, light_, 0, 0, 0);

    unsigned bloom = studio_.development.bloom(light_.colour(), frame.view);
    picture_.bind();
    studio_.development.develop(light_.colour(), bloom, 0, frame.view);
    return picture_;
}

const Target& FramePainter::drawFast(const Stage& stage, KeptLayer& kept) {
    Frame frame = begin(stage, kept);
    const PixelSize& size = frame.view.size;
    PixelArea whole = PixelArea::whole(size);
    Shading shading = movingShading(frame.list, Shading::Output::display);
    shading.plainFilm = !frame.view.camera.hdr;
    Shading calm = shading;
    calm.lamps = {};
    backdrop_.update(frame.list.drifting, calm, kept, stage.time);

    if (!fast_ || !(fast_.size() == size)) fast_ = Target(size, {{Format::rgba8}, Format::depth24});
    copyArea(backdrop_.picture().colour(), fast_.colour(), whole, false);
    copyArea(backdrop_.picture().depth(), fast_.depth(), whole, true);
    // Where things that move may stand in what drifts, that is drawn over them.
    PixelArea wet = wetPart(frame);
    copyArea(kept.picture().colour(), fast_.colour(), wet, false);
    copyArea(kept.depth(), fast_.depth(), wet, true);

    fast_.bind();
    glDisable(GL_DEPTH_TEST);
    relight(frame, kept, true);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    shading.small = true;
    for (const DrawItem& item : frame.list.moving.opaque)
        studio_.surfaces.draw(item, shading, frame.view, whole);
    shading.small = false;
    backdrop_.draw(frame.list.drifting, calm, kept, wet, stage.time);
    const DrawLayer* layers[] = {&frame.list.moving};
    studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    return fast_;
}

PixelArea FramePainter::wetPart(const Frame& frame) const {
    PixelArea wet;
    for (const PixelArea& area : frame.relit) wet = wet.united(area.intersection(backdrop_.reach()));
    for (const DrawItem& item : frame.list.moving.opaque)
        wet = wet.united(item.area.intersection(backdrop_.reach()));
    return wet;
}

}  // namespace gull
