#pragma once

#include <cstdint>

namespace gull {

/// Keys that the program knows by name; everything else arrives as its character.
enum class Key {
    none,
    returnKey,
    space,
    keypadEnter,
    escape,
    left,
    right,
    down,
    up,
    tab,
    f10,
    f11,
    f12,
    alt,  ///< Alt pressed and released by itself
    character,
};

struct Modifiers {
    bool command = false;  ///< the platform's primary modifier: Control on Linux, Command on macOS
    bool control = false;  ///< Control as such (on Linux the same key as `command`)
    bool shift = false;
    bool alt = false;
};

struct KeyEvent {
    Key key = Key::none;
    char32_t character = 0;  ///< lower-case, modifiers ignored; only with Key::character
    Modifiers modifiers;
    bool isRepeat = false;
};

/// Positions are in points from the window's top-left corner, x to the right, y down.
struct MouseEvent {
    enum class Kind { moved, down, up, left };
    Kind kind = Kind::moved;  ///< `left`: the pointer went out of the window
    double x = 0;
    double y = 0;
    int button = 0;  ///< 1 left, 2 middle, 3 right; with `down` and `up`
};

/// One finger on a trackpad.
struct Contact {
    std::int64_t id = 0;  ///< the same while the finger stays down
    double x = 0;         ///< 0 left edge to 1 right edge
    double y = 0;         ///< 0 near edge to 1 far edge
};

}  // namespace gull
