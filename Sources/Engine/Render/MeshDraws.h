#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Render/DrawList.h"

#include <span>
#include <vector>

namespace gull {

struct RenderContext;

/// The index runs of the chunks of `item` that touch `area` and are not inside `hidden` (world space).
std::vector<VertexRange> visibleChunks(const DrawItem& item, const Viewpoint& view, const PixelArea& area,
                                       const Box& hidden = {});
/// Draws those chunks; sets the vertex array of `state`.
void drawMesh(RenderContext& context, DrawState& state, const DrawItem& item, const Viewpoint& view,
              const PixelArea& area, const Box& hidden = {});

/// The faces of `item` that its material culls.
Culling materialCulling(const DrawItem& item);

/// Draws only the depth of those of `items` whose materials write it, as the camera sees them, within the
/// target's scissor.
void drawDepth(RenderContext& context, const DrawTarget& target, unsigned frameUniforms,
               std::span<const DrawItem> items, const Viewpoint& view);
/// The same of one item, and of its chunks those that touch `area` (pixels of the picture).
void drawDepth(RenderContext& context, const DrawTarget& target, unsigned frameUniforms, const DrawItem& item,
               const Viewpoint& view, const PixelArea& area);

}  // namespace gull
