#pragma once

#include "Engine/Sound/SoundOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The speakers: the system's default audio device, so that the system can move the stream from one to
/// another. Opened when first needed, reopened when it is taken away; without any, everything is silent,
/// which is said once on standard error.
///
/// Main thread only. The device's own thread renders; commands cross to it through a lock-free queue.
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

    AudioDevice();
    /// Falls silent, then closes.
    ~AudioDevice() override;
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;

    bool start() override;
    void play(int voice, std::span<const float> samples, float volume) override;
    void loop(std::span<const float> samples) override;
    void setLoopVolume(float volume) override;
    /// Fades out within a few milliseconds first.
    void silence() override;

    /// Opens again a device that was lost or could not be opened. Call it once a frame; `now` is the uptime
    /// in seconds, by which attempts keep their distance.
    void poll(double now);
    Description describe() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
