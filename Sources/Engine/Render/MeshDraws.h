#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Render/DrawList.h"

#include <vector>

namespace gull {

struct RenderContext;

/// The runs of indices of the chunks of `item` that touch `area` and stand out of `hidden` (world space).
std::vector<VertexRange> visibleChunks(const DrawItem& item, const Viewpoint& view, const PixelArea& area,
                                       const Box& hidden = {});
/// Draws these; sets the vertex array of `state`.
void drawMesh(RenderContext& context, DrawState& state, const DrawItem& item, const Viewpoint& view,
              const PixelArea& area, const Box& hidden = {});

/// Which sides of `item` its material leaves out.
Culling materialCulling(const DrawItem& item);

/// Draws the depth of opaque things alone, as the camera sees it, within the target's scissor.
void drawDepth(RenderContext& context, const DrawTarget& target, unsigned frameUniforms,
               const DrawLayer& layer, const Viewpoint& view);

}  // namespace gull
