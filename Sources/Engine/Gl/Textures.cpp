#include "Engine/Gl/Textures.h"

#include "Engine/Gl/GlFormat.h"
#include "Engine/Gl/GraphicsInfo.h"
#include "Engine/Gl/TextureUnit.h"

#include <epoxy/gl.h>

#include <cstddef>

namespace gull {

namespace {

/// Binds a texture to the unit that no draw reads.
void edit(GLenum target, GLuint texture) {
    glActiveTexture(GL_TEXTURE0 + editingUnit);
    glBindTexture(target, texture);
}
void edit(GLenum target, const GlTexture& texture) {
    edit(target, texture.name());
}

GLint minification(Filter filter) {
    switch (filter) {
        case Filter::nearest:
            return GL_NEAREST;
        case Filter::linear:
            return GL_LINEAR;
        case Filter::linearNearestMip:
            return GL_LINEAR_MIPMAP_NEAREST;
        case Filter::linearLinearMip:
            break;
    }
    return GL_LINEAR_MIPMAP_LINEAR;
}

GLint magnification(Filter filter) {
    return filter == Filter::nearest ? GL_NEAREST : GL_LINEAR;
}

}  // namespace

GlTexture makeTexture(StateKeeper& keeper, const PixelSize& size, Format format, Filter filter) {
    GlTexture texture(keeper);
    const GlFormat gl = glFormat(format);
    edit(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(gl.internal), size.width, size.height, 0, gl.layout,
                 gl.type, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minification(filter));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, magnification(filter));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    return texture;
}

GlTexture makeMultisampledTexture(StateKeeper& keeper, const PixelSize& size, Format format, int samples) {
    GlTexture texture(keeper);
    edit(GL_TEXTURE_2D_MULTISAMPLE, texture);
    glTexImage2DMultisample(GL_TEXTURE_2D_MULTISAMPLE, samples, glFormat(format).internal, size.width,
                            size.height, GL_TRUE);
    return texture;
}

void compareDepth(TextureRef texture) {
    edit(GL_TEXTURE_2D, texture.name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
}

void uploadLevel(const GlTexture& texture, int level, const PixelSize& size,
                 std::span<const std::uint8_t> pixels) {
    edit(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexImage2D(GL_TEXTURE_2D, level, GL_RGBA8, size.width, size.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels.data());
}

void uploadPart(const GlTexture& texture, const PixelArea& part, std::span<const std::uint8_t> pixels) {
    edit(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.x, part.y, part.width, part.height, GL_RGBA, GL_UNSIGNED_BYTE,
                    pixels.data());
}

void uploadBitmapPart(const GlTexture& texture, const PixelArea& part, const unsigned char* pixels,
                      int strideBytes) {
    const GlFormat gl = glFormat(Format::bgra8);
    edit(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, strideBytes / 4);
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.x, part.y, part.width, part.height, gl.layout, gl.type, pixels);
}

GlTexture makeCube(StateKeeper& keeper, int size, const std::vector<std::vector<std::uint8_t>>& levels) {
    GlTexture cube(keeper);
    edit(GL_TEXTURE_CUBE_MAP, cube);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    for (std::size_t level = 0; level < levels.size(); ++level) {
        const int side = size >> level;
        const std::size_t faceBytes = static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4;
        for (unsigned face = 0; face < 6; ++face)
            glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, static_cast<GLint>(level), GL_RGBA8, side,
                         side, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                         levels[level].empty() ? nullptr : &levels[level][face * faceBytes]);
    }
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_LEVEL, static_cast<GLint>(levels.size()) - 1);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return cube;
}

GlSampler makeSampler(StateKeeper& keeper, const SamplerDescription& description) {
    GlSampler sampler(keeper);
    const GLuint name = sampler.name();
    glSamplerParameteri(name, GL_TEXTURE_MIN_FILTER, minification(description.filter));
    glSamplerParameteri(name, GL_TEXTURE_MAG_FILTER, magnification(description.filter));
    glSamplerParameteri(name, GL_TEXTURE_WRAP_S, description.repeatS ? GL_REPEAT : GL_CLAMP_TO_EDGE);
    glSamplerParameteri(name, GL_TEXTURE_WRAP_T, description.repeatT ? GL_REPEAT : GL_CLAMP_TO_EDGE);
    if (description.anisotropy > 1)
        glSamplerParameterf(name, GL_TEXTURE_MAX_ANISOTROPY_EXT, description.anisotropy);
    return sampler;
}

float greatestAnisotropy() {
    if (!epoxy_has_gl_extension("GL_EXT_texture_filter_anisotropic") || graphicsInfo().isSoftware) return 1;
    float greatest = 1;
    glGetFloatv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, &greatest);
    return greatest;
}

}  // namespace gull
