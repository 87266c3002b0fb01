#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace gull {

/// The machine's sound system as AudioDevice uses it: from one dedicated thread, because a sound server that
/// hangs may block any of these calls for ever.
class AudioSystem {
  public:
    struct Format {
        int rate = 0;  ///< hertz
        int channels = 0;
        int bufferFrames = 0;
    };
    /// Fills a buffer with interleaved samples, whole frames; called by the device's own thread.
    using Fill = std::function<void(std::span<float>)>;

    virtual ~AudioSystem() = default;
    /// Opens the default device, which the system may move. `begin` is told the format and returns the stream
    /// to play until close() returns. False, with the reason in `problem`, if it is not possible now.
    virtual bool open(const std::function<Fill(const Format&)>& begin, std::string& problem) = 0;
    virtual void close() = 0;
    /// The open device was taken away.
    virtual bool isLost() = 0;
    /// "pulseaudio", "alsa", "disk"...; empty when there is none.
    virtual std::string driver() = 0;
    /// The names of the outputs found.
    virtual std::vector<std::string> devices() = 0;
};

}  // namespace gull
