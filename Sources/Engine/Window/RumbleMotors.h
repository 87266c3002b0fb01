#pragma once

#include "Engine/Window/RumblePulses.h"

#include <array>
#include <cstdint>
#include <memory>

struct _SDL_GameController;
struct _SDL_Haptic;

namespace gull {

/// The two rumble motors of one controller. Every pulse ends by itself, whatever the program is doing: if the
/// kernel drives the controller, as a kernel effect with its own length; otherwise by a timer independent of
/// the frames.
class RumbleMotors {
  public:
    /// `controller` is open and stays open for the lifetime of this object.
    explicit RumbleMotors(_SDL_GameController* controller);
    ~RumbleMotors();
    RumbleMotors(const RumbleMotors&) = delete;
    RumbleMotors& operator=(const RumbleMotors&) = delete;

    /// Replaces a pulse that is still running.
    void play(HapticPattern pattern);

  private:
    bool upload();

    struct Closed {
        void operator()(_SDL_Haptic* device) const;
    };
    _SDL_GameController* controller_;
    std::unique_ptr<_SDL_Haptic, Closed> device_;  ///< null: the kernel does not drive the controller
    std::array<int, 3> effects_{-1, -1, -1};       ///< by pattern
    int running_ = -1;
    int timer_ = 0;
};

}  // namespace gull
