#include "Engine/Gl/GlFormat.h"

#include <epoxy/gl.h>

namespace gull {

GlFormat glFormat(Format format) {
    switch (format) {
        case Format::r8:
            return {GL_R8, GL_RED, GL_UNSIGNED_BYTE};
        case Format::rgba8:
            return {GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE};
        case Format::bgra8:
            // An unsized internal format lets the driver keep the bytes in the order they come.
            return {GL_RGBA, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV};
        case Format::rgba16f:
            return {GL_RGBA16F, GL_RGBA, GL_HALF_FLOAT};
        case Format::depth16:
            return {GL_DEPTH_COMPONENT16, GL_DEPTH_COMPONENT, GL_UNSIGNED_SHORT};
        case Format::depth24:
            return {GL_DEPTH_COMPONENT24, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT};
        case Format::none:
            break;
    }
    return {GL_NONE, GL_NONE, GL_NONE};
}

}  // namespace gull
