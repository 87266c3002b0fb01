#include "Engine/Gl/Target.h"

#include "Engine/Gl/GlFormat.h"
#include "Engine/Gl/GraphicsDevice.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <stdexcept>
#include <vector>

namespace gull {

Target::Target(GraphicsDevice& device, const PixelSize& size, const Description& description)
    : size_(size), framebuffer_(device), multisampled_(description.samples > 1) {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_.name());
    std::vector<GLenum> points;
    for (const Format format : description.colours) {
        points.push_back(GL_COLOR_ATTACHMENT0 + static_cast<GLenum>(points.size()));
        colours_.push_back(attach(device, points.back(), format, description.samples));
    }
    if (description.depth != Format::none)
        depth_ = attach(device, GL_DEPTH_ATTACHMENT, description.depth, description.samples);
    if (description.sharedDepth)
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D,
                               description.sharedDepth.name, 0);
    if (points.empty()) {
        glDrawBuffer(GL_NONE);
        glReadBuffer(GL_NONE);
    } else {
        glDrawBuffers(static_cast<GLsizei>(points.size()), points.data());
    }
    checkComplete();
    const bool hasMore = points.size() > 1 || description.depth != Format::none || description.sharedDepth;
    if (!points.empty() && hasMore && !multisampled_) {
        firstColour_ = GlFramebuffer(device);
        glBindFramebuffer(GL_FRAMEBUFFER, firstColour_.name());
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, colours_.front().name(),
                               0);
        checkComplete();
    }
    device.forgetState();
}

GlTexture Target::attach(GraphicsDevice& device, unsigned point, Format format, int samples) {
    if (samples > 1 && point == GL_DEPTH_ATTACHMENT) {
        samplesDepth_ = GlRenderbuffer(device);
        glBindRenderbuffer(GL_RENDERBUFFER, samplesDepth_.name());
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, glFormat(format).internal, size_.width,
                                         size_.height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, point, GL_RENDERBUFFER, samplesDepth_.name());
        return {};
    }
    const Filter filter = point == GL_DEPTH_ATTACHMENT ? Filter::nearest : Filter::linear;
    GlTexture texture = samples > 1 ? makeMultisampledTexture(device, size_, format, samples)
                                    : makeTexture(device, size_, format, filter);
    glFramebufferTexture2D(GL_FRAMEBUFFER, point, samples > 1 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D,
                           texture.name(), 0);
    return texture;
}

void Target::checkComplete() const {
    if (const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER); status != GL_FRAMEBUFFER_COMPLETE)
        throw std::runtime_error(fmt::format("OpenGL refuses a {} x {} drawing target (status {:#x})",
                                             size_.width, size_.height, status));
}

TextureRef Target::colour(std::size_t index) const {
    return {colours_[index].name(), multisampled_ ? TextureRef::Kind::multisampled : TextureRef::Kind::flat};
}

DrawTarget Target::firstColour() const {
    return {firstColour_ ? firstColour_.name() : framebuffer_.name(), PixelArea::whole(size_), {}};
}

bool ensureSize(GraphicsDevice& device, Target& target, const PixelSize& size,
                const Target::Description& description) {
    if (target && target.size() == size) return false;
    target = {};  // frees the old one's memory first
    target = Target(device, size, description);
    return true;
}

Target makeShadowMap(GraphicsDevice& device, int size) {
    Target map(device, {size, size}, {{}, Format::depth16});
    compareDepth(map.depth());
    return map;
}

Target plainTarget(GraphicsDevice& device, Format format, float value) {
    Target target(device, {3, 3}, {{format}});
    device.clear(target.whole(), {{{value, value, value, 1}}, {}});
    return target;
}

}  // namespace gull
