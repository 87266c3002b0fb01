#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace gull {

/// Resamples one channel with a windowed sinc: pitch and time stay exact indefinitely, and tones that the
/// lower rate cannot represent are removed. Equal rates pass through unchanged.
///
/// Nothing is allocated after construction.
class Resampler {
  public:
    /// Hertz, both above 0.
    Resampler(int inputRate, int outputRate);

    /// How many input samples the next `outputs` output samples need.
    std::size_t inputsFor(std::size_t outputs) const;
    /// Fills `out` from `input`, which holds inputsFor(out.size()) samples.
    void resample(std::span<const float> input, std::span<float> out);

    /// The delay of the output, in input samples.
    int delay() const { return taps_ / 2; }

  private:
    void take(float sample);
    float interpolated(double phase) const;

    std::int64_t inputRate_;
    std::int64_t outputRate_;
    std::int64_t position_ = 0;  // of the next output between two inputs, in 1 / outputRate_ of an input
    int taps_ = 0;
    std::vector<float> kernel_;   // rows of taps_ weights, one for each phase
    std::vector<float> history_;  // the last taps_ inputs, stored twice so that every window is contiguous
    int newest_ = 0;
};

}  // namespace gull
