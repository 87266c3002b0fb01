#include "Engine/Sound/SoundStream.h"

#include <algorithm>

namespace gull {
namespace {

constexpr std::size_t blockFrames = 256;  // at the device's rate

}  // namespace

SoundStream::SoundStream(int rate, int channels)
    : channels_(channels),
      resampler_(static_cast<int>(SoundOutput::sampleRate), rate),
      resampled_(blockFrames) {
    const double ratio = SoundOutput::sampleRate / rate;
    mixed_.resize(static_cast<std::size_t>(static_cast<double>(blockFrames) * ratio) + 2);
}

void SoundStream::render(std::span<float> out) {
    obey();
    const auto channels = static_cast<std::size_t>(channels_);
    for (std::size_t done = 0; done < out.size();) {
        const std::size_t samples = std::min(out.size() - done, blockFrames * channels);
        renderBlock(out.subspan(done, samples));
        done += samples;
    }
}

void SoundStream::silence() {
    while (commands_.pop()) {
    }
    mixer_.silence();
    fadeLeft_ = -1;
    hasFadedOut_ = false;
}

void SoundStream::obey() {
    while (const auto command = commands_.pop()) {
        switch (command->kind) {
            case Command::Kind::play:
                mixer_.play(command->voice, command->samples, command->volume);
                break;
            case Command::Kind::loop:
                mixer_.loop(command->samples);
                break;
            case Command::Kind::loopVolume:
                mixer_.setLoopVolume(command->volume);
                break;
            case Command::Kind::fadeOut:
                fadeLeft_ = fadeOutFrames;
                break;
        }
    }
}

void SoundStream::renderBlock(std::span<float> out) {
    const auto channels = static_cast<std::size_t>(channels_);
    const std::span<float> mono(resampled_.data(), out.size() / channels);
    const std::span<float> mixed(mixed_.data(), resampler_.inputsFor(mono.size()));
    mixer_.mix(mixed);
    if (fadeLeft_ >= 0) applyFadeOut(mixed);
    resampler_.resample(mixed, mono);

    float* sample = out.data();
    for (const float each : mono) {
        const float heard = Mixer::soften(each);
        for (std::size_t channel = 0; channel < channels; ++channel) *sample++ = channel < 2 ? heard : 0.0F;
    }
}

void SoundStream::applyFadeOut(std::span<float> mono) {
    for (float& sample : mono) {
        sample *= static_cast<float>(fadeLeft_) / fadeOutFrames;
        fadeLeft_ = std::max(fadeLeft_ - 1, 0);
    }
    if (fadeLeft_ == 0) hasFadedOut_.store(true, std::memory_order_release);
}

}  // namespace gull
