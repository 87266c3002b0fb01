#include "Engine/Render/FramePainter.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/Stopwatch.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <functional>

namespace gull {

struct FramePainter::Frame {
    const Stage& stage;
    const Viewpoint& view;
    DrawList list;
    FrameBlock block;
    /// Where exactly these of a ReliefGrid's marks reach, by the marks.
    std::array<std::vector<PixelArea>, 4> reached;
    bool shadow = false;
    int lamps = 0;
};

namespace {

/// Share of a lamp's reach beyond which its light is too weak to tell.
constexpr double visibleReach = 0.85;

Shading movingShading(const DrawList& list, Shading::Output output) {
    Shading shading;
    shading.output = output;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.lamps = list.moving.lamps;
    return shading;
}

std::vector<PixelArea> within(const PixelArea& part, const std::vector<PixelArea>& areas) {
    std::vector<PixelArea> inside;
    for (const PixelArea& area : areas)
        if (const PixelArea common = area.intersection(part); !common.empty()) inside.push_back(common);
    return inside;
}

}  // namespace

FramePainter::FramePainter(Studio& studio)
    : studio_(studio),
      cover_("moving cover", shaders::relightVertex, shaders::coverFragment, {"OUT_COVER"}),
      quickSky_(GlSampler::make()),
      backdrop_(studio) {
    glSamplerParameteri(quickSky_.name(), GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glSamplerParameteri(quickSky_.name(), GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

FramePainter::Frame FramePainter::begin(const Stage& stage, KeptLayer& kept, DrawList::Detail detail) {
    const Viewpoint& view = kept.view();
    Frame frame{stage,
                view,
                DrawList::of(stage, view, studio_.meshes, DrawList::Which::notKept, detail),
                FrameBlock(),
                {}};
    const DrawList& list = frame.list;
    frame.block =
        frameBlock(stage, view, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                   studio_.options);
    std::vector<Lamp> lamps = list.moving.lamps;
    setLamps(frame.block, lamps);
    frame.lamps = FrameBlock::lampsInProgram(lamps.size());
    ReliefGrid& relief = kept.relief();
    relief.clear();
    for (const Lamp& lamp : lamps) {
        if (lamp.end > 0)
            relief.markReach(lamp.position, lamp.end * visibleReach);
        else
            relief.markAllLit();
    }
    frame.shadow =
        shadow_.draw(list.moving, list.sun, studio_.sunDepth, studio_.options, frame.block, relief);
    for (int marks = 1; marks < 4; ++marks)
        frame.reached[static_cast<std::size_t>(marks)] = relief.marked(marks);
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

const Program& FramePainter::relightProgram(const Frame& frame, const KeptLayer& kept, int marks,
                                            bool display) {
    bool shadow = (marks & ReliefGrid::shadowMark) != 0, lamps = (marks & ReliefGrid::lampMark) != 0;
    bool plain = !frame.view.camera.hdr, paint = kept.paint() != 0;
    int key = (shadow ? 1 : 0) + (display ? 2 : 0) + (plain ? 4 : 0) + (paint ? 8 : 0) +
              (lamps ? frame.lamps * 16 : 0);
    auto found = relightPrograms_.find(key);
    if (found == relightPrograms_.end()) {
        std::vector<std::string> defines;
        if (shadow) defines.emplace_back("MOVING_SHADOW");
        if (lamps && frame.lamps > 0) defines.push_back("LAMPS " + std::to_string(frame.lamps));
        if (display) defines.emplace_back("OUT_DISPLAY");
        if (plain) defines.emplace_back("PLAIN_FILM");
        if (paint) defines.emplace_back("PAINT");
        found =
            relightPrograms_
                .emplace(key, Program("relight", shaders::relightVertex, shaders::relightFragment, defines))
                .first;
    }
    return found->second;
}

void FramePainter::drawCover(const Frame& frame, const PixelArea& part, int shrink) {
    if (!frame.shadow) return;
    const PixelSize& size = frame.view.size;
    const PixelSize small{(size.width + shrink - 1) / shrink, (size.height + shrink - 1) / shrink};
    if (!covered_ || !(covered_.size() == small)) covered_ = Target(small, {{Format::r8}});
    std::vector<PixelArea> shaded;
    for (int marks : {ReliefGrid::shadowMark + 0, ReliefGrid::shadowMark | ReliefGrid::lampMark})
        // The smoothing at full resolution looks one pixel farther.
        for (const PixelArea& area : frame.reached[static_cast<std::size_t>(marks)])
            shaded.push_back(area.intersection(part).grown(2));
    covered_.bind();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    cover_.use();
    cover_.set("shrink", shrink);
    studio_.areas.draw(shaded);
    bindTexture(unitMovingCover, covered_.colour());
}

void FramePainter::relight(const Frame& frame, const KeptLayer& kept, const PixelArea& part) {
    bindTexture(unitSource, kept.picture().colour());
    glDisable(GL_BLEND);
    for (int marks = 1; marks < 4; ++marks) {
        const std::vector<PixelArea> areas = within(part, frame.reached[static_cast<std::size_t>(marks)]);
        if (areas.empty()) continue;
        relightProgram(frame, kept, marks, true).use();
        studio_.areas.draw(areas);
    }
}

const Target& FramePainter::drawFull(const Stage& stage, KeptLayer& kept) {
    Frame frame = begin(stage, kept, DrawList::Detail::fine);
    const PixelSize& size = frame.view.size;
    drawCover(frame, PixelArea::whole(size), 1);
    if (!light_ || !(light_.size() == size)) {
        multisampled_ = Target(size, {{Format::rgba16f}, Format::depth24, 4});
        light_ = Target(size, {{Format::rgba16f}});
        picture_ = Target(size, {{Format::bgra8}});
    }
    PixelArea whole = PixelArea::whole(size);
    multisampled_.bind();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glDepthMask(GL_TRUE);
    int marks = (frame.shadow ? ReliefGrid::shadowMark : 0) | (frame.lamps > 0 ? ReliefGrid::lampMark : 0);
    const Program& program = relightProgram(frame, kept, marks, false);
    glDisable(GL_BLEND);
    program.use();
    studio_.screen.draw(program);

    glDepthFunc(GL_LEQUAL);
    Shading shading = movingShading(frame.list, Shading::Output::linear);
    shading.waterDepth = !frame.view.camera.orthographicScale;
    const DrawLayer* layers[] = {&frame.list.drifting, &frame.list.moving};
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) studio_.surfaces.draw(item, shading, frame.view, whole);
    studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    studio_.resolve.draw(multisampled_, {whole}, light_, 0, 0);

    unsigned bloom = studio_.development.bloom(light_.colour(), frame.view);
    picture_.bind();
    studio_.development.develop(light_.colour(), bloom, 0, frame.view);
    return picture_;
}

const Target& FramePainter::drawFast(const Stage& stage, KeptLayer& kept) {
    Frame frame = begin(stage, kept, DrawList::Detail::coarse);
    glBindSampler(unitEnvironment, quickSky_.name());
    const PixelSize& size = frame.view.size;
    Shading shading = movingShading(frame.list, Shading::Output::display);
    shading.plainFilm = !frame.view.camera.hdr;
    Shading calm = shading;
    calm.lamps = {};
    if (!fast_ || !(fast_.size() == size)) {
        fast_ = Target(size, {{Format::bgra8}, Format::depth24});
        stale_.begin(size);
        changes_.begin(size);
    }
    const std::vector<PixelArea> renewed = backdrop_.update(frame.list.drifting, calm, kept, stage.time);
    const PixelArea part = restore(frame, renewed);
    if (part.empty()) return fast_;
    drawCover(frame, part, 2);
    // Where things that move may stand in what drifts, that is drawn over them.
    const PixelArea wet = wetPart(frame).intersection(part);
    copyArea(kept.picture().colour(), fast_.colour(), wet, false);
    copyArea(kept.depth(), fast_.depth(), wet, true);
    markTouched(frame, wet, part);

    fast_.bind();
    glDisable(GL_DEPTH_TEST);
    relight(frame, kept, part);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    shading.small = true;
    for (const DrawItem& item : frame.list.moving.opaque)
        studio_.surfaces.draw(item, shading, frame.view, part);
    shading.small = false;
    backdrop_.draw(frame.list.drifting, calm, kept, wet, stage.time);
    const DrawLayer* layers[] = {&frame.list.moving};
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    studio_.drawBlended(layers, shading, frame.view, part, stage.time);
    glDisable(GL_SCISSOR_TEST);
    return fast_;
}

PixelArea FramePainter::restore(const Frame& frame, const std::vector<PixelArea>& renewed) {
    const auto copy = [&](const PixelArea& area) {
        copyArea(backdrop_.picture().colour(), fast_.colour(), area, false);
        copyArea(backdrop_.picture().depth(), fast_.depth(), area, true);
        changes_.mark(area);
    };
    const std::optional<std::uint64_t> appearance = appearanceHash(frame.list.moving);
    const bool rests = appearance && appearance == appearance_;
    appearance_ = appearance;
    if (rests) {
        PixelArea part;
        for (const PixelArea& area : renewed) part = part.united(area);
        copy(part);
        return part;
    }
    for (const PixelArea& area : renewed) stale_.mark(area);
    for (const PixelArea& area : stale_.take()) copy(area);
    return PixelArea::whole(frame.view.size);
}

bool FramePainter::rehearseFast(const Stage& stage, KeptLayer& kept, double budget) {
    if (!fast_) return false;
    Frame frame = begin(stage, kept, DrawList::Detail::coarse);
    glBindSampler(unitEnvironment, quickSky_.name());
    Shading shading = movingShading(frame.list, Shading::Output::display);
    shading.plainFilm = !frame.view.camera.hdr;
    std::vector<std::function<void()>> things;
    const PixelArea corner{0, 0, 1, 1}, whole = PixelArea::whole(frame.view.size);
    for (int marks = 1; marks < 4; ++marks) {
        if ((marks & ReliefGrid::shadowMark) != 0 && !frame.shadow) continue;
        if ((marks & ReliefGrid::lampMark) != 0 && frame.lamps == 0) continue;
        things.emplace_back([&, marks] {
            relightProgram(frame, kept, marks, true).use();
            studio_.areas.draw({corner});
        });
    }
    for (const DrawItem& item : frame.list.moving.opaque) {
        // A picture may have to be painted first.
        for (const Channel* map : {&item.material->diffuseMap, &item.material->normalMap})
            if (*map)
                things.emplace_back(
                    [&, map] { studio_.textures.bind(unitDiffuse, *map, TextureCache::Filter::quick); });
        things.emplace_back([&] {
            shading.small = true;
            studio_.surfaces.draw(item, shading, frame.view, whole);
            shading.small = false;
        });
    }
    auto blend = [&](const DrawLayer& layer) {
        const DrawLayer* layers[] = {&layer};
        studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    };
    for (const DrawItem& item : frame.list.moving.blended)
        things.emplace_back([&] { blend({{}, {item}, {}, {}}); });
    for (const ParticleItem& item : frame.list.moving.particles)
        things.emplace_back([&] { blend({{}, {}, {item}, {}}); });

    drawCover(frame, corner, 2);
    stale_.mark(corner);
    appearance_.reset();
    fast_.bind();
    glDisable(GL_BLEND);
    bindTexture(unitSource, kept.picture().colour());
    glEnable(GL_SCISSOR_TEST);
    glScissor(corner.x, corner.y, corner.width, corner.height);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    const Stopwatch watch;
    do {
        if (rehearsed_ < things.size()) things[rehearsed_++]();
        glFinish();
    } while (rehearsed_ < things.size() && watch.elapsed() < budget);
    glDisable(GL_SCISSOR_TEST);
    if (rehearsed_ < things.size()) return false;
    rehearsed_ = 0;
    return true;
}

void FramePainter::markTouched(const Frame& frame, const PixelArea& wet, const PixelArea& part) {
    const auto mark = [&](const PixelArea& area) {
        stale_.mark(area);
        changes_.mark(area.intersection(part));
    };
    mark(wet);
    for (const std::vector<PixelArea>& areas : frame.reached)
        for (const PixelArea& area : areas) mark(area);
    const DrawLayer& moving = frame.list.moving;
    for (const std::vector<DrawItem>* items : {&moving.opaque, &moving.blended})
        for (const DrawItem& item : *items) mark(item.area);
    for (const ParticleItem& item : moving.particles) {
        const glm::dvec3 far(reach(*item.system));
        mark(frame.view.area({-far, far}, item.model).grown(2));
    }
}

PixelArea FramePainter::wetPart(const Frame& frame) const {
    PixelArea wet;
    for (const std::vector<PixelArea>& areas : frame.reached)
        for (const PixelArea& area : areas) wet = wet.united(area.intersection(backdrop_.reach()));
    for (const DrawItem& item : frame.list.moving.opaque)
        wet = wet.united(item.area.intersection(backdrop_.reach()));
    return wet;
}

}  // namespace gull
