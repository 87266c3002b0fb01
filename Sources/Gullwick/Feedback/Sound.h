#pragma once

#include <compare>

namespace gull {

/// Identifies one of the program's synthesised sounds. The two kinds of detector tick have a level, so
/// `beep(3)` and `beep(4)` are different sounds.
struct Sound {
    enum class Kind {
        beep,
        buzz,
        lockOn,
        shovel,
        miss,
        found,
        chest,
        junk,
        ping,
        countdown,
        wave,
        win,
        lose,
        tap,
    };

    Kind kind = Kind::tap;
    int level = 0;  ///< of `beep` and `buzz`, 0 to 9 in use; 0 otherwise

    /// One tick over treasure: the higher the level, the higher its pitch and volume.
    static constexpr Sound beep(int level) { return {Kind::beep, level}; }
    /// One tick over junk, or over something unknown: a rough buzz.
    static constexpr Sound buzz(int level) { return {Kind::buzz, level}; }
    static const Sound lockOn;     ///< the coil has come within pinpoint range
    static const Sound shovel;     ///< a dig starts
    static const Sound miss;       ///< nothing there
    static const Sound found;      ///< a treasure came up
    static const Sound chest;      ///< the chest came up
    static const Sound junk;       ///< junk came up
    static const Sound ping;       ///< a ping was used
    static const Sound countdown;  ///< one of the last seconds of the tide
    static const Sound wave;       ///< the sea floods the beach
    static const Sound win;        ///< the beach is passed
    static const Sound lose;       ///< the beach is not passed
    static const Sound tap;        ///< a tile is hovered

    auto operator<=>(const Sound&) const = default;
};

inline constexpr Sound Sound::lockOn{Kind::lockOn};
inline constexpr Sound Sound::shovel{Kind::shovel};
inline constexpr Sound Sound::miss{Kind::miss};
inline constexpr Sound Sound::found{Kind::found};
inline constexpr Sound Sound::chest{Kind::chest};
inline constexpr Sound Sound::junk{Kind::junk};
inline constexpr Sound Sound::ping{Kind::ping};
inline constexpr Sound Sound::countdown{Kind::countdown};
inline constexpr Sound Sound::wave{Kind::wave};
inline constexpr Sound Sound::win{Kind::win};
inline constexpr Sound Sound::lose{Kind::lose};
inline constexpr Sound Sound::tap{Kind::tap};

}  // namespace gull
