#include "Gullwick/Feedback/Sounds.h"

#include "Engine/Log/Require.h"
#include "Gullwick/Feedback/SoundParts.h"

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <span>

namespace gull::Sounds {
namespace {

using namespace SoundParts;
using std::exp;
using std::min;
using std::sin;

constexpr double tau = 2 * std::numbers::pi;

std::vector<float> beep(double rate, int level) {
    const double frequency = 640 + 105.0 * level;
    const double gain = 0.16 + 0.025 * level;
    return render(rate, 0.05, [=](double t) {
        const double tone = 0.8 * sin(tau * frequency * t) + 0.12 * sin(tau * 2 * frequency * t);
        return tone * attack(t, 0.003) * exp(-70 * t) * gain;
    });
}

std::vector<float> buzz(double rate, int level) {
    const double gain = 0.12 + 0.02 * level;
    return render(rate, 0.05, [=, noise = Noise()](double t) mutable {
        double square = 0;  // the first five partials of a square wave
        for (int k = 1; k <= 9; k += 2) square += sin(tau * 165 * k * t) / k;
        return gain * (0.7 * square + 0.12 * double{noise.white()}) * attack(t, 0.003) * exp(-60 * t);
    });
}

std::vector<float> lockOn(double rate) {
    return render(rate, 0.16, [](double t) {
        const double pitch = 1100 + 900 * attack(t, 0.08);
        return attack(t, 0.004) * sin(tau * pitch * t) * exp(-22 * t) * 0.22;
    });
}

std::vector<float> shovel(double rate) {
    return render(rate, 0.34, [noise = Noise(), sand = Smoothed(0.18F)](double t) mutable {
        const double grains = sand(noise.white());
        const double thump = sin(tau * (95 - 40 * min(6 * t, 1.0)) * t) * exp(-22 * t) * 0.55;
        const double scrape = grains * 2.2 * exp(-13 * t) * (1 + 0.6 * sin(160 * t)) * 0.55;
        return static_cast<float>(thump) + static_cast<float>(scrape);
    });
}

std::vector<float> miss(double rate) {
    return render(rate, 0.25, [noise = Noise(), sand = Smoothed(0.12F)](double t) mutable {
        return double{sand(noise.white())} * 1.6 * attack(t, 0.01) * exp(-16 * t) * 0.5;
    });
}

struct Strike {
    double frequency;
    double start;
};

std::vector<float> bells(double rate, double seconds, std::span<const Strike> strikes, double decay,
                         double gain) {
    std::vector<float> mix(frameCount(rate, seconds));
    for (const Strike& strike : strikes) addBell(mix, {strike.frequency, strike.start, decay, gain}, rate);
    limit(mix);
    return mix;
}

// E6 G6 C7 E7
constexpr Strike foundStrikes[] = {{1318.5, 0}, {1568.0, 0.075}, {2093.0, 0.15}, {2637.0, 0.225}};
// G5 C6 E6 G6 C7
constexpr Strike winStrikes[] = {{783.99, 0}, {1046.5, 0.1}, {1318.5, 0.2}, {1568.0, 0.3}, {2093.0, 0.4}};
// C5 A#4 G4
constexpr Strike loseStrikes[] = {{523.25, 0}, {466.16, 0.22}, {392.0, 0.44}};
// C major from C5 to C7, 0.09 s apart
constexpr double chestNotes[] = {523.25, 659.25, 783.99, 1046.5, 1318.5, 1568.0, 2093.0};

std::vector<float> chest(double rate) {
    std::vector<float> mix(frameCount(rate, 2.8));
    for (int j = 0; const double frequency : chestNotes)
        addBell(mix, {frequency, 0.09 * j++, 2.6, 0.17}, rate);
    Noise noise;
    for (int i = 0; i < 22; ++i) {
        const double a = std::abs(noise.white());
        const double b = std::abs(noise.white());
        addBell(mix, {2300 + 3200 * b, 0.5 + 0.05 * i + 0.04 * a, 30, 0.07}, rate);
    }
    limit(mix);
    return mix;
}

/// One of the two falling notes of junk, `t` seconds after it began.
float fallingNote(double t, double frequency, double decay) {
    if (t <= 0) return 0;
    const double tone = 0.5 * sin(tau * frequency * t) + 0.12 * sin(tau * 2 * frequency * t);
    return static_cast<float>(tone * exp(-decay * t) * 0.12 * min(20 * t, 1.0));
}

std::vector<float> junk(double rate) {
    return render(rate, 0.6, [](double t) {
        const double body = sin(tau * (230 - 60 * min(5 * t, 1.0)) * t);
        const double clunk = (0.25 * sin(tau * 470 * t) + body) * exp(-18 * t) * 0.5;
        return fallingNote(t - 0.32, 330, 6) + (static_cast<float>(clunk) + fallingNote(t - 0.16, 392, 7));
    });
}

std::vector<float> ping(double rate) {
    return render(rate, 1.2, [](double t) {
        const double call = sin(tau * 1250 * t) * attack(t, 0.005) * exp(-5 * t) * 0.2;
        const double later = t - 0.32;
        const double echo = later > 0 ? sin(tau * 1250 * later) * exp(-7 * later) * 0.07 : 0;
        return static_cast<float>(call) + static_cast<float>(echo);
    });
}

std::vector<float> countdown(double rate) {
    return render(rate, 0.05, [noise = Noise()](double t) mutable {
        return (0.6 * sin(tau * 1900 * t) + 0.2 * double{noise.white()}) * exp(-120 * t) * 0.22;
    });
}

std::vector<float> wave(double rate) {
    return render(
        rate, 3.0, [noise = Noise(), first = Smoothed(0.06F), second = Smoothed(0.3F)](double t) mutable {
            const double swell = sin(std::numbers::pi * min(t / 3, 1.0));
            const double sinceCrest = t - 0.6;
            const double crest =
                sinceCrest > 0 ? std::max(sin(std::numbers::pi * min(sinceCrest / 2.4, 1.0)), 0.0) : 0;
            const double rumble = 3.2 * double{second(first(noise.white()))};
            const double hiss = double{noise.white()} * 0.25 * crest;
            return (rumble + hiss) * swell * 0.55;
        });
}

std::vector<float> tap(double rate) {
    return render(rate, 0.025, [noise = Noise()](double t) mutable {
        return (0.5 * sin(tau * 1500 * t) + 0.3 * double{noise.white()}) * exp(-600 * t) * 0.2;
    });
}

}  // namespace

std::vector<float> make(const Sound& sound, double sampleRate) {
    switch (sound.kind) {
        case Sound::Kind::beep:
            return beep(sampleRate, sound.level);
        case Sound::Kind::buzz:
            return buzz(sampleRate, sound.level);
        case Sound::Kind::lockOn:
            return lockOn(sampleRate);
        case Sound::Kind::shovel:
            return shovel(sampleRate);
        case Sound::Kind::miss:
            return miss(sampleRate);
        case Sound::Kind::found:
            return bells(sampleRate, 1.4, foundStrikes, 4.5, 0.24);
        case Sound::Kind::chest:
            return chest(sampleRate);
        case Sound::Kind::junk:
            return junk(sampleRate);
        case Sound::Kind::ping:
            return ping(sampleRate);
        case Sound::Kind::countdown:
            return countdown(sampleRate);
        case Sound::Kind::wave:
            return wave(sampleRate);
        case Sound::Kind::win:
            return bells(sampleRate, 1.8, winStrikes, 2.8, 0.18);
        case Sound::Kind::lose:
            return bells(sampleRate, 1.4, loseStrikes, 3.5, 0.18);
        case Sound::Kind::tap:
            return tap(sampleRate);
    }
    brokenPrecondition("Sounds::make: no sound of kind {}", static_cast<int>(sound.kind));
}

std::vector<float> makeSurf(double sampleRate) {
    Noise noise(Noise::surfSeed);
    return render(sampleRate, surfDuration,
                  [noise, bright = Smoothed(0.2F), deep = Smoothed(0.02F)](double t) mutable {
                      const float rumble = deep(noise.white());
                      const float wash = bright(noise.white());
                      const double phase = std::numbers::pi * t / 3;  // a wave every six seconds
                      const double rise = 0.5 + 0.5 * sin(phase - 1.2);
                      const double swell = rise * rise * 0.65 + 0.35;
                      const double crest = std::max(sin(phase - 0.4), 0.0);
                      const double crash = crest * crest * crest * crest;
                      return (double{wash} * 0.5 * crash + double{rumble} * 4.5 * swell) * 0.5;
                  });
}

}  // namespace gull::Sounds
