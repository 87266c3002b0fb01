#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// One touchpad, read from its event device. One with an actuator is opened for writing too where that is
/// allowed; the others are only read.
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

    /// Takes in what has happened, never waiting, up to the next finger that came down or went up: `more`
    /// then. `gone`: so is the device, and it has no contacts.
    News poll();
    /// Asks the device itself what is on it: events may have been lost while the machine slept.
    void resync();
    const std::vector<Contact>& contacts() const;

    std::string name() const;
    /// "5 slots, 1224 x 804 units, 12 per mm".
    std::string geometry() const;
    /// It has an actuator that we are not permitted to use.
    bool mayNotPulse() const;
    bool pulses() const;
    void perform(HapticPattern pattern);

  private:
    struct Impl;
    explicit EvdevTrackpad(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
