#include "Engine/Render/Backdrop.h"

#include "Engine/Render/CopyArea.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace gull {

namespace {

/// Drawn onto the film.
bool floats(const DrawItem& item) {
    return item.material->smooth && item.material->blend == Material::Blend::alpha && !isFilm(item);
}

/// The highest point of what `layer` shows, world units.
double top(const DrawLayer& layer) {
    Box box;
    for (const std::vector<DrawItem>* items : {&layer.opaque, &layer.blended})
        for (const DrawItem& item : *items) box.include(transformed(item.mesh->bounds, item.model));
    return box.max.y;
}

/// `area` at half resolution, with a pixel more all round, into which smoothing at full resolution looks.
PixelArea halved(const PixelArea& area) {
    return PixelArea{area.x / 2, area.y / 2, (area.width + 1) / 2, (area.height + 1) / 2}.grown(1);
}

}  // namespace

Backdrop::Backdrop(Studio& studio)
    : studio_(studio),
      film_(studio.stages, "film over a picture", {shaders::depthVertex},
            {shaders::filmFragment, {"SMALL"}}) {}

std::vector<PixelArea> Backdrop::update(const DrawLayer& drifting, const Shading& shading, KeptLayer& kept,
                                        double time, bool moving) {
    const PixelSize& size = kept.view().size;
    PixelArea whole = PixelArea::whole(size);
    std::vector<PixelArea> areas = kept.takeChanges();
    if (!picture_ || !(picture_.size() == size)) {
        picture_ = Target(size, {{Format::bgra8}, Format::depth24});
        half_ = Target({(size.width + 1) / 2, (size.height + 1) / 2}, {{Format::bgra8}, Format::depth24});
        areas = {whole};
    }
    bool anew = areas == std::vector<PixelArea>{whole};
    if (anew) reach_ = {};
    findReach(drifting, kept);
    for (const PixelArea& area : areas)
        copyArea(kept.farthest().depth(), half_.depth(),
                 halved(area).intersection(PixelArea::whole(half_.size())), true);
    if (anew) {
        shadeHalf(drifting, shading, kept, reach_);
    } else if (moving && !reach_.empty() && !kept.pending()) {  // a change is enough for a frame
        areas.push_back(nextStrip());
        shadeHalf(drifting, shading, kept, areas.back());
    }
    for (const PixelArea& area : areas) {
        copyArea(kept.picture().colour(), picture_.colour(), area, false);
        copyArea(kept.depth(), picture_.depth(), area, true);
        picture_.bind();
        draw(drifting, shading, kept, area, time);
    }
    return areas;
}

void Backdrop::findReach(const DrawLayer& drifting, const KeptLayer& kept) {
    // It only grows, so that nothing is left behind where the water fell.
    if (!drifting.opaque.empty() || !drifting.blended.empty())
        reach_ = reach_.united(kept.relief().below(top(drifting)));
}

PixelArea Backdrop::nextStrip() {
    const int pixels = studio_.pace.pixels();
    const int strips = std::clamp((reach_.width * reach_.height + pixels - 1) / pixels, 1, mostStrips);
    // From an even row to an even row, where the half-resolution picture divides too.
    const int rows = ((reach_.height + strips - 1) / strips + 1) & ~1;
    if (nextRow_ < reach_.y || nextRow_ >= reach_.top()) nextRow_ = reach_.y;
    const PixelArea strip{reach_.x, nextRow_, reach_.width, std::min(rows, reach_.top() - nextRow_)};
    nextRow_ = strip.top();
    return strip;
}

void Backdrop::shadeHalf(const DrawLayer& drifting, const Shading& shading, const KeptLayer& kept,
                         const PixelArea& area) {
    if (area.empty()) return;
    half_.bind();
    glEnable(GL_SCISSOR_TEST);
    PixelArea part = halved(area);
    const PixelArea reached = area.grown(4);  // at full resolution
    glScissor(part.x, part.y, part.width, part.height);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    bindTexture(unitKeptDepth, kept.farthest().depth());
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    Shading film = shading;
    film.output = Shading::Output::film;
    film.lamps = {};
    film.bloom = kept.bloom() != 0;
    for (const DrawItem& item : drifting.blended)
        if (isFilm(item)) studio_.surfaces.draw(item, film, kept.view(), reached);
    // What floats hides the film and what it lets through.
    for (const DrawItem& item : drifting.blended)
        if (floats(item)) studio_.surfaces.draw(item, shading, kept.view(), reached);
    glDisable(GL_SCISSOR_TEST);
    bindTexture(unitKeptDepth, kept.depth());
}

void Backdrop::draw(const DrawLayer& drifting, const Shading& shading, const KeptLayer& kept,
                    const PixelArea& area, double time) {
    PixelArea visible = area.intersection(reach_);
    if (visible.empty()) return;
    const Viewpoint& view = kept.view();
    glEnable(GL_SCISSOR_TEST);
    glScissor(visible.x, visible.y, visible.width, visible.height);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    for (const DrawItem& item : drifting.opaque) studio_.surfaces.draw(item, shading, view, visible);

    // The films first: what is blended over them lies above all.
    DrawLayer over;
    over.particles = drifting.particles;
    for (const DrawItem& item : drifting.blended) {
        if (floats(item) && view.camera.hdr) continue;
        if (!isFilm(item) || !view.camera.hdr) {
            over.blended.push_back(item);
            continue;
        }
        film_.use();
        film_.set("model", glm::mat4(item.model));
        bindTexture(unitSource, half_.colour());
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        glDepthMask(item.material->writesDepth ? GL_TRUE : GL_FALSE);
        glDisable(GL_CULL_FACE);
        drawChunks(item, view, visible);
    }
    const DrawLayer* layers[] = {&over};
    studio_.drawBlended(layers, shading, view, visible, time);
    glDisable(GL_SCISSOR_TEST);
}

}  // namespace gull
