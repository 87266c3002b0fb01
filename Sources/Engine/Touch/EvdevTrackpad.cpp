#include "Engine/Touch/EvdevTrackpad.h"

#include "Engine/Touch/ContactTracker.h"
#include "Engine/Touch/PadActuator.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <optional>
#include <utility>

namespace gull {
namespace {

struct Freed {
    void operator()(libevdev* device) const { libevdev_free(device); }
};
using Device = std::unique_ptr<libevdev, Freed>;

/// A file descriptor that is closed on destruction.
class File {
  public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    File(File&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    File& operator=(File&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~File() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    int get() const { return descriptor_; }

  private:
    int descriptor_;
};

ContactTracker::Range range(libevdev* device, unsigned axis) {
    const input_absinfo* info = libevdev_get_abs_info(device, axis);
    return info ? ContactTracker::Range{info->minimum, info->maximum} : ContactTracker::Range{};
}

ContactTracker::Traits traits(libevdev* device) {
    ContactTracker::Traits result;
    result.slots = libevdev_get_num_slots(device);  // -1 without slots
    result.isSemi = libevdev_has_property(device, INPUT_PROP_SEMI_MT) == 1;
    const bool bySlot = result.slots > 0 && !result.isSemi;
    result.x = range(device, bySlot ? ABS_MT_POSITION_X : ABS_X);
    result.y = range(device, bySlot ? ABS_MT_POSITION_Y : ABS_Y);
    return result;
}

/// The clock of the events' timestamps.
double stampNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

struct EvdevTrackpad::Impl {
    Impl(File openedFile, Device openedDevice, bool writable)
        : file(std::move(openedFile)),
          device(std::move(openedDevice)),
          isWritable(writable),
          padTraits(traits(device.get())),
          tracker(padTraits) {
        if (isWritable) actuator.emplace(file.get());
    }

    void takeState();
    /// Keeps reading after lost events until libevdev has the device's state again.
    void skipLost();

    File file;
    Device device;
    bool isWritable;
    ContactTracker::Traits padTraits;
    ContactTracker tracker;
    std::optional<PadActuator> actuator;
    std::vector<Contact> none;
    bool isGone = false;
};

void EvdevTrackpad::Impl::takeState() {
    std::vector<ContactTracker::SlotState> slots;
    libevdev* pad = device.get();
    if (padTraits.slots > 0 && !padTraits.isSemi) {
        const auto value = [&](int slot, unsigned code) {
            return libevdev_has_event_code(pad, EV_ABS, code)
                       ? libevdev_get_slot_value(pad, static_cast<unsigned>(slot), code)
                       : 0;
        };
        for (int slot = 0; slot < padTraits.slots; ++slot)
            slots.push_back({value(slot, ABS_MT_TRACKING_ID), value(slot, ABS_MT_POSITION_X),
                             value(slot, ABS_MT_POSITION_Y), value(slot, ABS_MT_TOOL_TYPE)});
    } else {
        const bool isDown = libevdev_get_event_value(pad, EV_KEY, BTN_TOUCH) != 0;
        slots.push_back({isDown ? 0 : -1, libevdev_get_event_value(pad, EV_ABS, ABS_X),
                         libevdev_get_event_value(pad, EV_ABS, ABS_Y), 0});
    }
    tracker.resync(slots, libevdev_get_current_slot(pad), stampNow());
}

void EvdevTrackpad::Impl::skipLost() {
    input_event event{};
    while (libevdev_next_event(device.get(), LIBEVDEV_READ_FLAG_SYNC, &event) == LIBEVDEV_READ_STATUS_SYNC) {
    }
    takeState();
}

EvdevTrackpad::Opened EvdevTrackpad::open(const std::string& path) {
    File file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.get() < 0) return {nullptr, errno};
    libevdev* raw = nullptr;
    if (const int error = libevdev_new_from_fd(file.get(), &raw); error < 0) return {nullptr, -error};
    Device device(raw);
    bool isWritable = false;
    if (libevdev_has_event_type(raw, EV_FF)) {
        File both(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
        isWritable = both.get() >= 0 && libevdev_change_fd(raw, both.get()) == 0;
        if (isWritable) file = std::move(both);
    }
    libevdev_set_clock_id(raw, CLOCK_MONOTONIC);
    auto impl = std::make_unique<Impl>(std::move(file), std::move(device), isWritable);
    impl->takeState();
    return {std::unique_ptr<EvdevTrackpad>(new EvdevTrackpad(std::move(impl))), 0};
}

EvdevTrackpad::EvdevTrackpad(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
EvdevTrackpad::~EvdevTrackpad() = default;

EvdevTrackpad::News EvdevTrackpad::poll() {
    if (impl_->isGone) return News::gone;
    const std::size_t before = impl_->tracker.contacts().size();
    for (;;) {
        if (impl_->tracker.contacts().size() != before) return News::more;
        input_event event{};
        const int status = libevdev_next_event(impl_->device.get(), LIBEVDEV_READ_FLAG_NORMAL, &event);
        if (status == -EAGAIN) return News::none;
        if (status == -EINTR) continue;
        if (status < 0) {
            impl_->isGone = true;
            return News::gone;
        }
        if (status == LIBEVDEV_READ_STATUS_SYNC) {
            impl_->skipLost();
            continue;
        }
        const double time =
            static_cast<double>(event.input_event_sec) + static_cast<double>(event.input_event_usec) * 1e-6;
        impl_->tracker.take({time, event.type, event.code, event.value});
    }
}

void EvdevTrackpad::resync() {
    if (impl_->isGone) return;
    input_event event{};
    libevdev_next_event(impl_->device.get(), LIBEVDEV_READ_FLAG_FORCE_SYNC, &event);
    impl_->skipLost();
}

const std::vector<Contact>& EvdevTrackpad::contacts() const {
    return impl_->isGone ? impl_->none : impl_->tracker.contacts();
}

std::string EvdevTrackpad::name() const {
    const char* name = libevdev_get_name(impl_->device.get());
    return name ? name : "";
}

std::string EvdevTrackpad::geometry() const {
    const auto& [x, y, slots, isSemi] = impl_->padTraits;
    std::string text = slots <= 0 ? "one finger"
                       : isSemi   ? "one finger (boxes only)"
                                  : fmt::format("{} slots", slots);
    text += fmt::format(", {} x {} units", std::int64_t{x.high} - x.low, std::int64_t{y.high} - y.low);
    const int resolution = libevdev_get_abs_resolution(impl_->device.get(), ABS_X);
    if (resolution > 0) text += fmt::format(", {} per mm", resolution);
    return text;
}

bool EvdevTrackpad::mayNotPulse() const {
    return !impl_->isWritable && libevdev_has_event_type(impl_->device.get(), EV_FF);
}

bool EvdevTrackpad::pulses() const {
    return impl_->actuator && impl_->actuator->isPresent();
}

void EvdevTrackpad::perform(HapticPattern pattern) {
    if (impl_->actuator) impl_->actuator->perform(pattern);
}

}  // namespace gull
