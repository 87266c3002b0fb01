#pragma once

#include <variant>

namespace gull {

/// What a key, a menu item or a button of a game controller asks the game to do.
namespace KeyAction {

/// An arrow: each component is -1, 0 or 1; dy is 1 for down.
struct Move {
    int dx = 0;
    int dy = 0;
};
struct Confirm {};
struct Ping {};
struct Restart {};
struct Levels {};  ///< opens or closes the beach select
struct Next {};
struct Back {};   ///< leaves the beach select
struct Pause {};  ///< or goes on again

using Any = std::variant<Move, Confirm, Ping, Restart, Levels, Next, Back, Pause>;

}  // namespace KeyAction

}  // namespace gull
