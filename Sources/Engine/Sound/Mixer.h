#pragma once

#include "Engine/Sound/SoundOutput.h"

#include <array>
#include <cstddef>
#include <span>

namespace gull {

/// Sums the voices exactly; pure and independent of any device. One channel at SoundOutput::sampleRate. A
/// sound that is cut off fades out over a few milliseconds while its successor starts, and volumes glide, so
/// that neither clicks.
///
/// Samples are borrowed, as SoundOutput says. Nothing is allocated after construction.
class Mixer {
  public:
    static constexpr int fadeFrames = 176;   ///< of a sound cut off: 4 ms
    static constexpr int glideFrames = 882;  ///< of the repeating voice's volume, from 0 to 1: 20 ms

    void play(int voice, std::span<const float> samples, float volume);
    void loop(std::span<const float> samples);
    void setLoopVolume(float volume) { loopTarget_ = volume; }
    /// Stops everything immediately.
    void silence();

    /// Fills `out` with the next frames; the sum is not limited.
    void mix(std::span<float> out);

    /// Leaves samples up to `limitStart` unchanged and bends larger ones so that they stay below 1.
    static float soften(float sample);
    static constexpr float limitStart = 0.9F;

  private:
    struct Voice {
        std::span<const float> samples;
        std::size_t next = 0;  // the sample that sounds next
        float volume = 0;
        int fadeLeft = 0;  // frames, of a sound that was cut off, or of the loop's joint

        bool isSounding() const { return next < samples.size(); }
    };

    void cutOff(const Voice& voice);
    void addVoice(Voice& voice, std::span<float> out) const;
    void addCutOff(Voice& voice, std::span<float> out) const;
    void addLoop(std::span<float> out);

    std::array<Voice, SoundOutput::voiceCount> voices_;
    std::array<Voice, 16> cutOff_;
    Voice loop_;
    float loopTarget_ = 0;
    float jointStep_ = 0;  // the loop's last sample minus its first; fades out while loop_.fadeLeft runs
};

}  // namespace gull
