#pragma once

#include <string>

namespace gull {

class Stage;

/// The first number found on `stage` that is infinite or NaN, like "node \"coil\": its position"; empty when
/// every number is finite. Checks everything that changes from frame to frame (transforms, cameras, lights,
/// materials, particles and the scene's time), but not meshes and pixels.
std::string nonFiniteNumber(const Stage& stage);

}  // namespace gull
