#pragma once

#include "Engine/Views/View.h"

#include <cstdint>

namespace gull {

/// A row of three stars.
struct StarsView {
    std::int64_t count;  ///< how many are filled; limited to 0..3
    double size;         ///< points

    View body() const;
};

}  // namespace gull
