#include "Engine/Sound/Resampler.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace gull {
namespace {

constexpr int phases = 256;
constexpr int zeroCrossings = 16;   // of the sinc, on either side
constexpr double kaiserBeta = 8;    // about 80 dB down outside the band
constexpr double bandShare = 0.94;  // of the slower rate's band that is kept whole

/// The modified Bessel function of the first kind and order 0, by its series.
double bessel0(double x) {
    double sum = 1;
    double term = 1;
    for (int k = 1; term > 1e-12 * sum; ++k) {
        term *= (x / 2 / k) * (x / 2 / k);
        sum += term;
    }
    return sum;
}

}  // namespace

Resampler::Resampler(int inputRate, int outputRate) : inputRate_(inputRate), outputRate_(outputRate) {
    require(inputRate > 0 && outputRate > 0, "Resampler: from {} to {} Hz", inputRate, outputRate);
    if (inputRate == outputRate) return;
    const double cutoff = bandShare * std::min(1.0, static_cast<double>(outputRate) / inputRate);
    const double reach = zeroCrossings / cutoff;  // input samples on either side
    taps_ = 2 * static_cast<int>(std::ceil(reach));
    kernel_.resize(static_cast<std::size_t>(taps_) * (phases + 1));
    history_.assign(static_cast<std::size_t>(taps_) * 2, 0.0F);

    // weight(x) = cutoff sinc(cutoff x) kaiser(x / reach), x input samples from the output; each row sums to
    // 1 so that a constant stays as it is.
    for (int phase = 0; phase <= phases; ++phase) {
        float* row = kernel_.data() + static_cast<std::ptrdiff_t>(phase) * taps_;
        double sum = 0;
        std::vector<double> weights(static_cast<std::size_t>(taps_));
        for (int tap = 0; tap < taps_; ++tap) {
            const int fromMiddle = tap - (taps_ / 2 - 1);
            const double x = fromMiddle - static_cast<double>(phase) / phases;
            const double angle = std::numbers::pi * cutoff * x;
            const double sinc = std::abs(angle) < 1e-9 ? 1 : std::sin(angle) / angle;
            const double u = std::min(std::abs(x) / reach, 1.0);
            const double weight = sinc * bessel0(kaiserBeta * std::sqrt(1 - u * u));
            weights[static_cast<std::size_t>(tap)] = weight;
            sum += weight;
        }
        for (int tap = 0; tap < taps_; ++tap)
            row[tap] = static_cast<float>(weights[static_cast<std::size_t>(tap)] / sum);
    }
}

std::size_t Resampler::inputsFor(std::size_t outputs) const {
    if (taps_ == 0) return outputs;
    return static_cast<std::size_t>((position_ + static_cast<std::int64_t>(outputs) * inputRate_) /
                                    outputRate_);
}

void Resampler::take(float sample) {
    newest_ = (newest_ + 1) % taps_;
    history_[static_cast<std::size_t>(newest_)] = sample;
    history_[static_cast<std::size_t>(newest_ + taps_)] = sample;
}

float Resampler::interpolated(double phase) const {
    const double row = phase * phases;
    const auto whole = static_cast<int>(row);
    const auto share = static_cast<float>(row - whole);
    const float* low = kernel_.data() + static_cast<std::ptrdiff_t>(whole) * taps_;
    const float* high = low + taps_;
    const float* oldest = history_.data() + newest_ + 1;
    float lowSum = 0;
    float highSum = 0;
    for (int tap = 0; tap < taps_; ++tap) {
        lowSum += oldest[tap] * low[tap];
        highSum += oldest[tap] * high[tap];
    }
    return lowSum + (highSum - lowSum) * share;
}

void Resampler::resample(std::span<const float> input, std::span<float> out) {
    if (taps_ == 0) {
        std::copy(input.begin(), input.end(), out.begin());
        return;
    }
    auto next = input.begin();
    for (float& sample : out) {
        position_ += inputRate_;
        for (; position_ >= outputRate_; position_ -= outputRate_) take(*next++);
        sample = interpolated(static_cast<double>(position_) / static_cast<double>(outputRate_));
    }
}

}  // namespace gull
