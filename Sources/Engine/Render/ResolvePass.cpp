#include "Engine/Render/ResolvePass.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

ResolvePass::ResolvePass(VertexStages& stages, AreaPass& areas)
    : areas_(areas),
      program_(stages, "resolve", {shaders::areaVertex}, {shaders::resolveFragment}),
      framebuffer_(GlFramebuffer::make()) {}

void ResolvePass::draw(const Target& from, const std::vector<PixelArea>& parts, const Target& to, int x,
                       int y) const {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.name());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, to.colour(), 0);
    glViewport(0, 0, to.size().width, to.size().height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_SCISSOR_TEST);
    glActiveTexture(GL_TEXTURE0 + unitSource);
    glBindSampler(unitSource, 0);  // one left there would have the program compiled anew
    glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, from.colour());
    program_.use();
    program_.set("shift", glm::vec2(x, y));
    program_.set("depth", 0.0F);
    program_.set("texel", glm::vec2(1.0 / to.size().width, 1.0 / to.size().height));
    areas_.draw(parts);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);  // or it would live on
    to.bind();
}

}  // namespace gull
