#pragma once

#include "Engine/Gl/Format.h"

namespace gull {

/// OpenGL's names for a Format; for this room only.
struct GlFormat {
    unsigned internal;
    unsigned layout;
    unsigned type;
};

GlFormat glFormat(Format format);

}  // namespace gull
