#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace gull {

/// Turns one channel at one rate into one at another with a windowed sinc: pitch and time exact for ever,
/// tones that the slower rate cannot hold taken out. Equal rates pass through untouched.
///
/// Nothing is allocated after construction.
class Resampler {
  public:
    /// Hertz, both above 0.
    Resampler(int inputRate, int outputRate);

    /// How many input samples the next `outputs` output samples will take in.
    std::size_t inputsFor(std::size_t outputs) const;
    /// Fills `out` from `input`, which holds inputsFor(out.size()) samples.
    void resample(std::span<const float> input, std::span<float> out);

    /// Input samples by which the output lags behind.
    int delay() const { return taps_ / 2; }

  private:
    void take(float sample);
    float interpolated(double phase) const;

    std::int64_t inputRate_;
    std::int64_t outputRate_;
    std::int64_t position_ = 0;  // of the next output between two inputs, in 1 / outputRate_ of an input
    int taps_ = 0;
    std::vector<float> kernel_;   // rows of taps_ weights, one for each phase
    std::vector<float> history_;  // the last taps_ inputs, kept twice so that a window is always in one piece
    int newest_ = 0;
};

}  // namespace gull
