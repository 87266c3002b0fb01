#pragma once

#include <span>

namespace gull {

/// A place to be heard: a pool of voices that each play a sound once, and one more that repeats its sound for
/// ever. The audio device is one, a test's list of what was played another.
///
/// Samples are mono floats at `sampleRate`. They are borrowed: they must stay as they are until silence()
/// was called or the output is gone.
class SoundOutput {
  public:
    static constexpr int voiceCount = 12;
    static constexpr double sampleRate = 44100;  ///< of every sound handed over, hertz

    virtual ~SoundOutput() = default;
    /// Makes sure that sound can come out; false when there is no way now. Cheap when it already can.
    virtual bool start() = 0;
    /// Plays `samples` once on `voice` (0 to voiceCount - 1) from their beginning, cutting off what that
    /// voice was playing. `volume` 1 plays them as they are.
    virtual void play(int voice, std::span<const float> samples, float volume) = 0;
    /// Repeats `samples` for ever on the voice of its own, in place of what it repeated before.
    virtual void loop(std::span<const float> samples) = 0;
    /// The volume of the repeating voice: 0 at first, silent but running on.
    virtual void setLoopVolume(float volume) = 0;
    /// Stops every voice and lets go of their samples before it returns.
    virtual void silence() = 0;
};

}  // namespace gull
