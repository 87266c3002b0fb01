#include "Engine/Render/DirectPainter.h"

#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

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

const Target& DirectPainter::draw(const Stage& stage, const Viewpoint& fullView, bool fast) {
    Viewpoint view = fullView;
    const double share = fast ? 0.4 : 0.5;
    view.size = {std::max(1, static_cast<int>(fullView.size.width * share)),
                 std::max(1, static_cast<int>(fullView.size.height * share))};
    if (!picture_ || !(picture_.size() == view.size))
        picture_ = Target(view.size, {{Format::bgra8}, Format::depth16});
    DrawList list = DrawList::of(stage, view, studio_.meshes, DrawList::Which::all, DrawList::Detail::coarse);
    FrameBlock block =
        frameBlock(stage, view, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                   studio_.options);
    setLamps(block, {});
    studio_.uniforms.upload(block);

    Shading shading;
    shading.output = Shading::Output::display;
    shading.plainFilm = !view.camera.hdr;
    shading.matt = true;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    if (shading.sunShadow) {
        // The rig barely moves against its surroundings during a flight: its shadow is in the same map, which
        // is drawn when the flight begins.
        if (shadowOf_ != stage.keptSerial() || std::abs(stage.time - shadowTime_) > shadowLife) {
            shadow_.draw({&list.kept, &list.drifting, &list.moving}, list.sun.matrix, shadowMapSize,
                         studio_.sunDepth);
            shadowOf_ = stage.keptSerial();
            shadowTime_ = stage.time;
        }
        shadow_.bind(unitSunShadow);
    }
    PixelArea whole = PixelArea::whole(view.size);
    picture_.bind();
    glDepthMask(GL_TRUE);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    shading.hidden = belowFilms(list.drifting, view.eye);
    const DrawLayer* layers[] = {&list.kept, &list.drifting, &list.moving};
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) {
            shading.small =
                static_cast<std::size_t>(item.area.width) * static_cast<std::size_t>(item.area.height) <
                manyPixels * triangles(item);
            studio_.surfaces.draw(item, shading, view, whole);
        }
    shading.small = false;
    shading.hidden = {};
    // Films before the sky and all else that is blended: they let nothing through.
    std::erase_if(list.drifting.blended, [&](const DrawItem& item) {
        if (isFilm(item)) studio_.surfaces.draw(item, shading, view, whole);
        return isFilm(item);
    });
    studio_.drawSky(stage, view, shading.output);
    studio_.drawBlended(layers, shading, view, whole, stage.time);
    return picture_;
}

void DirectPainter::arrived() {
    picture_ = {};
    shadow_ = {};
    shadowOf_ = 0;
}

}  // namespace gull
