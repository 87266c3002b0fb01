#pragma once

namespace gull {

/// The signals with which a session, a terminal or a person asks the program to leave (SIGTERM, SIGINT,
/// SIGHUP). While this object lives they are noted instead of ending the program, so that it can leave as
/// through its menu. A second one ends it at once. Create it before the window, whose library handles signals
/// that have no handler.
class LeaveSignals {
  public:
    LeaveSignals();
    ~LeaveSignals();
    LeaveSignals(const LeaveSignals&) = delete;
    LeaveSignals& operator=(const LeaveSignals&) = delete;

    bool received() const;
};

}  // namespace gull
