#include "Engine/Touch/ContactTracker.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace gull {
namespace {

/// By how much of its range an axis may grow on either side; beyond that a value is noise.
constexpr double mostGrowth = 0.25;

}  // namespace

ContactTracker::Axis::Axis(Range range)
    : low_(range.low),
      high_(range.high),
      lowest_(range.low),
      highest_(range.high),
      isKnown_(range.high > range.low) {
    if (!isKnown_) return;
    lowest_ = low_ - mostGrowth * (high_ - low_);
    highest_ = high_ + mostGrowth * (high_ - low_);
}

void ContactTracker::Axis::see(std::int32_t value) {
    if (!isKnown_) {
        // The pad does not announce its size: assume the area touched so far.
        low_ = std::min<double>(low_, value);
        high_ = std::max<double>(high_, value);
        return;
    }
    if (value < low_ && value >= lowest_) low_ = value;
    if (value > high_ && value <= highest_) high_ = value;
}

double ContactTracker::Axis::share(std::int32_t value) const {
    if (high_ <= low_) return 0.5;
    return std::clamp((value - low_) / (high_ - low_), 0.0, 1.0);
}

ContactTracker::ContactTracker(const Traits& traits) : traits_(traits), x_(traits.x), y_(traits.y) {
    const int slots = hasSlots() ? std::min(traits.slots, maxSlots) : 1;
    slots_.resize(static_cast<std::size_t>(slots));
}

void ContactTracker::take(const PadEvent& event) {
    if (event.type == PadCode::typeSync) {
        if (event.code == PadCode::syncDropped) {
            isLosing_ = true;
        } else if (event.code == PadCode::syncReport) {
            // The lost events may have ended any contact.
            if (std::exchange(isLosing_, false)) endAll();
            report();
        }
        return;
    }
    if (isLosing_) return;
    if (event.type == PadCode::typeAxis) takeAxis(event);
    if (event.type == PadCode::typeKey && event.code == PadCode::buttonTouch) {
        if (event.value == 0)
            endAll();
        else if (!hasSlots() && event.value == 1)
            begin(slots_[0], 0, event.time);
    }
}

void ContactTracker::takeAxis(const PadEvent& event) {
    if (!hasSlots()) {
        Slot& only = slots_[0];
        if (event.code == PadCode::axisX) {
            only.x = event.value;
            only.hasX = true;
        } else if (event.code == PadCode::axisY) {
            only.y = event.value;
            only.hasY = true;
        }
        only.lastHeard = event.time;
        return;
    }
    if (event.code == PadCode::slot) current_ = event.value;
    if (event.code == PadCode::slot || current_ < 0 || current_ >= static_cast<int>(slots_.size())) return;
    Slot& slot = slots_[static_cast<std::size_t>(current_)];
    slot.lastHeard = event.time;
    switch (event.code) {
        case PadCode::slotTrackingId:
            if (event.value < 0)
                slot.trackingId = -1;
            else if (event.value != slot.trackingId)
                begin(slot, event.value, event.time);
            break;
        case PadCode::slotX:
            slot.x = event.value;
            slot.hasX = true;
            break;
        case PadCode::slotY:
            slot.y = event.value;
            slot.hasY = true;
            break;
        case PadCode::slotTool:
            slot.tool = event.value;
            break;
        default:
            break;
    }
}

void ContactTracker::begin(Slot& slot, std::int32_t trackingId, double time) {
    slot.trackingId = trackingId;
    slot.id = ++lastId_;
    slot.lastHeard = time;
}

void ContactTracker::endAll() {
    for (Slot& slot : slots_) slot.trackingId = -1;
}

void ContactTracker::resync(const std::vector<SlotState>& slots, int currentSlot, double time) {
    isLosing_ = false;
    current_ = currentSlot;
    for (std::size_t index = 0; index < slots_.size(); ++index) {
        Slot& slot = slots_[index];
        const SlotState state = index < slots.size() ? slots[index] : SlotState{};
        slot.x = state.x;
        slot.y = state.y;
        slot.tool = state.tool;
        slot.hasX = slot.hasY = true;
        if (state.trackingId < 0)
            slot.trackingId = -1;
        else if (state.trackingId != slot.trackingId)
            begin(slot, state.trackingId, time);
        slot.lastHeard = time;
    }
    report();
}

void ContactTracker::report() {
    double newest = -std::numeric_limits<double>::infinity();
    for (const Slot& slot : slots_) newest = std::max(newest, slot.lastHeard);
    contacts_.clear();
    for (const Slot& slot : slots_) {
        if (slot.trackingId < 0 || !slot.hasX || !slot.hasY || slot.tool == PadCode::toolPalm) continue;
        if (newest - slot.lastHeard > silence) continue;
        x_.see(slot.x);
        y_.see(slot.y);
        contacts_.push_back({slot.id, x_.share(slot.x), 1 - y_.share(slot.y)});
    }
    std::sort(contacts_.begin(), contacts_.end(),
              [](const Contact& a, const Contact& b) { return a.id < b.id; });
}

}  // namespace gull
