#pragma once

#include <variant>

namespace gull {

/// The action that a key, a menu item or a button of a game controller requests.
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
struct Pause {};  ///< or resumes

using Any = std::variant<Move, Confirm, Ping, Restart, Levels, Next, Back, Pause>;

}  // namespace KeyAction

}  // namespace gull
