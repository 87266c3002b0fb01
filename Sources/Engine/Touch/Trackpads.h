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
        std::string problem;       ///< why it is not read, or only in part
        bool isForbidden = false;  ///< lacks a permission that the device manager's rules would give
    };

    Trackpads();
    ~Trackpads() override;
    Trackpads(const Trackpads&) = delete;
    Trackpads& operator=(const Trackpads&) = delete;

    /// Handles events up to the next finger that comes down or goes up; `now` is the uptime in seconds. True
    /// if there may be more: each frame, call it until it returns false.
    bool poll(double now);
    /// The fingers that are down, pad by pad, oldest first.
    const std::vector<Contact>& contacts() const;
    /// Whether the pad that this contact is or was on is still connected.
    bool isRead(std::int64_t contact) const;
    /// How many pads are read now.
    std::size_t readCount() const;
    /// The pads, in the order found.
    std::vector<Pad> pads() const;
    /// True if there is a pad that only the device manager's rules would let us read, and no other pad is
    /// read: the moment to tell the player.
    bool missesPermission() const;

    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
