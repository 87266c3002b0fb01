#pragma once

#include "Engine/Stage/Node.h"
#include "GullCore/Beach.h"
#include "Gullwick/Scene/Textures.h"

#include <memory>

namespace gull::ItemModels {

/// A fresh model of that kind, about one unit across, centred near the origin and facing +z. The chest's lid
/// is a descendant named "lid", hinged on its own x axis.
std::unique_ptr<Node> node(ItemKind kind, Textures& textures);

}  // namespace gull::ItemModels
