#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// One touchpad, read from its event device. If it has an actuator and permissions allow, it is opened for
/// writing, too.
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

    enum class News { none, more, gone };

    /// Reads events without waiting, up to the next finger that comes down or goes up; `more` is then set.
    /// `gone`: the device is gone and has no contacts.
    News poll();
    /// Reads the current contacts from the device: events may have been lost while the machine slept.
    void resync();
    const std::vector<Contact>& contacts() const;

    std::string name() const;
    /// "5 slots, 1224 x 804 units, 12 per mm".
    std::string geometry() const;
    /// It has an actuator that we may not use.
    bool mayNotPulse() const;
    bool pulses() const;
    void perform(HapticPattern pattern);

  private:
    struct Impl;
    explicit EvdevTrackpad(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
