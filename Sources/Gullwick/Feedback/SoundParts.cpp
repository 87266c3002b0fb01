#include "Gullwick/Feedback/SoundParts.h"

#include "Engine/Log/Require.h"

#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace gull::SoundParts {
namespace {

using Phasor = std::complex<double>;

struct Overtone {
    double ratio;  ///< to the note's frequency; slightly off integers, like those of a bell
    double gain;
};
constexpr std::array<Overtone, 3> overtones = {{{1, 0.6}, {2.01, 0.22}, {3.03, 0.08}}};

/// A note ends once its loudest possible sample is below this.
constexpr double inaudible = 1e-9;

/// Without the standard library's handling of infinities, which costs more than the product.
Phasor product(const Phasor& a, const Phasor& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

}  // namespace

void addBell(std::vector<float>& mix, const BellNote& note, double sampleRate) {
    // The first frame after the start, excluding the start itself.
    auto frame = static_cast<std::size_t>(std::max(std::floor(note.start * sampleRate) - 1, 0.0));
    while (static_cast<double>(frame) / sampleRate - note.start <= 0) ++frame;
    const double firstTime = static_cast<double>(frame) / sampleRate - note.start;
    const double audible = std::log(note.gain / inaudible) / note.decay;
    const auto end = std::min(mix.size(), frame + static_cast<std::size_t>(audible * sampleRate));

    // A partial g sin(2 pi f t) e^(-d t) is the imaginary part of g e^((-d + 2 pi i f) t).
    std::array<Phasor, 3> partials;
    std::array<Phasor, 3> steps;
    for (std::size_t k = 0; k < partials.size(); ++k) {
        const Phasor rate(-note.decay, 2 * std::numbers::pi * overtones[k].ratio * note.frequency);
        partials[k] = note.gain * overtones[k].gain * std::exp(rate * firstTime);
        steps[k] = std::exp(rate / sampleRate);
    }
    for (; frame < end; ++frame) {
        mix[frame] += static_cast<float>(partials[0].imag() + partials[1].imag() + partials[2].imag());
        for (std::size_t k = 0; k < partials.size(); ++k) partials[k] = product(partials[k], steps[k]);
    }
}

std::size_t frameCount(double sampleRate, double duration) {
    const double frames = sampleRate * duration;
    require(frames > -1 && frames < 4294967296.0, "a sound of {} s at {} Hz has no number of frames",
            duration, sampleRate);
    return static_cast<std::size_t>(std::max(std::trunc(frames), 0.0));
}

void limit(std::vector<float>& samples) {
    for (float& sample : samples) sample = std::clamp(sample, -1.0F, 1.0F);
}

}  // namespace gull::SoundParts
