#include "Gullwick/App/LeaveSignals.h"

#include <csignal>
#include <cstdlib>

namespace gull {
namespace {

volatile std::sig_atomic_t isReceived = 0;
volatile std::sig_atomic_t isDeferred = 0;
constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP};

void note(int) {
    if (!isDeferred) std::_Exit(0);
    isReceived = 1;
}

void handleBy(void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    for (const int signal : signals) {
        struct sigaction present {};
        sigaction(signal, nullptr, &present);
        // Signals that the program was started to ignore (nohup) stay ignored.
        if (present.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
    }
}

}  // namespace

LeaveSignals::LeaveSignals() {
    isReceived = 0;
    isDeferred = 0;
    handleBy(note, static_cast<int>(SA_RESETHAND));
}

LeaveSignals::~LeaveSignals() {
    handleBy(SIG_DFL, 0);
}

void LeaveSignals::defer() {
    isDeferred = 1;
}

bool LeaveSignals::received() const {
    return isReceived != 0;
}

}  // namespace gull
