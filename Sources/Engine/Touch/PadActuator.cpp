#include "Engine/Touch/PadActuator.h"

#if defined(__linux__)
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

#include <cstdint>
#include <cstring>

namespace gull {

#if defined(__linux__)
namespace {

// The kernel has these since 6.18; the headers that we build with may be older.
constexpr std::uint16_t effectHaptic = 0x4f;
constexpr std::uint16_t usageClick = 0x1003;

struct HapticEffect {
    std::uint16_t usage;
    std::uint16_t vendorId;
    std::uint8_t vendorWaveformPage;
    std::uint16_t intensity;        // 0 to 100
    std::uint16_t repeatCount;      // after the first
    std::uint16_t retriggerPeriod;  // milliseconds
};
static_assert(sizeof(HapticEffect) <= sizeof(ff_effect::u));

/// In the order of HapticPattern: a tick over junk, one over treasure, something found.
constexpr std::array<std::uint16_t, 3> intensities = {55, 40, 100};

bool hasBit(const std::array<unsigned char, FF_CNT / 8>& bits, unsigned bit) {
    return ((bits[bit / 8] >> (bit % 8)) & 1U) != 0;
}

}  // namespace

PadActuator::PadActuator(int device) : device_(device) {
    std::array<unsigned char, FF_CNT / 8> bits{};
    if (ioctl(device, EVIOCGBIT(EV_FF, bits.size()), bits.data()) < 0 || !hasBit(bits, effectHaptic)) return;
    for (std::size_t pattern = 0; pattern < effects_.size(); ++pattern) {
        ff_effect effect{};
        effect.type = effectHaptic;
        effect.id = -1;
        const HapticEffect click{usageClick, 0, 0, intensities[pattern], 0, 0};
        std::memcpy(&effect.u, &click, sizeof click);
        if (ioctl(device, EVIOCSFF, &effect) < 0) return;
        effects_[pattern] = effect.id;
    }
    isPresent_ = true;
}

PadActuator::~PadActuator() {
    for (const int effect : effects_)
        if (effect >= 0) ioctl(device_, EVIOCRMFF, effect);
}

void PadActuator::perform(HapticPattern pattern) {
    if (!isPresent_) return;
    input_event play{};
    play.type = EV_FF;
    play.code = static_cast<std::uint16_t>(effects_[static_cast<std::size_t>(pattern)]);
    play.value = 1;
    // If the pad was just unplugged, the next read detects it.
    [[maybe_unused]] const auto written = write(device_, &play, sizeof play);
}
#else
PadActuator::PadActuator(int device) : device_(device) {}
PadActuator::~PadActuator() = default;
void PadActuator::perform(HapticPattern) {}
#endif

}  // namespace gull
