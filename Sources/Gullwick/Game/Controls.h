#pragma once

#include "Engine/Language/Message.h"

#include <string>
#include <string_view>

namespace gull {

/// What the player has in hand, for texts that speak of it.
struct Controls {
    enum class Kind {
        trackpad,    ///< a touchpad or touch surface that can be read
        mouse,       ///< no such thing
        controller,  ///< no such thing either, and a game controller was used last
    };
    /// What the controller calls the buttons that the game uses.
    struct Buttons {
        std::string dig = "A";
        std::string back = "B";
        std::string ping = "X";
        std::string restart = "Back";
        std::string beaches = "Start";
        bool operator==(const Buttons&) const = default;
    };

    Kind kind = Kind::trackpad;
    Buttons buttons = {};  ///< with Kind::controller

    /// The name of a button, to be said in any language: "A" stays, "bottom button" is translated.
    static Message label(std::string_view button) { return marked("controller button", button); }

    bool operator==(const Controls&) const = default;
};

}  // namespace gull
