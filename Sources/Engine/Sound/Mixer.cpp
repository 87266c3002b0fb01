#include "Engine/Sound/Mixer.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace gull {

void Mixer::play(int voice, std::span<const float> samples, float volume) {
    require(voice >= 0 && voice < SoundOutput::voiceCount, "Mixer::play: voice {} of {}", voice,
            SoundOutput::voiceCount);
    Voice& taken = voices_[static_cast<std::size_t>(voice)];
    cutOff(taken);
    taken = {samples, 0, volume, 0};
}

void Mixer::loop(std::span<const float> samples) {
    cutOff(loop_);
    loop_ = {samples, 0, 0, 0};
    jointStep_ = 0;
}

void Mixer::silence() {
    voices_.fill({});
    cutOff_.fill({});
    loop_ = {};
    loopTarget_ = 0;
    jointStep_ = 0;
}

void Mixer::cutOff(const Voice& voice) {
    if (!voice.isSounding()) return;
    // If more sounds than that are cut off during a fade, the quietest tail makes room.
    Voice& place = *std::min_element(cutOff_.begin(), cutOff_.end(), [](const Voice& a, const Voice& b) {
        return a.volume * static_cast<float>(a.fadeLeft) < b.volume * static_cast<float>(b.fadeLeft);
    });
    place = voice;
    place.fadeLeft = fadeFrames;
}

void Mixer::mix(std::span<float> out) {
    std::fill(out.begin(), out.end(), 0.0F);
    for (Voice& voice : voices_) addVoice(voice, out);
    for (Voice& voice : cutOff_) addCutOff(voice, out);
    addLoop(out);
}

void Mixer::addVoice(Voice& voice, std::span<float> out) const {
    const std::size_t frames = std::min(out.size(), voice.samples.size() - voice.next);
    for (std::size_t frame = 0; frame < frames; ++frame)
        out[frame] += voice.samples[voice.next + frame] * voice.volume;
    voice.next += frames;
}

void Mixer::addCutOff(Voice& voice, std::span<float> out) const {
    for (std::size_t frame = 0; frame < out.size() && voice.fadeLeft > 0; ++frame) {
        if (!voice.isSounding()) voice.fadeLeft = 0;
        if (voice.fadeLeft == 0) return;
        const float share = static_cast<float>(voice.fadeLeft--) / fadeFrames;
        out[frame] += voice.samples[voice.next++] * voice.volume * share;
    }
}

void Mixer::addLoop(std::span<float> out) {
    if (loop_.samples.empty()) return;
    constexpr float step = 1.0F / glideFrames;
    for (float& sample : out) {
        loop_.volume += std::clamp(loopTarget_ - loop_.volume, -step, step);
        const float lift = jointStep_ * static_cast<float>(loop_.fadeLeft) / fadeFrames;
        sample += (loop_.samples[loop_.next] + lift) * loop_.volume;
        loop_.fadeLeft = std::max(loop_.fadeLeft - 1, 0);
        if (++loop_.next < loop_.samples.size()) continue;
        loop_.next = 0;
        loop_.fadeLeft = fadeFrames;
        jointStep_ = loop_.samples.back() - loop_.samples.front();
    }
}

float Mixer::soften(float sample) {
    const float size = std::abs(sample);
    if (size <= limitStart) return sample;
    // Continues with slope 1 and approaches 1.
    constexpr float room = 1 - limitStart;
    return std::copysign(limitStart + room * std::tanh((size - limitStart) / room), sample);
}

}  // namespace gull
