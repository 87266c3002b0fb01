#include "Engine/Log/Require.h"

#include "Engine/Log/Log.h"

#include <cstdlib>

namespace gull {

void stopProgram(fmt::string_view message, fmt::format_args values) {
    Log::write(message, values, true);
    std::abort();
}

}  // namespace gull
