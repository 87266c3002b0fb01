#include "Engine/Compositor/StaticLayer.h"

#include "Engine/Compositor/Stopwatch.h"
#include "Engine/Render/RenderContext.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

// The size of a step that a frame waits for, pixels.
constexpr PixelSize tileSize{320, 128};
constexpr int stripHeight = 100;
constexpr int skyMapsAtOnce = 2;

std::vector<PixelArea> tilesOf(const PixelArea& area, const PixelSize& size) {
    std::vector<PixelArea> tiles;
    for (int y = area.y; y < area.top(); y += size.height)
        for (int x = area.x; x < area.right(); x += size.width)
            tiles.push_back(PixelArea{x, y, size.width, size.height}.intersection(area));
    return tiles;
}

/// `box` and the ground that its shadow may fall on. The shadow of a thing that appears or disappears falls
/// elsewhere than where the thing stands.
Box withShadow(const Box& box, const glm::dvec3& towardSun) {
    Box reach = box;
    for (int corner = 0; corner < 4; ++corner) {
        const glm::dvec3 top(corner & 1 ? box.max.x : box.min.x, box.max.y,
                             corner & 2 ? box.max.z : box.min.z);
        const double down = box.size().y + 0.3;
        reach.include(top - towardSun * (down / std::max(towardSun.y, 0.2)));
    }
    return reach;
}

}  // namespace

bool StaticLayer::showsContent(const Stage& stage) const {
    return stage_ == stage.id() && stage.stillChangesSince(serial_).has_value();
}

void StaticLayer::begin(const Stage& stage, const Viewpoint& view, int mostShadow) {
    stage_ = stage.id();
    serial_ = stage.stillSerial();
    done_ = false;
    work_ = {PixelArea::whole(view.size), std::nullopt, true, {}, Step::shadow, 0};
    waiting_.clear();
    changes_.begin(view.size);
    passes_.begin(view, mostShadow);
}

bool StaticLayer::build(const Stage& stage, double budget) {
    if (complete()) return true;
    const DrawList list = DrawList::of(stage, view(), context_.meshes);
    passes_.prepare({stage, list});
    work({stage, list}, budget);
    done_ = work_.step == Step::done;
    return done_;
}

void StaticLayer::work(const Scene& scene, double budget) {
    const Stopwatch watch;
    do {
        if (work_.nextPart == 0) work_.hurried = std::isfinite(budget);
        takeStep(scene);
        // Without a hurry, the rasteriser works while the next step is prepared.
        if (std::isfinite(budget)) context_.device.finish();
    } while (work_.step != Step::done && watch.elapsed() < budget);
}

void StaticLayer::takeStep(const Scene& scene) {
    const std::vector<PixelArea> parts = partsOf(work_.step, scene);
    if (work_.nextPart < parts.size()) drawPart(scene, parts[work_.nextPart++]);
    if (work_.nextPart < parts.size()) return;
    work_.step = static_cast<Step>(static_cast<int>(work_.step) + 1);
    work_.nextPart = 0;
}

std::vector<PixelArea> StaticLayer::partsOf(Step step, const Scene& scene) const {
    const bool everything = !work_.changed;
    // Each part submits its triangles to the graphics card again.
    const PixelSize whole = view().size;
    const PixelSize strip = work_.hurried ? PixelSize{whole.width, stripHeight} : whole;
    switch (step) {
        case Step::shadow: {
            if (!passes_.castsSunShadow(scene)) return {};
            if (!everything) return {work_.area};
            const int size = passes_.shadowSize(scene);
            return tilesOf(PixelArea{0, 0, size, size}, {size, work_.hurried ? size / 8 : size});
        }
        case Step::sky:  // rows stand for maps; what changes later is too small to show in them
            if (!everything) return {};
            return tilesOf({0, 0, 1, passes_.skyMaps()},
                           {1, work_.hurried ? skyMapsAtOnce : passes_.skyMaps()});
        case Step::depth:
        case Step::contact:
            return tilesOf(work_.area, strip);
        case Step::relief:
            return work_.recast ? std::vector{work_.area} : std::vector<PixelArea>{};
        case Step::surfaces:
            return tilesOf(work_.area, work_.hurried ? tileSize : whole);
        case Step::edges:
            return tilesOf(work_.area, EdgeCells::tileSize);
        case Step::mirror:
        case Step::bloom:
            return everything ? std::vector{work_.area} : std::vector<PixelArea>{};
        case Step::picture:
            if (!everything) return {work_.area.united(work_.painted)};
            return tilesOf(work_.area, strip);
        case Step::done:
            break;
    }
    return {};
}

void StaticLayer::drawPart(const Scene& scene, const PixelArea& part) {
    switch (work_.step) {
        case Step::shadow:
            if (!work_.changed)
                passes_.drawSunShadow(scene, part);
            else if (work_.recast)
                passes_.redrawSunShadow(scene, *work_.changed);
            casters_ = casterHash(scene.list.still);
            break;
        case Step::sky:
            passes_.drawSkyMaps(scene, part.y, part.height);
            break;
        case Step::mirror:
            passes_.drawMirror(scene);
            break;
        case Step::depth:
            passes_.drawDepth(scene, part);
            break;
        case Step::relief:
            passes_.readDepth(scene, part);
            break;
        case Step::contact:
            passes_.drawContactShadows(part);
            break;
        case Step::surfaces:
            passes_.drawSurfaces(scene, part);
            break;
        case Step::edges:
            passes_.drawEdges(scene, part);
            break;
        case Step::bloom:
            passes_.findBloom(scene);
            break;
        case Step::picture:
            drawPicture(part);
            break;
        case Step::done:
            break;
    }
}

void StaticLayer::drawPicture(const PixelArea& area) {
    changes_.mark(area);
    passes_.drawPicture(area);
}

bool StaticLayer::refresh(const Stage& stage, double budget) {
    if (stage.stillSerial() != serial_) {
        const auto changes = stage.stillChangesSince(serial_);
        if (!changes || !complete()) return false;
        serial_ = stage.stillSerial();
        follow(*changes);  // paint needs no list: PaintLayer keeps the items, whose nodes outlive it
    }
    if (!complete() || !pending()) return true;
    const DrawList list = DrawList::of(stage, view(), context_.meshes);
    passes_.prepare({stage, list});
    const Stopwatch watch;
    do {
        if (work_.step == Step::done) beginRedraw(list);
        if (work_.step != Step::done) work({stage, list}, budget);
    } while (pending() && watch.elapsed() < budget);
    return true;
}

void StaticLayer::follow(const std::vector<Stage::StillChange>& changes) {
    for (const auto& [serial, box, onlyPaint] : changes) {
        if (!onlyPaint) {
            waiting_.push_back(box);
            continue;
        }
        const PixelArea area = view().area(box).grown(2).intersection(PixelArea::whole(view().size));
        // In the area being drawn, depth and light are already ahead of the picture.
        if (work_.step != Step::done && !area.intersection(work_.area).empty())
            work_.painted = work_.painted.united(area);
        else
            drawPicture(area);
    }
}

void StaticLayer::beginRedraw(const DrawList& list) {
    const bool recast = list.sun.castsShadow() && casterHash(list.still) != casters_;
    PixelArea area;
    Box changed;
    for (const Box& box : waiting_) {
        changed.include(box);
        area = area.united(view().area(recast ? withShadow(box, list.sun.toward) : box).grown(2));
    }
    waiting_.clear();
    area = area.intersection(PixelArea::whole(view().size));
    if (area.empty()) return;
    work_ = {area, changed, recast, {}, Step::shadow, 0};
}

}  // namespace gull
