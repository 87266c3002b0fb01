#pragma once

namespace gull {

/// How much work a frame may cost. `full`: multisampled, everything at full resolution. `fast`: the same
/// picture for machines without a GPU.
enum class RenderTier { full, fast };

/// How an outdated static layer is built: within a few milliseconds a frame, while the frame shows the best
/// picture available, or to the end before the frame is shown.
enum class BuildMode { gradual, complete };

}  // namespace gull
