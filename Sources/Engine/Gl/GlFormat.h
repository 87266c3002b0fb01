#pragma once

#include "Engine/Gl/Format.h"

namespace gull {

/// What OpenGL calls a Format; for the sources of this room.
struct GlFormat {
    unsigned internal;
    unsigned layout;
    unsigned type;
};

GlFormat glFormat(Format format);

}  // namespace gull
