#pragma once

#include "Gullwick/HUD/ItemIcons.h"

namespace gull {

class Renderer;
class Textures;

/// Takes the pictures of the item models.
class IconRenderer final : public IconSource {
  public:
    /// Both are owned by the caller and must outlive this object. `renderer` null: no graphics; every picture
    /// is empty then.
    IconRenderer(Renderer* renderer, Textures& textures) : renderer_(renderer), textures_(textures) {}
    Image image(ItemKind kind) override;

  private:
    Renderer* renderer_;
    Textures& textures_;
};

}  // namespace gull
