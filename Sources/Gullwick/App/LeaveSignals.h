#pragma once

namespace gull {

/// The signals by which a session, a terminal or a person asks the program to leave (SIGTERM, SIGINT,
/// SIGHUP): while this object lives they are noted instead of ending it, so that it leaves as by its menu. A
/// second one ends it at once. Make it before the window, whose library takes signals that nobody has.
class LeaveSignals {
  public:
    LeaveSignals();
    ~LeaveSignals();
    LeaveSignals(const LeaveSignals&) = delete;
    LeaveSignals& operator=(const LeaveSignals&) = delete;

    bool received() const;
};

}  // namespace gull
