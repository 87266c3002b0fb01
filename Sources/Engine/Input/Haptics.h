#pragma once

namespace gull {

enum class HapticPattern { generic = 0, alignment = 1, levelChange = 2 };

/// Performs one short pulse at once. Implementations: a haptic touchpad, a game controller's rumble, nothing.
class HapticPerformer {
  public:
    virtual ~HapticPerformer() = default;
    virtual void perform(HapticPattern pattern) = 0;
    /// True if a pulse would be felt now; devices come and go.
    virtual bool isAvailable() const { return true; }
};

/// Hides and locks the pointer while a finger steers.
class PointerLock {
  public:
    virtual ~PointerLock() = default;
    virtual void lock() = 0;
    virtual void unlock() = 0;
};

}  // namespace gull
