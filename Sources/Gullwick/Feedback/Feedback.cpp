#include "Gullwick/Feedback/Feedback.h"

#include "Engine/Log/Require.h"
#include "Gullwick/Feedback/Sounds.h"
#include "Gullwick/Settings/AppSettings.h"

#include <limits>
#include <utility>

namespace gull {
namespace {

/// The sounds that play can ask for, the costliest to make first.
const auto& soundsInUse() {
    static const auto sounds = [] {
        std::vector<Sound> list = {Sound::chest, Sound::found,     Sound::wave,   Sound::win,
                                   Sound::lose,  Sound::junk,      Sound::ping,   Sound::shovel,
                                   Sound::miss,  Sound::countdown, Sound::lockOn, Sound::tap};
        for (int level = 0; level <= 9; ++level) {
            list.push_back(Sound::beep(level));
            list.push_back(Sound::buzz(level));
        }
        return list;
    }();
    return sounds;
}

/// Of a volume in percent. The ear takes a quarter of the amplitude for about half as loud.
float amplitude(int percent) {
    const float share = static_cast<float>(percent) / 100;
    return share * share;
}

}  // namespace

Feedback::Feedback(const AppSettings& settings, MainLoop& loop, SoundOutput* output, HapticPerformer* haptics)
    : settings_(settings),
      loop_(loop),
      output_(output),
      haptics_(haptics),
      delayed_(loop),
      lastHaptic_(-std::numeric_limits<double>::infinity()) {}

Feedback::~Feedback() {
    // The output borrows the samples in the cache.
    if (output_) output_->silence();
}

void Feedback::play(const Sound& sound, float gain) {
    const float volume = amplitude(settings_.effectsVolume());
    if (!settings_.sound() || volume <= 0 || muted || !output_ || !output_->start()) return;
    const int voice = std::exchange(nextVoice_, (nextVoice_ + 1) % SoundOutput::voiceCount);
    output_->play(voice, samples(sound), gain * volume);
}

void Feedback::haptic(HapticPattern pattern, double minGap) {
    if (!settings_.haptics() || muted) return;
    const double now = loop_.now();
    if (now - lastHaptic_ < minGap) return;
    lastHaptic_ = now;
    if (haptics_) haptics_->perform(pattern);
}

void Feedback::thump(int count, double gap, HapticPattern pattern) {
    require(count >= 0, "Feedback::thump: a count of {} pulses", count);
    if (count == 0) return;
    haptic(pattern, 0);
    for (int pulse = 1; pulse < count; ++pulse)
        delayed_.after(gap * pulse, [this, pattern] { haptic(pattern, 0); });
}

void Feedback::cancelPending() {
    delayed_.cancelPending();
}

bool Feedback::isHeard() {
    return settings_.sound() && settings_.effectsVolume() > 0 && !muted && output_ && output_->start();
}

bool Feedback::isFelt() const {
    return settings_.haptics() && !muted && haptics_ && haptics_->isAvailable();
}

void Feedback::startSurf() {
    if (muted) return;
    if (!surfStarted_ && output_ && output_->start()) {
        surfStarted_ = true;
        if (surf_.empty()) surf_ = Sounds::makeSurf();
        output_->loop(surf_);
    }
    applySoundSwitch();
}

void Feedback::applySoundSwitch() {
    if (output_)
        output_->setLoopVolume(settings_.sound() && !muted && !surfHeld_
                                   ? surfVolume * amplitude(settings_.surfVolume())
                                   : 0.0F);
}

void Feedback::holdSurf(bool held) {
    surfHeld_ = held;
    applySoundSwitch();
}

bool Feedback::prepareOne() {
    if (!settings_.sound() || muted || !output_) return false;
    for (const Sound& sound : soundsInUse())
        if (!cache_.contains(sound)) {
            samples(sound);
            return true;
        }
    return false;
}

const std::vector<float>& Feedback::samples(const Sound& sound) {
    const auto [entry, isNew] = cache_.try_emplace(sound);
    if (isNew) entry->second = Sounds::make(sound);
    return entry->second;
}

}  // namespace gull
