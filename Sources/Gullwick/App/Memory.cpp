#include "Gullwick/App/Memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace gull {

void returnLargeBlocks() {
#ifdef __GLIBC__
    // Setting the threshold stops the C library from raising it with every large block that is freed.
    constexpr int largeBlock = 1 << 20;  // bytes
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    // Setting the other also sets this one to its minimum, at which a frame's own blocks came and went with
    // the heap's end.
    mallopt(M_TRIM_THRESHOLD, 2 * largeBlock);
#endif
}

}  // namespace gull
