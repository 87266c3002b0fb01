#include "Gullwick/App/IconRenderer.h"

#include "Engine/Compositor/Renderer.h"
#include "Gullwick/HUD/IconStage.h"

namespace gull {

Image IconRenderer::image(ItemKind kind) {
    if (!renderer_) return Image(ItemIcons::size, ItemIcons::size);
    return renderer_->snapshot(*iconStage(kind, textures_), {ItemIcons::size, ItemIcons::size});
}

}  // namespace gull
