#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Language/Language.h"

#include <functional>
#include <string>
#include <vector>

namespace gull {

/// A key with its modifiers; Key::none means no shortcut.
struct Shortcut {
    Key key = Key::none;
    char32_t character = 0;  ///< lower-case, with Key::character
    bool command = false;    ///< the platform's primary modifier

    bool matches(const KeyEvent& event) const;
    /// As the platform writes it: "Ctrl+1", "F11", "Return"; empty for no shortcut.
    std::string text(const Language& language = {}) const;

    static Shortcut plain(char32_t character) { return {.key = Key::character, .character = character}; }
    static Shortcut withCommand(char32_t character) {
        return {.key = Key::character, .character = character, .command = true};
    }
};

/// One line of a menu in its current state: its text, whether it can be chosen, and what it does.
struct Command {
    std::string title;  ///< empty: a separating line
    Shortcut shortcut = {};
    bool enabled = true;
    bool checked = false;
    bool anywhere = false;              ///< its key works while a menu or a card that asks nothing is open
    std::function<void()> action = {};  ///< empty for a submenu or a separator
    std::function<void()> chosen = {};  ///< when chosen from the menu, if that differs from the key
    std::vector<Command> submenu = {};

    bool isSeparator() const { return title.empty(); }
    bool canBeChosen() const { return enabled && !isSeparator(); }
    static Command separator() { return {}; }
};

struct Menu {
    std::string title;
    std::vector<Command> commands;
};

/// Runs the enabled command with this shortcut, submenus included; false if there is none. The key of a
/// disabled command does nothing. `onlyAnywhere`: something is open, so only run commands that work then.
bool perform(const std::vector<Menu>& menus, const KeyEvent& event, bool onlyAnywhere = false);

}  // namespace gull
