#pragma once

#include "Engine/Sound/AudioSystem.h"
#include "Engine/Sound/SoundOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The speakers: the system's default audio device, so that the system can move the stream between devices.
/// Opened when first needed and reopened when it disappears. Without a device everything is silent, which is
/// reported once.
///
/// Main thread only, and no call waits for the sound system: a separate thread opens, watches and closes the
/// device, so a sound server that hangs blocks only that thread. The device's thread renders; commands cross
/// to it through a lock-free queue.
class AudioDevice final : public SoundOutput {
  public:
    /// The sound system's state, for diagnosis.
    struct Description {
        bool isOpen = false;
        std::string driver;                ///< "pulseaudio", "alsa", "disk"...; empty when there is none
        std::vector<std::string> devices;  ///< the names of the outputs found
        int rate = 0;                      ///< hertz, when open
        int channels = 0;
        int bufferFrames = 0;
        std::string problem;  ///< why it is not open
    };
    /// Seconds.
    struct Timing {
        double look = 0.1;      ///< between checks that an open device still exists
        double retry = 0.5;     ///< between attempts to open one
        double patience = 3;    ///< after which a sound system that does not answer is reported
        double farewell = 0.5;  ///< that the program's end waits for a device to close
    };

    AudioDevice();
    AudioDevice(std::unique_ptr<AudioSystem> system, const Timing& timing);
    /// Falls silent, then closes. A sound system that does not answer is left behind.
    ~AudioDevice() override;
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;

    /// The first call starts opening the device; false after a failed attempt. Further attempts follow
    /// automatically.
    bool start() override;
    void play(int voice, std::span<const float> samples, float volume) override;
    void loop(std::span<const float> samples) override;
    void setLoopVolume(float volume) override;
    /// Fades out within a few milliseconds first.
    void silence() override;

    /// Sends a newly opened device everything that it has to play. Call it once a frame; `now` is the uptime
    /// in seconds.
    void poll(double now);
    /// Waits until the attempt to open is over, at most `seconds`.
    void await(double seconds);
    Description describe() const;

  private:
    struct Shared;
    struct Impl;
    static void keep(const std::shared_ptr<Shared>& shared);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
