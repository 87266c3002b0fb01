#include "Engine/Render/ShadowMap.h"

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/SurfacePainter.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <glm/gtc/matrix_transform.hpp>

namespace gull {

void ShadowMap::draw(const std::vector<const DrawLayer*>& layers, const glm::dmat4& matrix, int size,
                     const Program& depthFromSun, bool solid) {
    if (!target_ || target_.size().width != size) {
        target_ = Target({size, size}, {{}, Format::depth16, 1});
        bindTexture(unitUpload, target_.depth());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
    }
    target_.bind();
    glDepthMask(GL_TRUE);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
    Viewpoint light;
    light.size = target_.size();
    light.viewProjection =
        glm::translate(glm::dmat4(1), glm::dvec3(-1)) * glm::scale(glm::dmat4(1), glm::dvec3(2)) * matrix;
    depthFromSun.use();
    for (const DrawLayer* layer : layers)
        for (const DrawItem& item : layer->opaque) {
            if (!item.castsShadow) continue;
            if (solid && !item.material->doubleSided) {
                glEnable(GL_CULL_FACE);
                // Toward the sun is toward lower depth, which mirrors what is seen.
                glFrontFace(glm::determinant(glm::dmat3(matrix * item.model)) < 0 ? GL_CCW : GL_CW);
            } else {
                glDisable(GL_CULL_FACE);
            }
            depthFromSun.set("toLight", glm::mat4(matrix * item.model));
            drawChunks(item, light, PixelArea::whole(light.size));
        }
}

void ShadowMap::bind(int unit) const {
    bindTexture(unit, target_ ? target_.depth() : 0);
}

}  // namespace gull
