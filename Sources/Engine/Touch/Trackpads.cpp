#include "Engine/Touch/Trackpads.h"

#include "Engine/Touch/EvdevTrackpad.h"

#include <fmt/format.h>
#include <libudev.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>

namespace gull {
namespace {

constexpr double retryInterval = 2;   // seconds between attempts on a pad that may not be read
constexpr double sleptAtLeast = 0.5;  // seconds of sleep after which the pads' state is read again

/// Owning handles of libudev, each with its release function.
template <auto Release>
struct Released {
    template <typename T>
    void operator()(T* handle) const {
        Release(handle);
    }
};
using Udev = std::unique_ptr<udev, Released<udev_unref>>;
using Monitor = std::unique_ptr<udev_monitor, Released<udev_monitor_unref>>;
using Enumerate = std::unique_ptr<udev_enumerate, Released<udev_enumerate_unref>>;
using UdevDevice = std::unique_ptr<udev_device, Released<udev_device_unref>>;

std::string text(const char* value) {
    return value ? value : "";
}

/// The path of a touchpad's event device; empty for anything else.
std::string touchpadPath(udev_device* device) {
    if (text(udev_device_get_property_value(device, "ID_INPUT_TOUCHPAD")) != "1") return {};
    if (!text(udev_device_get_sysname(device)).starts_with("event")) return {};
    return text(udev_device_get_devnode(device));
}

std::string kernelName(udev_device* device) {
    udev_device* parent = udev_device_get_parent_with_subsystem_devtype(device, "input", nullptr);
    return parent ? text(udev_device_get_sysattr_value(parent, "name")) : std::string();
}

/// How long the machine has slept since it was started, seconds.
double sleptSoFar() {
#if defined(__linux__)
    timespec boot{};
    timespec awake{};
    clock_gettime(CLOCK_BOOTTIME, &boot);
    clock_gettime(CLOCK_MONOTONIC, &awake);
    return static_cast<double>(boot.tv_sec - awake.tv_sec) +
           static_cast<double>(boot.tv_nsec - awake.tv_nsec) * 1e-9;
#else
    return 0;
#endif
}

bool isReadable(int descriptor) {
    pollfd wanted{descriptor, POLLIN, 0};
    return ::poll(&wanted, 1, 0) > 0;
}

struct Entry {
    std::string path;
    std::string name;
    std::unique_ptr<EvdevTrackpad> pad;  // null while it cannot be read
    int error = 0;                       // why not
    bool isKeyboardToo = false;          // keyboards are private: what is typed concerns nobody
    std::int64_t number = 0;             // number of this opening, to keep contact ids apart
};

}  // namespace

struct Trackpads::Impl {
    Udev udev{udev_new()};
    Monitor monitor;
    std::vector<Entry> entries;
    std::vector<Contact> contacts;
    std::int64_t openings = 0;
    double nextRetry = 0;
    double slept = sleptSoFar();

    void watch();
    void findAll();
    void heed(udev_device* device, const std::string& action);
    void add(udev_device* device, const std::string& path);
    void open(Entry& entry);
    void takeNews();
};

void Trackpads::Impl::watch() {
    monitor.reset(udev_monitor_new_from_netlink(udev.get(), "udev"));
    if (!monitor) return;
    udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "input", nullptr);
    if (udev_monitor_enable_receiving(monitor.get()) < 0) monitor.reset();
}

void Trackpads::Impl::findAll() {
    const Enumerate search(udev_enumerate_new(udev.get()));
    if (!search) return;
    udev_enumerate_add_match_subsystem(search.get(), "input");
    udev_enumerate_add_match_property(search.get(), "ID_INPUT_TOUCHPAD", "1");
    udev_enumerate_scan_devices(search.get());
    for (auto* item = udev_enumerate_get_list_entry(search.get()); item;
         item = udev_list_entry_get_next(item)) {
        const UdevDevice device(udev_device_new_from_syspath(udev.get(), udev_list_entry_get_name(item)));
        if (device) heed(device.get(), "add");
    }
}

void Trackpads::Impl::heed(udev_device* device, const std::string& action) {
    const std::string path = touchpadPath(device);
    if (path.empty()) return;
    const auto known =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.path == path; });
    if (action == "remove") {
        if (known != entries.end()) entries.erase(known);
    } else if (known == entries.end()) {
        add(device, path);
    } else if (!known->pad) {
        open(*known);  // its permissions may have changed
    }
}

void Trackpads::Impl::add(udev_device* device, const std::string& path) {
    Entry entry;
    entry.path = path;
    entry.name = kernelName(device);
    entry.isKeyboardToo = text(udev_device_get_property_value(device, "ID_INPUT_KEYBOARD")) == "1";
    open(entry);
    entries.push_back(std::move(entry));
}

void Trackpads::Impl::open(Entry& entry) {
    auto [pad, error] = EvdevTrackpad::open(entry.path);
    entry.pad = std::move(pad);
    entry.error = error;
    if (!entry.pad) return;
    entry.number = ++openings;
    if (!entry.pad->name().empty()) entry.name = entry.pad->name();
}

void Trackpads::Impl::takeNews() {
    if (!monitor) return;
    const int descriptor = udev_monitor_get_fd(monitor.get());
    while (isReadable(descriptor)) {
        const UdevDevice device(udev_monitor_receive_device(monitor.get()));
        if (!device) return;
        heed(device.get(), text(udev_device_get_action(device.get())));
    }
}

Trackpads::Trackpads() : impl_(std::make_unique<Impl>()) {
    if (!impl_->udev) return;
    impl_->watch();  // started first, so that no device is missed
    impl_->findAll();
}

Trackpads::~Trackpads() = default;

bool Trackpads::poll(double now) {
    impl_->takeNews();
    const double slept = sleptSoFar();
    const bool hasSlept = slept - std::exchange(impl_->slept, slept) > sleptAtLeast;
    const bool isTimeToRetry = now >= impl_->nextRetry;
    if (isTimeToRetry) impl_->nextRetry = now + retryInterval;

    bool isMore = false;
    impl_->contacts.clear();
    for (Entry& entry : impl_->entries) {
        if (!entry.pad && isTimeToRetry) impl_->open(entry);
        if (!entry.pad) continue;
        if (hasSlept) entry.pad->resync();
        const EvdevTrackpad::News news = entry.pad->poll();
        if (news == EvdevTrackpad::News::gone) {
            entry.pad.reset();
            entry.error = ENODEV;
            continue;
        }
        isMore = isMore || news == EvdevTrackpad::News::more;
        for (Contact contact : entry.pad->contacts()) {
            contact.id += entry.number << 32;
            impl_->contacts.push_back(contact);
        }
    }
    return isMore;
}

const std::vector<Contact>& Trackpads::contacts() const {
    return impl_->contacts;
}

bool Trackpads::isRead(std::int64_t contact) const {
    return std::any_of(impl_->entries.begin(), impl_->entries.end(),
                       [contact](const Entry& entry) { return entry.pad && entry.number == contact >> 32; });
}

std::size_t Trackpads::readCount() const {
    return static_cast<std::size_t>(std::count_if(impl_->entries.begin(), impl_->entries.end(),
                                                  [](const Entry& entry) { return entry.pad != nullptr; }));
}

std::vector<Trackpads::Pad> Trackpads::pads() const {
    std::vector<Pad> result;
    for (const Entry& entry : impl_->entries) {
        Pad pad;
        pad.name = entry.name;
        pad.path = entry.path;
        pad.isRead = entry.pad != nullptr;
        if (entry.pad) {
            pad.pulses = entry.pad->pulses();
            pad.geometry = entry.pad->geometry();
        }
        const bool isDenied = !entry.pad && (entry.error == EACCES || entry.error == EPERM);
        if (isDenied)
            pad.problem = entry.isKeyboardToo ? "it is a keyboard too, and those are not read"
                                              : "no permission to read it";
        else if (!entry.pad)
            pad.problem = std::strerror(entry.error);
        else if (entry.pad->mayNotPulse())
            pad.problem = "no permission to write to it, so no pulses";
        pad.isForbidden = !entry.isKeyboardToo && (isDenied || (entry.pad && entry.pad->mayNotPulse()));
        result.push_back(std::move(pad));
    }
    return result;
}

bool Trackpads::missesPermission() const {
    bool isMissing = false;
    for (const Pad& pad : pads()) {
        if (pad.isRead) return false;
        isMissing = isMissing || pad.isForbidden;
    }
    return isMissing;
}

void Trackpads::perform(HapticPattern pattern) {
    for (Entry& entry : impl_->entries)
        if (entry.pad && entry.pad->pulses()) return entry.pad->perform(pattern);
}

bool Trackpads::isAvailable() const {
    return std::any_of(impl_->entries.begin(), impl_->entries.end(),
                       [](const Entry& entry) { return entry.pad && entry.pad->pulses(); });
}

}  // namespace gull
