#pragma once

#include <string>

namespace gull {

/// Seconds, rounded up, as minutes and seconds: 59.2 is "1:00", 0.4 is "0:01". Stops the program for a value
/// that is not finite or does not fit 64 bits.
std::string clock(double seconds);

}  // namespace gull
