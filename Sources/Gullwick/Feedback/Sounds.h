#pragma once

#include "Engine/Sound/SoundOutput.h"
#include "Gullwick/Feedback/Sound.h"

#include <vector>

/// The sounds, each computed from a formula: pure functions with the same result at every call. One channel,
/// every sample within -1 to 1.
namespace gull::Sounds {

/// The samples of `sound`. Their number is `sampleRate` (hertz) times its duration, truncated; it must be
/// finite, above -1 and below 2^32.
std::vector<float> make(const Sound& sound, double sampleRate = SoundOutput::sampleRate);

constexpr double surfDuration = 12;  ///< seconds: two waves
/// The surf, made for looping: its envelope joins without a step.
std::vector<float> makeSurf(double sampleRate = SoundOutput::sampleRate);

}  // namespace gull::Sounds
