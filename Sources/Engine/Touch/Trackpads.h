#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <memory>
#include <string>
#include <vector>

namespace gull {

/// All touchpads of the machine, which may come and go: the fingers on them and the pulses of those with an
/// actuator. The pads are not grabbed: the desktop keeps moving its pointer and generating clicks.
/// Main thread only; nothing blocks. On platforms without such devices the list stays empty.
class Trackpads final : public HapticPerformer {
  public:
    struct Pad {
        std::string name;
        std::string path;      ///< "/dev/input/event7"
        bool isRead = false;   ///< its fingers are followed
        bool pulses = false;   ///< it has an actuator that we may use
        std::string geometry;  ///< "5 slots, 1224 x 804 units, 12 per mm"
        std::string problem;   ///< why it is not read, or only in part
        std::string command;   ///< shell command that would allow it; empty if nothing would
    };

    Trackpads();
    ~Trackpads() override;
    Trackpads(const Trackpads&) = delete;
    Trackpads& operator=(const Trackpads&) = delete;

    /// Reads what happened since the last call; `now` is the uptime in seconds. Call once per frame.
    void poll(double now);
    /// The fingers that are down, pad by pad, oldest first.
    const std::vector<Contact>& contacts() const;
    /// The pads, in the order in which they were found.
    std::vector<Pad> pads() const;
    /// If pads were found but none may be read: a short command that permits it until the next restart, to
    /// show to the player. Empty otherwise.
    std::string missingPermission() const;
    /// The permanent equivalent for every pad: a rule for the device manager.
    static std::string lastingPermission();

    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
