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

FramePainter::FramePainter(Studio& studio)
    : studio_(studio), film_("film", shaders::surfaceVertex, shaders::filmFragment) {}

FramePainter::Frame FramePainter::begin(const Stage& stage, KeptLayer& kept) {
    const View& view = kept.view();
    Frame frame{stage,
                view,
                DrawList::of(stage, view, studio_.meshes, DrawList::Which::movingOnly),
                FrameBlock(),
                {}};
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
    for (const DrawItem& item : frame.list.moving.opaque)
        studio_.surfaces.draw(item, shading, frame.view, whole);
    const DrawLayer* layers[] = {&frame.list.moving};
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
    if (!fast_ || !(fast_.size() == size)) {
        fast_ = Target(size, {{Format::rgba8}, Format::depth24});
        half_ = Target({(size.width + 1) / 2, (size.height + 1) / 2}, {{Format::rgba8}, Format::depth24});
    }
    copyArea(kept.picture().colour(), fast_.colour(), whole, false);
    copyArea(kept.depth(), fast_.depth(), whole, true);

    fast_.bind();
    glDisable(GL_DEPTH_TEST);
    relight(frame, kept, true);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    Shading shading = movingShading(frame.list, Shading::Output::display);
    shading.plainFilm = !frame.view.camera.hdr;
    for (const DrawItem& item : frame.list.moving.opaque)
        studio_.surfaces.draw(item, shading, frame.view, whole);

    // The sea first: what is blended over sand and sea lies above both.
    DrawLayer blended;
    const DrawLayer* layers[] = {&blended};
    blended.particles = frame.list.moving.particles;
    for (const DrawItem& item : frame.list.moving.blended) {
        if (isFilm(item) && frame.view.camera.hdr)
            drawFilm(item, frame, kept);
        else
            blended.blended.push_back(item);
    }
    fast_.bind();
    studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    return fast_;
}

void FramePainter::drawFilm(const DrawItem& item, const Frame& frame, const KeptLayer& kept) {
    PixelArea whole = PixelArea::whole(frame.view.size);
    // Shaded at half resolution where any of four pixels may see it.
    copyArea(kept.farthest().depth(), half_.depth(), PixelArea::whole(half_.size()), true);
    half_.bind();
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    bindTexture(unitKeptDepth, kept.farthest().depth());
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    Shading shading = movingShading(frame.list, Shading::Output::film);
    shading.lamps = {};
    shading.bloom = kept.bloom() != 0;
    studio_.surfaces.draw(item, shading, frame.view, whole);

    fast_.bind();
    film_.use();
    film_.set("model", glm::mat4(item.model));
    bindTexture(unitSource, half_.colour());
    glEnable(GL_BLEND);
    glBlendFuncSeparate(GL_ONE, GL_SRC_ALPHA, GL_ZERO, GL_ONE);
    glDepthMask(item.material->writesDepth ? GL_TRUE : GL_FALSE);
    drawChunks(item, frame.view, whole);
}

}  // namespace gull
