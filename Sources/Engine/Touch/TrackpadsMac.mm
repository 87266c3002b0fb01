// Not built or tried on macOS yet.

#include "Engine/Touch/Trackpads.h"

#import <AppKit/AppKit.h>

namespace gull {

/// The window system reports the fingers here, through the window; what remains is the actuator.
struct Trackpads::Impl {
    std::vector<Contact> none;
};

Trackpads::Trackpads() : impl_(std::make_unique<Impl>()) {}
Trackpads::~Trackpads() = default;

bool Trackpads::poll(double) {
    return false;
}
bool Trackpads::isRead(std::int64_t) const {
    return true;
}
std::size_t Trackpads::readCount() const {
    return 1;
}
const std::vector<Contact>& Trackpads::contacts() const {
    return impl_->none;
}
bool Trackpads::missesPermission() const {
    return false;
}

std::vector<Trackpads::Pad> Trackpads::pads() const {
    Pad pad;
    pad.name = "the trackpad, through the window";
    pad.isRead = true;
    pad.pulses = true;
    return {pad};
}

void Trackpads::perform(HapticPattern pattern) {
    NSHapticFeedbackPattern named = NSHapticFeedbackPatternGeneric;
    if (pattern == HapticPattern::alignment) named = NSHapticFeedbackPatternAlignment;
    if (pattern == HapticPattern::levelChange) named = NSHapticFeedbackPatternLevelChange;
    [[NSHapticFeedbackManager defaultPerformer] performFeedbackPattern:named
                                                       performanceTime:NSHapticFeedbackPerformanceTimeNow];
}

bool Trackpads::isAvailable() const {
    return true;
}

}  // namespace gull
