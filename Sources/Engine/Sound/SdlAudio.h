#pragma once

#include "Engine/Sound/AudioSystem.h"

#include <cstdint>

namespace gull {

/// SDL's audio. SDL's events must be initialised for it to notice devices being plugged in.
class SdlAudio final : public AudioSystem {
  public:
    SdlAudio() = default;
    ~SdlAudio() override;
    SdlAudio(const SdlAudio&) = delete;
    SdlAudio& operator=(const SdlAudio&) = delete;

    bool open(const std::function<Fill(const Format&)>& begin, std::string& problem) override;
    void close() override;
    bool isLost() override;
    std::string driver() override;
    std::vector<std::string> devices() override;

  private:
    static void fill(void* self, std::uint8_t* bytes, int length);

    bool isUp_ = false;
    std::uint32_t id_ = 0;  ///< 0: not open
    Fill fill_;
};

}  // namespace gull
