#include "Engine/Render/DirectPainter.h"

#include "Engine/Render/Stopwatch.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace gull {

namespace {
constexpr int shadowMapSize = 1024;
constexpr double deepest = 1000;        // world units
constexpr double shadowLife = 3;        // seconds of stage time
constexpr std::size_t manyPixels = 50;  // a triangle: from there on they cost more than the triangles

std::size_t triangles(const DrawItem& item) {
    const std::vector<Mesh::Chunk>& chunks = item.mesh->chunks;
    const Mesh::Chunk& last = chunks[item.element.firstChunk + item.element.chunkCount - 1];
    return (last.first + last.count - chunks[item.element.firstChunk].first) / 3;
}
/// What nobody sees from `eye`, because it lies below a film, which is bottomless in these pictures.
Box belowFilms(const DrawLayer& layer, const glm::dvec3& eye) {
    Box hidden;
    for (const DrawItem& item : layer.blended) {
        if (!isFilm(item)) continue;
        Box below = transformed(item.mesh->bounds, item.model);
        if (eye.y <= below.max.y) continue;
        below.max.y = below.min.y;
        below.min.y -= deepest;
        hidden = below;
    }
    return hidden;
}
}  // namespace

struct DirectPainter::Frame {
    Viewpoint view;
    DrawList list;
    Shading shading;

    std::vector<const DrawLayer*> layers() const { return {&list.kept, &list.drifting, &list.moving}; }
};

DirectPainter::Frame DirectPainter::begin(const Stage& stage, const Viewpoint& fullView, double share) {
    Viewpoint view = fullView;
    view.size = {std::max(1, static_cast<int>(fullView.size.width * share)),
                 std::max(1, static_cast<int>(fullView.size.height * share))};
    if (!picture_ || !(picture_.size() == view.size))
        picture_ = Target(view.size, {{Format::bgra8}, Format::depth16});
    Frame frame{
        view, DrawList::of(stage, view, studio_.meshes, DrawList::Which::all, DrawList::Detail::coarse), {}};
    const DrawList& list = frame.list;
    FrameBlock block =
        frameBlock(stage, view, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                   studio_.options);
    setLamps(block, {});
    studio_.uniforms.upload(block);

    Shading& shading = frame.shading;
    shading.output = Shading::Output::display;
    shading.plainFilm = !view.camera.hdr;
    shading.matt = true;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.hidden = belowFilms(list.drifting, view.eye);
    if (shading.sunShadow) {
        // The rig barely moves against its surroundings during a flight: its shadow is in the same map, which
        // is drawn when the flight begins.
        if (shadowOf_ != stage.keptSerial() || std::abs(stage.time - shadowTime_) > shadowLife) {
            shadow_.draw(frame.layers(), list.sun.matrix, shadowMapSize, studio_.sunDepth);
            shadowOf_ = stage.keptSerial();
            shadowTime_ = stage.time;
        }
        shadow_.bind(unitSunShadow);
    }
    picture_.bind();
    glDepthMask(GL_TRUE);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    return frame;
}

void DirectPainter::drawOpaque(Frame& frame, const DrawItem& item) {
    frame.shading.small =
        static_cast<std::size_t>(item.area.width) * static_cast<std::size_t>(item.area.height) <
        manyPixels * triangles(item);
    studio_.surfaces.draw(item, frame.shading, frame.view, PixelArea::whole(frame.view.size));
}

void DirectPainter::drawRest(Frame& frame, const Stage& stage) {
    const PixelArea whole = PixelArea::whole(frame.view.size);
    frame.shading.small = false;
    frame.shading.hidden = {};
    // Films before the sky and all else that is blended: they let nothing through.
    std::erase_if(frame.list.drifting.blended, [&](const DrawItem& item) {
        if (isFilm(item)) studio_.surfaces.draw(item, frame.shading, frame.view, whole);
        return isFilm(item);
    });
    studio_.drawSky(stage, frame.view, frame.shading.output);
    studio_.drawBlended(frame.layers(), frame.shading, frame.view, whole, stage.time);
}

const Target& DirectPainter::draw(const Stage& stage, const Viewpoint& view, bool fast) {
    Frame frame = begin(stage, view, fast ? 0.4 : 0.5);
    for (const DrawLayer* layer : frame.layers())
        for (const DrawItem& item : layer->opaque) drawOpaque(frame, item);
    drawRest(frame, stage);
    return picture_;
}

bool DirectPainter::rehearse(const Stage& stage, const Viewpoint& view, double budget) {
    const Stopwatch watch;
    Frame frame = begin(stage, view, 0.5);
    std::vector<const DrawItem*> opaque;
    for (const DrawLayer* layer : frame.layers())
        for (const DrawItem& item : layer->opaque) opaque.push_back(&item);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    do {
        if (rehearsed_ < opaque.size())
            drawOpaque(frame, *opaque[rehearsed_]);
        else
            drawRest(frame, stage);
        glFinish();
    } while (rehearsed_++ < opaque.size() && watch.elapsed() < budget);
    glDisable(GL_SCISSOR_TEST);
    if (rehearsed_ <= opaque.size()) return false;
    rehearsed_ = 0;
    arrived();
    return true;
}

void DirectPainter::arrived() {
    picture_ = {};
    shadow_ = {};
    shadowOf_ = 0;
}

}  // namespace gull
