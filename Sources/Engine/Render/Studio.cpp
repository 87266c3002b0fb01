#include "Engine/Render/Studio.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace gull {

Studio::Studio()
    : environments(options),
      resolve(stages, areas),
      copy(stages),
      surfaces(stages, textures, options),
      particles(stages, textures),
      development(stages, screen),
      depth(stages, "depth", {shaders::depthVertex}, {shaders::depthFragment}),
      sunDepth(stages, "sun depth", {shaders::depthVertex, {"FROM_SUN"}}, {shaders::depthFragment}),
      sky(stages, "sky", {shaders::fullScreen}, {shaders::skyFragment}),
      keptSky(stages, "kept sky", {shaders::fullScreen}, {shaders::skyFragment, {"OUT_KEPT"}}),
      displaySky(stages, "developed sky", {shaders::fullScreen}, {shaders::skyFragment, {"OUT_DISPLAY"}}),
      farthest(stages, "farthest depth", {shaders::fullScreen}, {shaders::farthestFragment}),
      paint(stages, "paint", {shaders::paintVertex}, {shaders::paintFragment}),
      farAway(stages, "far away", {shaders::areaVertex}, {shaders::depthFragment}),
      contactShadows(stages) {}

void Studio::drawDepth(const DrawLayer& layer, const Viewpoint& view, const PixelArea& area) {
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
    depth.use();
    for (const DrawItem& item : layer.opaque) {
        if (item.area.intersection(area).empty()) continue;
        setCulling(item);
        depth.set("model", glm::mat4(item.model));
        drawChunks(item, view, area);
    }
}

void Studio::drawSky(const Stage& stage, const Viewpoint& view, Shading::Output output) {
    if (!stage.background) return;
    const Program& program = output == Shading::Output::kept      ? keptSky
                             : output == Shading::Output::display ? displaySky
                                                                  : sky;
    // Below the horizon a sky's picture has no detail, and that of the environment, which is small and needed
    // anyway, serves as well.
    bool coarse = stage.environment && !view.seesHorizon();
    textures.bind(unitDiffuse, coarse ? stage.environment : stage.background, Wrap::repeat, Wrap::clamp,
                  TextureCache::Filter::base);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDepthMask(GL_FALSE);
    glDisable(GL_BLEND);
    program.use();
    screen.draw(program, 1);
}

void Studio::drawBlended(std::span<const DrawLayer* const> layers, const Shading& shading,
                         const Viewpoint& view, const PixelArea& area, double time) {
    struct Entry {
        int order;
        double distance;
        const DrawItem* surface;
        const ParticleItem* particles;
    };
    std::vector<Entry> entries;
    for (const DrawLayer* layer : layers) {
        for (const DrawItem& item : layer->blended)
            entries.push_back({item.order, item.distance, &item, nullptr});
        for (const ParticleItem& item : layer->particles)
            entries.push_back({item.order, item.distance, nullptr, &item});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.order != b.order ? a.order < b.order : a.distance > b.distance;
    });
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    for (const Entry& entry : entries) {
        if (entry.surface)
            surfaces.draw(*entry.surface, shading, view, area);
        else
            particles.draw(*entry.particles, view, time, shading.output == Shading::Output::display);
    }
}

void Studio::collectGarbage() {
    meshes.collectGarbage();
    textures.collectGarbage();
    environments.collectGarbage();
}

}  // namespace gull
