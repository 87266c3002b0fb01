#include "Engine/Render/KeptLayer.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/FilmSight.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/Stopwatch.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

// What is drawn in one step where a frame waits for it, pixels.
constexpr PixelSize tileSize{320, 128};
constexpr PixelSize edgeTileSize{416, 48};  // in whole squares; of no power of two, as other pictures' tiles
constexpr int stripHeight = 100;

std::vector<PixelArea> tilesOf(const PixelArea& area, const PixelSize& size) {
    std::vector<PixelArea> tiles;
    for (int y = area.y; y < area.top(); y += size.height)
        for (int x = area.x; x < area.right(); x += size.width)
            tiles.push_back(PixelArea{x, y, size.width, size.height}.intersection(area));
    return tiles;
}

}  // namespace

bool KeptLayer::showsContent(const Stage& stage) const {
    return stage_ == &stage && stage.keptChangesSince(serial_).has_value();
}

void KeptLayer::begin(const Stage& stage, const Viewpoint& view, int mostShadow) {
    stage_ = &stage;
    mostShadow_ = mostShadow;
    view_ = view;
    serial_ = stage.keptSerial();
    done_ = false;
    work_ = {PixelArea::whole(view.size), std::nullopt, true, {}, Step::shadow, 0};
    waiting_.clear();
    changes_.begin(view.size);
    const PixelSize& size = view.size;
    if (!light_ || !(light_.size() == size)) {
        depth_ = Target(size, {{}, Format::depth24});
        light_ = Target(size, {{Format::rgba16f, Format::rgba8, Format::rgba8, Format::rgba8},
                               Format::none,
                               1,
                               depth_.depth()});
        farthest_ = Target({(size.width + 1) / 2, (size.height + 1) / 2}, {{}, Format::depth24});
        picture_ = Target(size, {{Format::bgra8}});
    }
    light_.bind();  // the background is not drawn where nobody sees it
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    if (!tile_) tile_ = Target(edgeTileSize, {{Format::rgba16f}, Format::depth24, 4});
}

int KeptLayer::shadowSize(const DrawList& list) const {
    return std::min(list.sun.light->shadowMapSize, mostShadow_);
}

Shading KeptLayer::shading(const DrawList& list) const {
    Shading shading;
    shading.output = Shading::Output::kept;
    shading.lamps = list.kept.lamps;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.occlusion = view_.camera.hdr && !view_.camera.orthographicScale;
    return shading;
}

void KeptLayer::prepare(const Stage& stage, DrawList& list) {
    list = DrawList::of(stage, view_, studio_.meshes);
    block_ = frameBlock(stage, view_, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                        studio_.options);
    setLamps(block_, list.kept.lamps);
    studio_.uniforms.upload(block_);
    if (!shading(list).sunShadow) shadow_.clear();
    if (!shading(list).occlusion) contact_.clear();
    shadow_.bind(unitSunShadow);
    contact_.bind();
    paint_.begin(list.kept.opaque, view_.size);
}

bool KeptLayer::build(const Stage& stage, double budget) {
    if (complete()) return true;
    DrawList list;
    prepare(stage, list);
    work(stage, list, budget);
    done_ = work_.step == Step::done;
    return done_;
}

void KeptLayer::work(const Stage& stage, const DrawList& list, double budget) {
    const Stopwatch watch;
    do {
        if (work_.nextPart == 0) work_.hurried = std::isfinite(budget);
        takeStep(stage, list);
        // Without a hurry the rasteriser works while the next step is thought of.
        if (std::isfinite(budget)) glFinish();
    } while (work_.step != Step::done && watch.elapsed() < budget);
}

void KeptLayer::takeStep(const Stage& stage, const DrawList& list) {
    const std::vector<PixelArea> parts = partsOf(work_.step, list);
    if (work_.nextPart < parts.size()) drawPart(stage, list, parts[work_.nextPart++]);
    if (work_.nextPart < parts.size()) return;
    work_.step = static_cast<Step>(static_cast<int>(work_.step) + 1);
    work_.nextPart = 0;
}

std::vector<PixelArea> KeptLayer::partsOf(Step step, const DrawList& list) const {
    const bool everything = !work_.changed;
    // What is drawn in many parts is sent to the graphics card many times.
    const PixelSize whole = view_.size;
    const PixelSize strip = work_.hurried ? PixelSize{whole.width, stripHeight} : whole;
    switch (step) {
        case Step::shadow: {
            if (!list.sun.light || !list.sun.light->castsShadow) return {};
            if (!everything) return {work_.area};
            const int size = shadowSize(list);
            return tilesOf(PixelArea{0, 0, size, size}, {size, work_.hurried ? size / 8 : size});
        }
        case Step::depth:
        case Step::contact:
            return tilesOf(work_.area, strip);
        case Step::relief:
            return work_.recast ? std::vector{work_.area} : std::vector<PixelArea>{};
        case Step::tiles:
            return tilesOf(work_.area, work_.hurried ? tileSize : whole);
        case Step::edges:
            return tilesOf(work_.area, edgeTileSize);
        case Step::glow:
            return everything ? std::vector{work_.area} : std::vector<PixelArea>{};
        case Step::develop:
            if (!everything) return {work_.area.united(work_.painted)};
            return tilesOf(work_.area, strip);
        case Step::done:
            break;
    }
    return {};
}

void KeptLayer::drawPart(const Stage& stage, const DrawList& list, const PixelArea& part) {
    shadow_.bind(unitSunShadow);
    contact_.bind();
    switch (work_.step) {
        case Step::shadow:
            if (!work_.changed)
                shadow_.drawPart(list.kept, list.sun.matrix, shadowSize(list), studio_.sunDepth, part);
            else if (work_.recast)
                shadow_.redraw(list.kept, list.sun.matrix, studio_.sunDepth, *work_.changed);
            casters_ = casterHash(list.kept);
            break;
        case Step::depth:
            drawDepth(list, part);
            break;
        case Step::relief:
            readDepth(list, part);
            break;
        case Step::contact:
            if (shading(list).occlusion) contact_.draw(depth(), view_, part);
            break;
        case Step::tiles:
            drawTile(stage, list, part);
            break;
        case Step::edges:
            drawEdges(stage, list, part);
            break;
        case Step::glow:
            findGlow(list);
            break;
        case Step::develop:
            develop(part);
            break;
        case Step::done:
            break;
    }
}

void KeptLayer::drawDepth(const DrawList& list, const PixelArea& area) {
    glEnable(GL_SCISSOR_TEST);
    depth_.bind();
    glScissor(area.x, area.y, area.width, area.height);
    glDepthMask(GL_TRUE);
    glClear(GL_DEPTH_BUFFER_BIT);
    studio_.drawDepth(list.kept, view_, area);

    farthest_.bind();
    glScissor(area.x / 2 - 1, area.y / 2 - 1, area.width / 2 + 3, area.height / 2 + 3);
    glDepthFunc(GL_ALWAYS);
    bindTexture(unitKeptDepth, depth());
    studio_.farthest.use();
    studio_.screen.draw(studio_.farthest);
    glDisable(GL_SCISSOR_TEST);
}

void KeptLayer::readDepth(const DrawList& list, const PixelArea& area) {
    const PixelSize& size = view_.size;
    const auto width = static_cast<std::size_t>(size.width);
    depths_.resize(width * static_cast<std::size_t>(size.height), 1);
    glBindFramebuffer(GL_FRAMEBUFFER, depth_.framebuffer());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, size.width);
    glReadPixels(area.x, area.y, area.width, area.height, GL_DEPTH_COMPONENT, GL_FLOAT,
                 &depths_[static_cast<std::size_t>(area.y) * width + static_cast<std::size_t>(area.x)]);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    relief_.read(depths_, view_, list.sun.toward, area);
    edges_.find(depths_, view_, area);
}

void KeptLayer::drawTile(const Stage& stage, const DrawList& list, const PixelArea& area) {
    light_.bind();
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x, area.y, area.width, area.height);
    glClearColor(0, 0, 0, 0);
    if (!stage.background) glClear(GL_COLOR_BUFFER_BIT);
    drawSurfaces(stage, list, area);
    glDisable(GL_SCISSOR_TEST);
}

void KeptLayer::drawEdges(const Stage& stage, const DrawList& list, const PixelArea& area) {
    std::vector<PixelArea> cells = edges_.within(area);
    if (cells.empty()) return;
    PixelArea part;
    for (const PixelArea& cell : cells) part = part.united(cell);
    block_.tile = {area.x, area.y, 0, 0};
    studio_.uniforms.upload(block_);
    tile_.bind();
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x - area.x, part.y - area.y, part.width, part.height);
    glViewport(-area.x, -area.y, view_.size.width, view_.size.height);
    // Nothing is drawn where depth stays as near as it can be.
    glDepthMask(GL_TRUE);
    glClearColor(0, 0, 0, 0);
    glClearDepth(0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearDepth(1);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    studio_.farAway.use();
    studio_.farAway.set("shift", glm::vec2(0));
    studio_.farAway.set("texel", 1.0F / glm::vec2(view_.size.width, view_.size.height));
    studio_.farAway.set("depth", 1.0F);
    studio_.areas.draw(cells);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    drawSurfaces(stage, list, part);
    glDisable(GL_SCISSOR_TEST);
    for (PixelArea& cell : cells) {
        cell.x -= area.x;
        cell.y -= area.y;
    }
    studio_.resolve.draw(tile_, cells, light_, area.x, area.y);
    block_.tile = {0, 0, 0, 0};
    studio_.uniforms.upload(block_);
}

void KeptLayer::drawSurfaces(const Stage& stage, const DrawList& list, const PixelArea& area) {
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    const Shading how = shading(list);
    for (const DrawItem& item : list.kept.opaque) studio_.surfaces.draw(item, how, view_, area);
    if (showsSky(list, area)) studio_.drawSky(stage, view_, how.output);
}

bool KeptLayer::showsSky(const DrawList& list, const PixelArea& area) const {
    // A pixel more all round, of which some samples may lie in `area`'s.
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
    return std::none_of(
        list.drifting.blended.begin(), list.drifting.blended.end(),
        [&](const DrawItem& item) { return isFilm(item) && covers(item, view_, sky, highest); });
}

void KeptLayer::findGlow(const DrawList& list) {
    bloom_ = 0;
    if (!view_.camera.hdr || view_.camera.bloomIntensity <= 0) return;
    std::vector<const DrawItem*> glittering;
    for (const DrawItem& item : list.drifting.blended) {
        if (!isFilm(item)) continue;
        const PixelArea seen = relief_.below(transformed(item.mesh->bounds, item.model).max.y);
        if (glitters(view_, seen, list.sun.toward)) glittering.push_back(&item);
    }
    if (glittering.empty()) {
        keepGlow(light_);
        return;
    }
    const PixelSize half = farthest_.size();
    Target light(half, {{Format::rgba16f}, Format::depth24});
    light.bind();
    studio_.copy.stretch(light_.colour(0), half);
    copyArea(farthest_.depth(), light.depth(), PixelArea::whole(half), true);

    FrameBlock block = block_;
    block.picture = {half.width, half.height, 1.0F / static_cast<float>(half.width),
                     1.0F / static_cast<float>(half.height)};
    studio_.uniforms.upload(block);
    bindTexture(unitKeptDepth, depth());
    light.bind();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    Shading shading;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.waterDepth = true;
    for (const DrawItem* item : glittering)
        studio_.surfaces.draw(*item, shading, view_, PixelArea::whole(view_.size));
    studio_.uniforms.upload(block_);
    keepGlow(light);
}

void KeptLayer::keepGlow(const Target& light) {
    studio_.development.bloom(light.colour(), view_);
    const PixelSize quarter{std::max(1, view_.size.width / 4), std::max(1, view_.size.height / 4)};
    if (!glow_ || !(glow_.size() == quarter)) glow_ = Target(quarter, {{Format::rgba16f}});
    studio_.development.copyBloom(glow_);
    bloom_ = glow_.colour();
}

void KeptLayer::develop(const PixelArea& area) {
    changes_.mark(area);
    studio_.uniforms.upload(block_);
    paint_.draw(view_, area, light_.colour(2), depth());
    picture_.bind();
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x, area.y, area.width, area.height);
    studio_.development.develop(light_.colour(0), bloom_, paint(), view_);
    glDisable(GL_SCISSOR_TEST);
}

bool KeptLayer::refresh(const Stage& stage, double budget) {
    if (stage.keptSerial() != serial_) {
        const auto changes = stage.keptChangesSince(serial_);
        if (!changes || !complete()) return false;
        serial_ = stage.keptSerial();
        follow(*changes);
    }
    if (!complete() || !pending()) return true;
    DrawList list;
    prepare(stage, list);
    const Stopwatch watch;
    do {
        if (work_.step == Step::done) beginRedraw(list);
        if (work_.step != Step::done) work(stage, list, budget);
    } while (pending() && watch.elapsed() < budget);
    return true;
}

void KeptLayer::follow(const std::vector<Stage::KeptChange>& changes) {
    for (const auto& [serial, box, onlyPaint] : changes) {
        if (!onlyPaint) {
            waiting_.push_back(box);
            continue;
        }
        const PixelArea area = view_.area(box).grown(2).intersection(PixelArea::whole(view_.size));
        // Depth and light of what is being drawn are ahead of the picture.
        if (work_.step != Step::done && !area.intersection(work_.area).empty())
            work_.painted = work_.painted.united(area);
        else
            develop(area);
    }
}

void KeptLayer::beginRedraw(const DrawList& list) {
    const bool recast = casterHash(list.kept) != casters_ && list.sun.light && list.sun.light->castsShadow;
    PixelArea area;
    Box changed;
    for (const Box& box : waiting_) {
        Box reach = box;
        changed.include(box);
        // What came or went throws its shadow elsewhere than where it stands.
        for (int corner = 0; recast && corner < 4; ++corner) {
            glm::dvec3 top(corner & 1 ? box.max.x : box.min.x, box.max.y, corner & 2 ? box.max.z : box.min.z);
            double down = box.size().y + 0.3;
            reach.include(top - list.sun.toward * (down / std::max(list.sun.toward.y, 0.2)));
        }
        area = area.united(view_.area(reach).grown(2));
    }
    waiting_.clear();
    area = area.intersection(PixelArea::whole(view_.size));
    if (area.empty()) return;
    work_ = {area, changed, recast, {}, Step::shadow, 0};
}

}  // namespace gull
