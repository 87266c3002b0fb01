#pragma once

namespace gull {

/// The texture unit at which textures are filled; draws read those below it.
inline constexpr int editingUnit = 16;

}  // namespace gull
