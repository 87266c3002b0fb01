#include "Engine/Stage/Precondition.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace gull {

void brokenPrecondition(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    std::fputs("gullwick: ", stderr);
    std::vfprintf(stderr, format, values);
    std::fputc('\n', stderr);
    va_end(values);
    std::abort();
}

}  // namespace gull
