#include "Gullwick/HUD/Command.h"

#include <algorithm>

namespace gull {

namespace {

std::string withCommandKey(const std::string& name, [[maybe_unused]] const Language& language) {
#ifdef __APPLE__
    return "⌘" + name;
#else
    return language.tr("Ctrl+{}", name);
#endif
}

std::string keyName(Key key, char32_t character, const Language& language) {
    switch (key) {
        case Key::returnKey:
            return language.trc("key", "Return");
        case Key::escape:
            return language.trc("key", "Esc");
        case Key::f11:
            return "F11";
        case Key::f12:
            return "F12";
        case Key::f10:
            return "F10";
        case Key::space:
            return language.trc("key", "Space");
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

std::string Shortcut::text(const Language& language) const {
    const std::string name = keyName(key, character, language);
    return command && !name.empty() ? withCommandKey(name, language) : name;
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
