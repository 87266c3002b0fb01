#pragma once

namespace gull {

/// Makes memory that is freed go back to the system: large blocks (the pictures and shadow maps of a beach)
/// are then mapped one by one instead of leaving holes in the heap. Call before anything large is allocated.
void returnLargeBlocks();

}  // namespace gull
