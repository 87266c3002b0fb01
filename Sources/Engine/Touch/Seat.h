#pragma once

#include <memory>

namespace gull {

/// Whether the player sits at the machine. On Linux a session loses its seat when the user switches to
/// another virtual terminal; the devices then belong to another session. Without logind the seat is always
/// ours.
///
/// Main thread only; nothing blocks.
class Seat {
  public:
    Seat();
    ~Seat();
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    /// Cheap enough for every frame: asks again only when a session has changed.
    bool isOurs();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
