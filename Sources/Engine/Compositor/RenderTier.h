#pragma once

namespace gull {

/// How much work a frame may cost. `full`: multisampled, everything at full resolution. `fast`: the same
/// picture for machines without a GPU.
enum class RenderTier { full, fast };

/// How a static layer that is not up to date is built: within a few milliseconds a frame, while the frame
/// shows the best there is, or to the end before the frame is shown.
enum class BuildMode { gradual, complete };

}  // namespace gull
