#pragma once

#include "Engine/Language/Message.h"

#include <string>
#include <string_view>

namespace gull {

/// The controls in the player's hand, for texts that mention them.
struct Controls {
    enum class Kind {
        trackpad,    ///< a touchpad or touch surface that can be read
        mouse,       ///< no trackpad
        controller,  ///< no trackpad, and a game controller was used last
    };
    /// The controller's names of the buttons that the game uses.
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
