#pragma once

#include "Engine/Input/Events.h"

#include <cstdint>
#include <vector>

namespace gull {

/// One event of a touchpad, as the kernel numbers them (linux/input-event-codes.h).
struct PadEvent {
    double time = 0;  ///< seconds, of any clock that does not go backwards
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;
};

/// The types and codes that matter here.
namespace PadCode {
constexpr std::uint16_t typeSync = 0x00;
constexpr std::uint16_t typeKey = 0x01;
constexpr std::uint16_t typeAxis = 0x03;
constexpr std::uint16_t syncReport = 0;
constexpr std::uint16_t syncDropped = 3;
constexpr std::uint16_t buttonTouch = 0x14a;
constexpr std::uint16_t axisX = 0x00;
constexpr std::uint16_t axisY = 0x01;
constexpr std::uint16_t slot = 0x2f;
constexpr std::uint16_t slotX = 0x35;
constexpr std::uint16_t slotY = 0x36;
constexpr std::uint16_t slotTool = 0x37;
constexpr std::uint16_t slotTrackingId = 0x39;
constexpr std::int32_t toolPalm = 2;
}  // namespace PadCode

/// Follows the fingers on one touchpad through the kernel's events. Pure: events in, contacts out; copes with
/// events that make no sense.
class ContactTracker {
  public:
    static constexpr int maxSlots = 64;
    /// A contact without events for this long (seconds) while another has some is set aside, because some
    /// pads fail to end contacts. It returns with its next event.
    static constexpr double silence = 10;

    struct Range {
        std::int32_t low = 0;
        std::int32_t high = 0;
    };

    struct Traits {
        Range x;
        Range y;        ///< low at the far edge, as the kernel counts
        int slots = 0;  ///< 0: the pad reports one finger without slots
        /// The slots hold the corners of a box around the fingers instead of the fingers; only the first is
        /// used.
        bool isSemi = false;
    };

    /// The state of a slot as read from the device; without slots, slot 0 is the one finger.
    struct SlotState {
        std::int32_t trackingId = -1;  ///< -1: no contact
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::int32_t tool = 0;
    };

    explicit ContactTracker(const Traits& traits);

    void take(const PadEvent& event);
    /// Adopts the state read from the device, at the start or after events were lost. Contacts that are still
    /// down keep their ids.
    void resync(const std::vector<SlotState>& slots, int currentSlot, double time);

    /// The fingers that were down at the last report, oldest first.
    const std::vector<Contact>& contacts() const { return contacts_; }

  private:
    struct Slot {
        std::int32_t trackingId = -1;
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::int32_t tool = 0;
        bool hasX = false;
        bool hasY = false;
        std::int64_t id = 0;   // of its contact, counted by us
        double lastHeard = 0;  // seconds
    };

    /// An axis of the pad; its range grows a little if the device exceeds the range it announced.
    class Axis {
      public:
        explicit Axis(Range range);
        void see(std::int32_t value);
        double share(std::int32_t value) const;

      private:
        double low_;
        double high_;
        double lowest_;   // the range grows no further than this
        double highest_;  // nor this
        bool isKnown_;    // the announced range was valid
    };

    bool hasSlots() const { return traits_.slots > 0 && !traits_.isSemi; }
    void takeAxis(const PadEvent& event);
    void begin(Slot& slot, std::int32_t trackingId, double time);
    void endAll();
    void report();

    Traits traits_;
    Axis x_;
    Axis y_;
    std::vector<Slot> slots_;
    std::vector<Contact> contacts_;
    int current_ = 0;
    bool isLosing_ = false;  // events were dropped; ignore everything until the next report
    std::int64_t lastId_ = 0;
};

}  // namespace gull
