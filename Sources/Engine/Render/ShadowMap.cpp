#include "Engine/Render/ShadowMap.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/SurfacePainter.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

/// The view through `matrix` (world to 0..1 on all axes).
Viewpoint lookingAlong(const glm::dmat4& matrix, const PixelSize& size) {
    Viewpoint light;
    light.size = size;
    light.viewProjection =
        glm::translate(glm::dmat4(1), glm::dvec3(-1)) * glm::scale(glm::dmat4(1), glm::dvec3(2)) * matrix;
    return light;
}

}  // namespace

void ShadowMap::prepare(int size) {
    if (target_ && target_.size().width == size) return;
    target_ = Target({size, size}, {{}, Format::depth16, 1});
    bindTexture(unitUpload, target_.depth());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
}

void ShadowMap::draw(const std::vector<const DrawLayer*>& layers, const glm::dmat4& matrix, int size,
                     const Program& depthFromSun, bool solid) {
    prepare(size);
    target_.bind();
    glDepthMask(GL_TRUE);
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
    for (const DrawLayer* layer : layers)
        drawCasters(*layer, matrix, depthFromSun, solid, PixelArea::whole(target_.size()));
}

void ShadowMap::clear() {
    prepare(3);  // no power of two, as most maps
    target_.bind();
    glDisable(GL_SCISSOR_TEST);
    glDepthMask(GL_TRUE);
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
}

void ShadowMap::redraw(const DrawLayer& layer, const glm::dmat4& matrix, const Program& depthFromSun,
                       const Box& changed) {
    PixelArea part = lookingAlong(matrix, target_.size()).area(changed).grown(2);
    drawPart(layer, matrix, target_.size().width, depthFromSun,
             part.intersection(PixelArea::whole(target_.size())));
}

void ShadowMap::drawPart(const DrawLayer& layer, const glm::dmat4& matrix, int size,
                         const Program& depthFromSun, const PixelArea& part) {
    if (part.empty()) return;
    prepare(size);
    target_.bind();
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    glDepthMask(GL_TRUE);
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
    drawCasters(layer, matrix, depthFromSun, false, part);
    glDisable(GL_SCISSOR_TEST);
}

void ShadowMap::drawCasters(const DrawLayer& layer, const glm::dmat4& matrix, const Program& depthFromSun,
                            bool solid, const PixelArea& part) {
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    const Viewpoint light = lookingAlong(matrix, target_.size());
    depthFromSun.use();
    for (const DrawItem& item : layer.opaque) {
        if (!item.castsShadow) continue;
        if (solid && !item.material->doubleSided) {
            glEnable(GL_CULL_FACE);
            // Toward the sun is toward lower depth, which mirrors what is seen.
            glFrontFace(glm::determinant(glm::dmat3(matrix * item.model)) < 0 ? GL_CCW : GL_CW);
        } else {
            glDisable(GL_CULL_FACE);
        }
        depthFromSun.set("toLight", glm::mat4(matrix * item.model));
        drawChunks(item, light, part);
    }
}

void ShadowMap::bind(int unit) const {
    bindTexture(unit, target_ ? target_.depth() : 0);
}

}  // namespace gull
