#include "Gullwick/HUD/Command.h"

#include <algorithm>

namespace gull {

namespace {

#ifdef __APPLE__
constexpr const char* commandPrefix = "⌘";
#else
constexpr const char* commandPrefix = "Ctrl+";
#endif

std::string keyName(Key key, char32_t character) {
    switch (key) {
        case Key::returnKey:
            return "Return";
        case Key::escape:
            return "Esc";
        case Key::f11:
            return "F11";
        case Key::f12:
            return "F12";
        case Key::f10:
            return "F10";
        case Key::space:
            return "Space";
        case Key::character: {
            const bool isLetter = character >= U'a' && character <= U'z';
            return std::string(1, static_cast<char>(isLetter ? character - U'a' + U'A' : character));
        }
        default:
            return {};
    }
}

const Command* findEnabled(const std::vector<Command>& commands, const KeyEvent& event, bool onlyAnywhere) {
    for (const Command& command : commands) {
        const bool counts = command.anywhere || !onlyAnywhere;
        if (counts && command.action && command.canBeChosen() && command.shortcut.matches(event))
            return &command;
        if (const Command* inner = findEnabled(command.submenu, event, onlyAnywhere)) return inner;
    }
    return nullptr;
}

}  // namespace

bool Shortcut::matches(const KeyEvent& event) const {
    if (key == Key::none || event.key != key) return false;
    if (event.modifiers.command != command || event.modifiers.alt) return false;
    return key != Key::character || event.character == character;
}

std::string Shortcut::text() const {
    const std::string name = keyName(key, character);
    return command && !name.empty() ? commandPrefix + name : name;
}

bool perform(const std::vector<Menu>& menus, const KeyEvent& event, bool onlyAnywhere) {
    for (const Menu& menu : menus) {
        if (const Command* command = findEnabled(menu.commands, event, onlyAnywhere)) {
            command->action();
            return true;
        }
    }
    return false;
}

}  // namespace gull
