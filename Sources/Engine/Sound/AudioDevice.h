#pragma once

#include "Engine/Sound/AudioSystem.h"
#include "Engine/Sound/SoundOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The speakers: the system's default audio device, so that the system can move the stream from one to
/// another. Opened when first needed, reopened when it is taken away; without any, everything is silent,
/// which is said once.
///
/// Main thread only, and no call waits for the sound system: a thread of its own opens the device, watches it
/// and closes it, and a sound server that hangs holds only that one. The device's thread renders; commands
/// cross to it through a lock-free queue.
class AudioDevice final : public SoundOutput {
  public:
    /// What there is, for diagnosis.
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
        double look = 0.1;      ///< between looks whether an open device is still there
        double retry = 0.5;     ///< between attempts to open one
        double patience = 3;    ///< after which a sound system that does not answer is told
        double farewell = 0.5;  ///< that the end waits for a device to close
    };

    AudioDevice();
    AudioDevice(std::unique_ptr<AudioSystem> system, const Timing& timing);
    /// Falls silent, then closes. A sound system that does not answer is left behind.
    ~AudioDevice() override;
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;

    /// The first call has the device opened; false after an attempt that failed. Attempts go on by
    /// themselves.
    bool start() override;
    void play(int voice, std::span<const float> samples, float volume) override;
    void loop(std::span<const float> samples) override;
    void setLoopVolume(float volume) override;
    /// Fades out within a few milliseconds first.
    void silence() override;

    /// Takes to a device that has been opened since the last call what it has to play. Call it once a frame;
    /// `now` is the uptime in seconds.
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
