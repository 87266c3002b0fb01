#pragma once

#include "Engine/Stage/Stage.h"
#include "GullCore/Beach.h"
#include "Gullwick/Scene/Textures.h"

#include <memory>

namespace gull {

/// The stage for an item's picture: its model turned toward the viewer under a clear sky, a warm light and an
/// orthographic camera that frames every item alike. There is no background.
std::unique_ptr<Stage> iconStage(ItemKind kind, Textures& textures);

}  // namespace gull
