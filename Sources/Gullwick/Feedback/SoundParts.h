#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The building blocks of the sounds.
namespace gull::SoundParts {

/// White noise from a 32-bit linear congruential generator: cheap, and the same at every run.
class Noise {
  public:
    static constexpr std::uint32_t soundSeed = 24681;
    static constexpr std::uint32_t surfSeed = 99;

    explicit Noise(std::uint32_t seed = soundSeed) : state_(seed) {}
    /// Uniform in 0 to 1 (1 excluded), a multiple of 2^-24.
    float next() {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<float>(state_ >> 8U) / 16777216.0F;
    }
    /// Uniform in -1 to 1.
    float white() { return 2 * next() - 1; }

  private:
    std::uint32_t state_;
};

/// A one-pole low pass.
class Smoothed {
  public:
    /// Each frame moves the value by `share` of the way to the input, 0 to 1.
    explicit Smoothed(float share) : share_(share) {}
    float operator()(float input) {
        value_ += (input - value_) * share_;
        return value_;
    }

  private:
    float share_;
    float value_ = 0;
};

/// A ramp from 0 at t = 0 to 1 at t = `length` (seconds), 1 from then on.
inline double attack(double t, double length) {
    return std::min(t / length, 1.0);
}

/// A struck bell: three partials that decay together.
struct BellNote {
    double frequency = 0;  ///< of the lowest partial, hertz
    double start = 0;      ///< seconds; the note is silent until after this
    double decay = 0;      ///< e^(-decay x seconds since the start)
    double gain = 0;
};

/// Adds a note to `mix`. Advances the partials by a complex rotation per frame instead of computing sines, so
/// that a chord of 29 notes takes less than a frame; the error stays below 1e-9.
void addBell(std::vector<float>& mix, const BellNote& note, double sampleRate);

/// `sampleRate` x `duration` truncated; stops the program if that is not a valid number of frames.
std::size_t frameCount(double sampleRate, double duration);
/// Limits every sample to -1 to 1.
void limit(std::vector<float>& samples);

/// Samples `mix(t)` at the time t of each frame, limited to -1 to 1.
template <typename Mix>
std::vector<float> render(double sampleRate, double duration, Mix mix) {
    std::vector<float> samples(frameCount(sampleRate, duration));
    for (std::size_t frame = 0; frame < samples.size(); ++frame)
        samples[frame] = static_cast<float>(mix(static_cast<double>(frame) / sampleRate));
    limit(samples);
    return samples;
}

}  // namespace gull::SoundParts
