#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"

#include <cstddef>
#include <cstdint>
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
        std::string path;          ///< "/dev/input/event7"
        bool isRead = false;       ///< its fingers are followed
        bool pulses = false;       ///< it has an actuator that we may use
        std::string geometry;      ///< "5 slots, 1224 x 804 units, 12 per mm"
        std::string problem;       ///< why it is not read, or not wholly
        bool isForbidden = false;  ///< so for want of a permission that the device manager's rules would give
    };

    Trackpads();
    ~Trackpads() override;
    Trackpads(const Trackpads&) = delete;
    Trackpads& operator=(const Trackpads&) = delete;

    /// Takes in what has happened since the last call, up to the next finger that came down or went up;
    /// `now` is the uptime in seconds. True when there may be more: call it once a frame until it says false.
    bool poll(double now);
    /// The fingers that are down, pad by pad, oldest first.
    const std::vector<Contact>& contacts() const;
    /// Whether the pad that this contact is on, or was on, is still there.
    bool isRead(std::int64_t contact) const;
    /// How many pads are read now.
    std::size_t readCount() const;
    /// What was found, in the order found.
    std::vector<Pad> pads() const;
    /// A pad is there that may not be read, but could be with the device manager's rules, and none is read:
    /// the moment to tell the player.
    bool missesPermission() const;

    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
