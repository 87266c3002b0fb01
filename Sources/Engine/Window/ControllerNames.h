#pragma once

#include "Engine/Window/GameControllers.h"

#include <string_view>

namespace gull {

/// What the makers of a controller print on its buttons, as a player would say it: "A", "Cross", "Options".
/// `sdlType` is SDL's type of controller; for one that SDL does not know, where the button sits.
std::string_view controllerButtonName(int sdlType, ControllerButton button);

}  // namespace gull
