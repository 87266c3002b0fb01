#include "Engine/Render/ResolvePass.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

ResolvePass::ResolvePass(VertexStages& stages, AreaPass& areas)
    : areas_(areas), program_(stages, "resolve", {shaders::areaVertex}, {shaders::resolveFragment}) {}

void ResolvePass::draw(const Target& from, const std::vector<PixelArea>& parts, const Target& to, int x,
                       int y) const {
    to.bind();
    to.writeOnlyFirst(true);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_SCISSOR_TEST);
    glActiveTexture(GL_TEXTURE0 + unitSource);
    glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, from.colour());
    program_.use();
    program_.set("shift", glm::vec2(x, y));
    program_.set("depth", 0.0F);
    program_.set("texel", glm::vec2(1.0 / to.size().width, 1.0 / to.size().height));
    areas_.draw(parts);
    to.writeOnlyFirst(false);
}

}  // namespace gull
