#include "Engine/Window/KeyMap.h"

#include <SDL.h>

namespace gull {

namespace {

Modifiers modifiers(std::uint16_t mod) {
    Modifiers result;
    result.control = (mod & KMOD_CTRL) != 0;
#ifdef __APPLE__
    result.command = (mod & KMOD_GUI) != 0;
#else
    result.command = result.control;
#endif
    result.shift = (mod & KMOD_SHIFT) != 0;
    result.alt = (mod & KMOD_ALT) != 0;
    return result;
}

Key namedKey(std::int32_t sym) {
    switch (sym) {
        case SDLK_RETURN:
            return Key::returnKey;
        case SDLK_SPACE:
            return Key::space;
        case SDLK_KP_ENTER:
            return Key::keypadEnter;
        case SDLK_ESCAPE:
            return Key::escape;
        case SDLK_LEFT:
            return Key::left;
        case SDLK_RIGHT:
            return Key::right;
        case SDLK_DOWN:
            return Key::down;
        case SDLK_UP:
            return Key::up;
        case SDLK_TAB:
            return Key::tab;
        case SDLK_F10:
            return Key::f10;
        case SDLK_F11:
            return Key::f11;
        case SDLK_F12:
            return Key::f12;
        default:
            return Key::none;
    }
}

}  // namespace

std::optional<KeyEvent> keyEvent(std::int32_t sym, std::uint16_t mod, bool isRepeat) {
    KeyEvent event;
    event.modifiers = modifiers(mod);
    event.isRepeat = isRepeat;
    event.key = namedKey(sym);
    if (event.key != Key::none) return event;
    // Key codes without the scancode bit are the character of the key without modifiers.
    if (sym >= 0x20 && (sym & SDLK_SCANCODE_MASK) == 0 && sym != SDLK_DELETE) {
        event.key = Key::character;
        event.character = static_cast<char32_t>(sym);
        if (event.character >= U'A' && event.character <= U'Z') event.character += 32;
        return event;
    }
    return std::nullopt;
}

bool AltTap::released(bool isAlt) {
    const bool tapped = armed_ && isAlt;
    armed_ = false;
    return tapped;
}

}  // namespace gull
