#include "Engine/Render/PaintLayer.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/SurfacePainter.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <iterator>

namespace gull {

void PaintLayer::begin(const std::vector<DrawItem>& items, const PixelSize& size) {
    items_.clear();
    std::copy_if(items.begin(), items.end(), std::back_inserter(items_),
                 [](const DrawItem& item) { return static_cast<bool>(item.material->multiplyMap); });
    if (!items_.empty() && (!target_ || !(target_.size() == size))) target_ = Target(size, {{Format::rgba8}});
}

void PaintLayer::draw(const Viewpoint& view, const PixelArea& area, unsigned surface, unsigned depth) {
    if (items_.empty() || area.empty()) return;
    target_.bind();
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x, area.y, area.width, area.height);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    bindTexture(unitKeptSurface, surface);
    bindTexture(unitKeptDepth, depth);
    program_.use();
    for (const DrawItem& item : items_) {
        if (item.area.intersection(area).empty()) continue;
        setCulling(item);
        const Channel& map = item.material->multiplyMap;
        program_.set("model", glm::mat4(item.model));
        program_.set("place", glm::vec4(glm::vec2(map.scale), glm::vec2(map.offset)));
        program_.set("shape", glm::vec2(map.uvSet, map.intensity));
        textures_.bind(unitMultiply, map, TextureCache::Filter::base);
        drawChunks(item, view, area);
    }
    glDisable(GL_SCISSOR_TEST);
}

}  // namespace gull
