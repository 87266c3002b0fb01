#include "Engine/Window/ControllerNames.h"

#include "Engine/Language/Message.h"

#include <SDL.h>

namespace gull {

namespace {

/// The names of the six buttons that differ between makers.
struct Names {
    std::string_view south, east, west, north, start, back;
};

Names namesOf(int sdlType) {
    switch (sdlType) {
        case SDL_CONTROLLER_TYPE_XBOX360:
        case SDL_CONTROLLER_TYPE_NVIDIA_SHIELD:
            return {"A", "B", "X", "Y", "Start", "Back"};
        case SDL_CONTROLLER_TYPE_XBOXONE:
            return {"A", "B", "X", "Y", "Menu", "View"};
        case SDL_CONTROLLER_TYPE_GOOGLE_STADIA:
            return {"A", "B", "X", "Y", "Menu", "Options"};
        case SDL_CONTROLLER_TYPE_PS3:
            return {"Cross", "Circle", "Square", "Triangle", "Start", "Select"};
        case SDL_CONTROLLER_TYPE_PS4:
            return {"Cross", "Circle", "Square", "Triangle", "Options", "Share"};
        case SDL_CONTROLLER_TYPE_PS5:
            return {"Cross", "Circle", "Square", "Triangle", "Options", "Create"};
        case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_PRO:
        case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_JOYCON_PAIR:
            return {"B", "A", "Y", "X", "Plus", "Minus"};
        default:
            return {translatable("controller button", "bottom button"),
                    translatable("controller button", "right button"),
                    translatable("controller button", "left button"),
                    translatable("controller button", "top button"),
                    "Start",
                    "Back"};
    }
}

}  // namespace

std::string_view controllerButtonName(int sdlType, ControllerButton button) {
    const Names names = namesOf(sdlType);
    switch (button) {
        case ControllerButton::south:
            return names.south;
        case ControllerButton::east:
            return names.east;
        case ControllerButton::west:
            return names.west;
        case ControllerButton::north:
            return names.north;
        case ControllerButton::start:
            return names.start;
        case ControllerButton::back:
            return names.back;
        case ControllerButton::left:
            return "left";
        case ControllerButton::right:
            return "right";
        case ControllerButton::up:
            return "up";
        case ControllerButton::down:
            return "down";
        case ControllerButton::touchClick:
            return "touch surface";
    }
    return {};
}

}  // namespace gull
