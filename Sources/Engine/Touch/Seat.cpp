#include "Engine/Touch/Seat.h"

#ifdef GULL_LOGIND
#include <poll.h>
#include <systemd/sd-login.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#endif

namespace gull {

#ifdef GULL_LOGIND
namespace {

/// The session of this process; empty if logind knows none.
std::string ownSession() {
    char* name = nullptr;
    // A program started by a user service, as some desktops do, has no session of its own; use the one on
    // display.
    if (sd_pid_get_session(0, &name) < 0 && sd_uid_get_display(getuid(), &name) < 0) return {};
    const std::unique_ptr<char, decltype(&std::free)> owned(name, &std::free);
    return name;
}

}  // namespace

struct Seat::Impl {
    std::unique_ptr<sd_login_monitor, decltype(&sd_login_monitor_unref)> monitor{nullptr,
                                                                                 &sd_login_monitor_unref};
    std::string session = ownSession();
    bool isOurs = true;

    Impl() {
        sd_login_monitor* made = nullptr;
        if (sd_login_monitor_new("session", &made) >= 0) monitor.reset(made);
        ask();
    }
    void ask() {
        // A session without a seat (ssh with its own display) is never active and never was.
        if (session.empty() || sd_session_get_seat(session.c_str(), nullptr) < 0) return;
        isOurs = sd_session_is_active(session.c_str()) != 0;
    }
    bool hasNews() const {
        pollfd wanted{sd_login_monitor_get_fd(monitor.get()), POLLIN, 0};
        return ::poll(&wanted, 1, 0) > 0;
    }
};

bool Seat::isOurs() {
    if (impl_->monitor && impl_->hasNews()) {
        sd_login_monitor_flush(impl_->monitor.get());
        impl_->ask();
    }
    return impl_->isOurs;
}

#else

struct Seat::Impl {};

bool Seat::isOurs() {
    return true;
}

#endif

Seat::Seat() : impl_(std::make_unique<Impl>()) {}
Seat::~Seat() = default;

}  // namespace gull
