#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Stage/Stage.h"

namespace gull {

struct RenderContext;

/// Draws a whole stage at once, 4x multisampled but for unlit things, which are drawn over the finished
/// picture: the reference for every other way of drawing. A stage
/// without background gives a transparent picture.
Target drawSnapshot(RenderContext& context, const Stage& stage, const PixelSize& size);

}  // namespace gull
