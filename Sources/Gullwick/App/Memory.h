#pragma once

namespace gull {

/// Makes freed memory go back to the system: large blocks (the pictures and shadow maps of a beach) are then
/// mapped individually instead of leaving holes in the heap. Call it before allocating anything large.
void returnLargeBlocks();

}  // namespace gull
