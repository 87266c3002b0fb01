#pragma once

#include "Engine/Window/GameControllers.h"

#include <string_view>

namespace gull {

/// The names that a controller's maker prints on its buttons, as a player would say them: "A", "Cross",
/// "Options". `sdlType` is SDL's type of controller; for types unknown to SDL, the name says where the button
/// is.
std::string_view controllerButtonName(int sdlType, ControllerButton button);

}  // namespace gull
