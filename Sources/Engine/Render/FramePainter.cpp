#include "Engine/Render/FramePainter.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/Stopwatch.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace gull {

struct FramePainter::Frame {
    const Stage& stage;
    const Viewpoint& view;
    DrawList list;
    FrameBlock block;
    MovingLight::Reach reach;
};

namespace {

/// The weakest light on a surface that can be told on the film: half a step of eight bits, about.
constexpr double weakestLight = 0.006;

/// How far from `lamp`, which has a limit, its light can be told; `exposure`: from scene light to the film.
double visibleReach(const Lamp& lamp, double exposure) {
    const double strength = std::max({lamp.colour.r, lamp.colour.g, lamp.colour.b}) * exposure;
    if (strength <= weakestLight) return 0;
    // What is left of it is the share of the way to the end, from full to nothing, to its exponent.
    const double left = std::pow(weakestLight / strength, 1 / lamp.exponent);
    return lamp.end - std::max(lamp.end - lamp.start, 0.0) * left;
}

Shading movingShading(const DrawList& list, Shading::Output output) {
    Shading shading;
    shading.output = output;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.lamps = list.moving.lamps;
    return shading;
}

}  // namespace

FramePainter::FramePainter(Studio& studio)
    : studio_(studio), light_(studio), quickSky_(GlSampler::make()), backdrop_(studio) {
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
    frame.reach.lamps = FrameBlock::lampsInProgram(lamps.size());
    ReliefGrid& relief = kept.relief();
    relief.clear();
    const double exposure =
        frame.block.eye.w * std::max({frame.block.film.r, frame.block.film.g, frame.block.film.b});
    for (const Lamp& lamp : lamps) {
        if (lamp.end > 0)
            relief.markReach(lamp.position, visibleReach(lamp, exposure));
        else
            relief.markAllLit();
    }
    frame.reach.shadow =
        shadow_.draw(list.moving, list.sun, studio_.sunDepth, studio_.options, frame.block, relief);
    for (int marks = 1; marks < 4; ++marks)
        frame.reach.areas[static_cast<std::size_t>(marks)] = relief.marked(marks);
    studio_.uniforms.upload(frame.block);
    if (frame.reach.shadow) shadow_.bind(unitMovingShadow);
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

const Target& FramePainter::drawFull(const Stage& stage, KeptLayer& kept) {
    Frame frame = begin(stage, kept, DrawList::Detail::fine);
    const PixelSize& size = frame.view.size;
    if (!resolved_ || !(resolved_.size() == size)) {
        multisampled_ = Target(size, {{Format::rgba16f}, Format::depth24, 4});
        resolved_ = Target(size, {{Format::rgba16f}});
        picture_ = Target(size, {{Format::bgra8}});
    }
    PixelArea whole = PixelArea::whole(size);
    light_.drawOver(multisampled_, frame.reach, kept);

    glDepthFunc(GL_LEQUAL);
    Shading shading = movingShading(frame.list, Shading::Output::linear);
    shading.waterDepth = !frame.view.camera.orthographicScale;
    const DrawLayer* layers[] = {&frame.list.drifting, &frame.list.moving};
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) studio_.surfaces.draw(item, shading, frame.view, whole);
    studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    studio_.resolve.draw(multisampled_, {whole}, resolved_, 0, 0);

    unsigned bloom = studio_.development.bloom(resolved_.colour(), frame.view);
    picture_.bind();
    studio_.development.develop(resolved_.colour(), bloom, 0, frame.view);
    return picture_;
}

const Target& FramePainter::drawFast(const Stage& stage, KeptLayer& kept, bool moving) {
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
        staleDepth_.begin(size);
        changes_.begin(size);
    }
    const std::vector<PixelArea> renewed =
        backdrop_.update(frame.list.drifting, calm, kept, stage.time, moving);
    const PixelArea part = restore(frame, renewed);
    if (part.empty()) return fast_;
    light_.find(frame.reach, kept, part);
    // Where things that move may stand in what drifts, that is drawn over them.
    const PixelArea wet = wetPart(frame).intersection(part);
    copyArea(kept.picture().colour(), fast_.colour(), wet, false);
    copyArea(kept.depth(), fast_.depth(), wet, true);
    markTouched(frame, wet, part);

    fast_.bind();
    glDisable(GL_DEPTH_TEST);
    light_.apply(frame.reach, size, part);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    shading.small = true;
    for (const DrawItem& item : frame.list.moving.opaque)
        studio_.surfaces.draw(item, shading, frame.view, part);
    backdrop_.draw(frame.list.drifting, calm, kept, wet, stage.time);
    const DrawLayer* layers[] = {&frame.list.moving};
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    studio_.drawBlended(layers, shading, frame.view, part, stage.time);
    glDisable(GL_SCISSOR_TEST);
    return fast_;
}

PixelArea FramePainter::restore(const Frame& frame, const std::vector<PixelArea>& renewed) {
    const auto copyColour = [&](const PixelArea& area) {
        copyArea(backdrop_.picture().colour(), fast_.colour(), area, false);
        changes_.mark(area);
    };
    const auto copyDepth = [&](const PixelArea& area) {
        copyArea(backdrop_.picture().depth(), fast_.depth(), area, true);
    };
    const std::optional<std::uint64_t> appearance = appearanceHash(frame.list.moving);
    const bool rests = appearance && appearance == appearance_;
    appearance_ = appearance;
    if (rests) {
        PixelArea part;
        for (const PixelArea& area : renewed) part = part.united(area);
        copyColour(part);
        copyDepth(part);
        return part;
    }
    for (const PixelArea& area : renewed) {
        stale_.mark(area);
        staleDepth_.mark(area);
    }
    for (const PixelArea& area : stale_.take()) copyColour(area);
    for (const PixelArea& area : staleDepth_.take()) copyDepth(area);
    return PixelArea::whole(frame.view.size);
}

bool FramePainter::rehearseFast(const Stage& stage, KeptLayer& kept, double budget) {
    if (!fast_) return false;
    Frame frame = begin(stage, kept, DrawList::Detail::coarse);
    glBindSampler(unitEnvironment, quickSky_.name());
    Shading shading = movingShading(frame.list, Shading::Output::display);
    shading.plainFilm = !frame.view.camera.hdr;
    shading.small = true;
    std::vector<std::function<void()>> things;
    const PixelArea corner{0, 0, 1, 1}, whole = PixelArea::whole(frame.view.size);
    // In any number of lamps, whatever shines now. Without an end they reach everything.
    const std::array<Lamp, FrameBlock::mostLamps> lamps{};
    const auto light = [&](int count) {
        shading.lamps = std::span(lamps).first(static_cast<std::size_t>(count));
    };
    for (int count : FrameBlock::lampPrograms)
        for (int marks = 1; marks < 4; ++marks) {
            if ((count > 0) != ((marks & ReliefGrid::lampMark) != 0)) continue;
            things.emplace_back([&, count, marks] {
                light_.rehearse({{}, frame.reach.shadow, count}, kept, marks);
                fast_.bind();
                glEnable(GL_DEPTH_TEST);
            });
        }
    for (const DrawItem& item : frame.list.moving.opaque) {
        // A picture may have to be painted first.
        for (const Channel* map : {&item.material->diffuseMap, &item.material->normalMap})
            if (*map)
                things.emplace_back(
                    [&, map] { studio_.textures.bind(unitDiffuse, *map, TextureCache::Filter::quick); });
        for (int count : FrameBlock::lampPrograms)
            things.emplace_back([&, count] {
                light(count);
                studio_.surfaces.draw(item, shading, frame.view, whole);
            });
    }
    auto blend = [&](const DrawLayer& layer) {
        const DrawLayer* layers[] = {&layer};
        studio_.drawBlended(layers, shading, frame.view, whole, stage.time);
    };
    for (const DrawItem& item : frame.list.moving.blended)
        for (int count : FrameBlock::lampPrograms)
            things.emplace_back([&, count] {
                light(count);
                blend({{}, {item}, {}, {}});
            });
    for (const ParticleItem& item : frame.list.moving.particles)
        things.emplace_back([&] { blend({{}, {}, {item}, {}}); });

    stale_.mark(corner);
    staleDepth_.mark(corner);
    appearance_.reset();
    fast_.bind();
    glDisable(GL_BLEND);
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
    staleDepth_.mark(wet);
    for (const std::vector<PixelArea>& areas : frame.reach.areas)
        for (const PixelArea& area : areas) mark(area);
    const DrawLayer& moving = frame.list.moving;
    for (const std::vector<DrawItem>* items : {&moving.opaque, &moving.blended})
        for (const DrawItem& item : *items) {
            mark(item.area);
            if (item.material->writesDepth) staleDepth_.mark(item.area);
        }
    for (const ParticleItem& item : moving.particles) {
        const glm::dvec3 far(reach(*item.system));
        mark(frame.view.area({-far, far}, item.model).grown(2));
    }
}

PixelArea FramePainter::wetPart(const Frame& frame) const {
    PixelArea wet;
    for (const std::vector<PixelArea>& areas : frame.reach.areas)
        for (const PixelArea& area : areas) wet = wet.united(area.intersection(backdrop_.reach()));
    for (const DrawItem& item : frame.list.moving.opaque)
        wet = wet.united(item.area.intersection(backdrop_.reach()));
    return wet;
}

}  // namespace gull
