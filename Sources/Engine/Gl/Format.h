#pragma once

namespace gull {

/// Pixel formats of targets and textures. bgra8: rgba8 with its bytes in the order that windows use, if the
/// driver agrees.
enum class Format { none, r8, rgba8, bgra8, rgba16f, depth16, depth24 };

}  // namespace gull
