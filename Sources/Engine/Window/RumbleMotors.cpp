#include "Engine/Window/RumbleMotors.h"

#include <SDL.h>

#include <cmath>

namespace gull {
namespace {

Uint16 magnitude(double share) {
    return static_cast<Uint16>(std::lround(share * 65535));
}

Uint32 milliseconds(const RumblePulses::Pulse& pulse) {
    return static_cast<Uint32>(std::lround(pulse.length * 1000));
}

/// Runs on one of SDL's threads, perhaps after the controller is gone.
Uint32 SDLCALL stop(Uint32, void* id) {
    SDL_LockJoysticks();
    if (SDL_GameController* controller = SDL_GameControllerFromInstanceID(
            static_cast<SDL_JoystickID>(reinterpret_cast<std::intptr_t>(id))))
        SDL_GameControllerRumble(controller, 0, 0, 0);
    SDL_UnlockJoysticks();
    return 0;
}

}  // namespace

void RumbleMotors::Closed::operator()(SDL_Haptic* device) const {
    SDL_HapticClose(device);
}

RumbleMotors::RumbleMotors(SDL_GameController* controller) : controller_(controller) {
    SDL_Joystick* joystick = SDL_GameControllerGetJoystick(controller);
    if (SDL_WasInit(SDL_INIT_HAPTIC) != 0 && SDL_JoystickIsHaptic(joystick) == SDL_TRUE)
        device_.reset(SDL_HapticOpenFromJoystick(joystick));
    if (device_ && !upload()) device_.reset();
}

RumbleMotors::~RumbleMotors() {
    if (timer_ != 0) SDL_RemoveTimer(timer_);
}

bool RumbleMotors::upload() {
    if ((SDL_HapticQuery(device_.get()) & SDL_HAPTIC_LEFTRIGHT) == 0) return false;
    for (std::size_t pattern = 0; pattern < effects_.size(); ++pattern) {
        const RumblePulses::Pulse pulse = RumblePulses::pulse(static_cast<HapticPattern>(pattern));
        SDL_HapticEffect effect{};
        effect.leftright.type = SDL_HAPTIC_LEFTRIGHT;
        effect.leftright.length = milliseconds(pulse);
        effect.leftright.large_magnitude = magnitude(pulse.low);
        effect.leftright.small_magnitude = magnitude(pulse.high);
        effects_[pattern] = SDL_HapticNewEffect(device_.get(), &effect);
        if (effects_[pattern] < 0) return false;
    }
    return true;
}

void RumbleMotors::play(HapticPattern pattern) {
    if (device_) {
        if (running_ >= 0) SDL_HapticStopEffect(device_.get(), running_);
        running_ = effects_[static_cast<std::size_t>(pattern)];
        SDL_HapticRunEffect(device_.get(), running_, 1);
        return;
    }
    if (timer_ != 0) SDL_RemoveTimer(timer_);
    const RumblePulses::Pulse pulse = RumblePulses::pulse(pattern);
    SDL_GameControllerRumble(controller_, magnitude(pulse.low), magnitude(pulse.high), milliseconds(pulse));
    const SDL_JoystickID id = SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(controller_));
    timer_ = SDL_AddTimer(milliseconds(pulse), stop, reinterpret_cast<void*>(std::intptr_t{id}));
}

}  // namespace gull
