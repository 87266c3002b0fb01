#pragma once

#include "Engine/Sound/Mixer.h"
#include "Engine/Sound/Resampler.h"
#include "Engine/Sound/SpscQueue.h"

#include <atomic>
#include <span>
#include <vector>

namespace gull {

/// The stream that a device plays: the mixer, controlled by commands, at the device's rate and number of
/// channels. Two threads: one sends commands, one renders. Neither allocates or locks.
class SoundStream {
  public:
    static constexpr int fadeOutFrames = 441;  ///< at SoundOutput::sampleRate: 10 ms

    struct Command {
        enum class Kind { play, loop, loopVolume, fadeOut };
        Kind kind = Kind::play;
        int voice = 0;
        float volume = 0;
        std::span<const float> samples;
    };

    /// Hertz and number of interleaved channels, both above 0.
    SoundStream(int rate, int channels);

    /// Called by the sending thread; false if the renderer is so far behind that the command is dropped.
    bool send(const Command& command) { return commands_.push(command); }
    /// Fills `out` (whole frames, interleaved) with the next frames. Front left and right carry the sound;
    /// further channels stay silent.
    void render(std::span<float> out);
    /// Drops all commands and sounds immediately. Only while nobody renders.
    void silence();
    /// True once a fadeOut command has finished.
    bool hasFadedOut() const { return hasFadedOut_.load(std::memory_order_acquire); }

  private:
    void obey();
    void renderBlock(std::span<float> out);
    void applyFadeOut(std::span<float> mono);

    int channels_;
    Mixer mixer_;
    Resampler resampler_;
    SpscQueue<Command, 256> commands_;
    std::vector<float> mixed_;      // a block at the mixer's rate
    std::vector<float> resampled_;  // the same at the device's
    int fadeLeft_ = -1;             // frames of the fade-out; -1: not requested
    std::atomic<bool> hasFadedOut_ = false;
};

}  // namespace gull
