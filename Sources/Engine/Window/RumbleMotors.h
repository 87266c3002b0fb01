#pragma once

#include "Engine/Window/RumblePulses.h"

#include <array>
#include <cstdint>
#include <memory>

struct _SDL_GameController;
struct _SDL_Haptic;

namespace gull {

/// The two rumble motors of one controller. Every pulse ends by itself, whatever the program does meanwhile:
/// as an effect of the kernel's with a length of its own where the kernel drives the controller, else by a
/// timer beside the frames.
class RumbleMotors {
  public:
    /// `controller` is open and stays so for as long as this object is there.
    explicit RumbleMotors(_SDL_GameController* controller);
    ~RumbleMotors();
    RumbleMotors(const RumbleMotors&) = delete;
    RumbleMotors& operator=(const RumbleMotors&) = delete;

    /// In place of a pulse that is still running.
    void play(HapticPattern pattern);

  private:
    bool upload();

    struct Closed {
        void operator()(_SDL_Haptic* device) const;
    };
    _SDL_GameController* controller_;
    std::unique_ptr<_SDL_Haptic, Closed> device_;  ///< null: the controller is not the kernel's
    std::array<int, 3> effects_{-1, -1, -1};       ///< by pattern
    int running_ = -1;
    int timer_ = 0;
};

}  // namespace gull
