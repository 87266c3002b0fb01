#pragma once

namespace gull {

/// The signals with which a session, a terminal or a person asks the program to leave (SIGTERM, SIGINT,
/// SIGHUP). While this object lives they end the program at once with status 0, as long as there is nothing
/// to save, and from `defer` on they are noted, so that it can leave as through its menu. A second one then
/// ends it at once. Create it before the window, whose library handles signals that have no handler.
class LeaveSignals {
  public:
    LeaveSignals();
    ~LeaveSignals();
    LeaveSignals(const LeaveSignals&) = delete;
    LeaveSignals& operator=(const LeaveSignals&) = delete;

    /// From now on the program looks at `received` often and leaves by itself.
    void defer();
    bool received() const;
};

}  // namespace gull
