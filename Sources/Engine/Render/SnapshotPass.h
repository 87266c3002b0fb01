#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Stage/Stage.h"

namespace gull {

struct RenderContext;

/// Draws a whole stage at once, 4x multisampled: the picture that everything else is measured against. A
/// stage without background gives a transparent one.
Target drawSnapshot(RenderContext& context, const Stage& stage, const PixelSize& size);

}  // namespace gull
