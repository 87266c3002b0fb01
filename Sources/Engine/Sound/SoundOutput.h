#pragma once

#include <span>

namespace gull {

/// Plays sounds on a pool of voices that each play a sound once, and on one more voice that loops. The audio
/// device is one implementation; tests record what was played.
/// Samples are mono floats at `sampleRate`. They are borrowed and must stay unchanged until silence() was
/// called or the output is destroyed.
class SoundOutput {
  public:
    static constexpr int voiceCount = 12;
    static constexpr double sampleRate = 44100;  ///< of every sound, hertz

    virtual ~SoundOutput() = default;
    /// Makes sure that sound can be played; false if that is not possible now. Cheap if it is already
    /// possible.
    virtual bool start() = 0;
    /// Plays `samples` once on `voice` (0 to voiceCount - 1), cutting off what that voice was playing.
    /// `volume` 1 plays them unchanged.
    virtual void play(int voice, std::span<const float> samples, float volume) = 0;
    /// Loops `samples` on the looping voice, replacing what it looped before.
    virtual void loop(std::span<const float> samples) = 0;
    /// Sets the volume of the looping voice, initially 0. At 0 it is silent but keeps running.
    virtual void setLoopVolume(float volume) = 0;
    /// Stops every voice and releases their samples before it returns.
    virtual void silence() = 0;
};

}  // namespace gull
