#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// One touchpad, read from its event device. It is also opened for writing if permitted, which its actuator
/// needs.
class EvdevTrackpad {
  public:
    /// The result of opening a device.
    struct Opened {
        std::unique_ptr<EvdevTrackpad> pad;  ///< null on failure
        int error = 0;                       ///< errno on failure
    };
    /// `path` as "/dev/input/event7".
    static Opened open(const std::string& path);

    ~EvdevTrackpad();
    EvdevTrackpad(const EvdevTrackpad&) = delete;
    EvdevTrackpad& operator=(const EvdevTrackpad&) = delete;

    /// Reads pending events without waiting. False if the device is gone; it then has no contacts.
    bool poll();
    /// Reads the state from the device, because events may have been lost while the machine slept.
    void resync();
    const std::vector<Contact>& contacts() const;

    std::string name() const;
    /// "5 slots, 1224 x 804 units, 12 per mm".
    std::string geometry() const;
    bool isWritable() const;
    bool pulses() const;
    void perform(HapticPattern pattern);

  private:
    struct Impl;
    explicit EvdevTrackpad(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
