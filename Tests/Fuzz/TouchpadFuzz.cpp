#include "Engine/Log/Require.h"
#include "Engine/Touch/ContactTracker.h"
#include "Fuzz/FuzzInput.h"

#include <set>

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {};

namespace {

PadEvent event(FuzzInput& input, double time) {
    static constexpr std::uint16_t codes[] = {PadCode::slot,          PadCode::slotX, PadCode::slotY,
                                              PadCode::slotTool,      PadCode::axisX, PadCode::axisY,
                                              PadCode::slotTrackingId};
    PadEvent result{time, PadCode::typeAxis, codes[input.below(7)], input.take<std::int16_t>()};
    switch (input.below(8)) {
        case 0:
            return {time, PadCode::typeSync, PadCode::syncReport, 0};
        case 1:
            return {time, PadCode::typeSync, input.take<std::uint16_t>(), 0};
        case 2:
            return {time, PadCode::typeKey, PadCode::buttonTouch, input.below(2)};
        case 3:
            return {time, input.take<std::uint16_t>(), input.take<std::uint16_t>(),
                    input.take<std::int32_t>()};
        case 4:
            result.value = input.below(4) - 1;
            break;
        default:
            break;
    }
    return result;
}

void check(const std::vector<Contact>& contacts) {
    std::set<std::int64_t> ids;
    for (const Contact& contact : contacts) {
        require(contact.x >= 0 && contact.x <= 1 && contact.y >= 0 && contact.y <= 1,
                "a contact beside the pad: {}, {}", contact.x, contact.y);
        require(ids.insert(contact.id).second, "two contacts of one id, {}", contact.id);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    ContactTracker::Traits traits;
    const bool isOdd = input.below(4) == 0;
    traits.x = isOdd ? ContactTracker::Range{input.take<std::int32_t>(), input.take<std::int32_t>()}
                     : ContactTracker::Range{0, 3000};
    traits.y = isOdd ? ContactTracker::Range{input.take<std::int32_t>(), input.take<std::int32_t>()}
                     : ContactTracker::Range{-10, 2000};
    traits.slots = isOdd ? input.take<std::int16_t>() : input.below(6);
    traits.isSemi = input.below(5) == 0;
    ContactTracker tracker(traits);
    double time = 0;
    while (!input.isEmpty()) {
        time += input.below(40) == 0 ? 11 : 0.008;
        if (input.below(64) == 0) {
            std::vector<ContactTracker::SlotState> slots(static_cast<std::size_t>(input.below(8)));
            for (auto& slot : slots)
                slot = {input.below(5) - 1, input.take<std::int16_t>(), input.take<std::int16_t>(),
                        input.below(4)};
            tracker.resync(slots, input.below(16) - 4, time);
        }
        tracker.take(event(input, time));
        check(tracker.contacts());
    }
    return 0;
}
