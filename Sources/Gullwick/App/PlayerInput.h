#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/GameControllers.h"

#include <vector>

namespace gull {

class GameController;
class TouchSurface;

/// Brings what the player's own devices report (touchpads, game controllers) to the surface, once a frame.
/// Fingers on several pads count as fingers on one. Also tells the player, once, what a device needs or can
/// do.
class PlayerInput {
  public:
    /// Everything is owned by the caller and must outlive this object.
    PlayerInput(Trackpads& trackpads, GameControllers& controllers, TouchSurface& surface,
                GameController& game);

    /// Fingers that the window system itself reports.
    void windowContacts(const std::vector<Contact>& contacts);
    /// `now`: uptime in seconds.
    void poll(double now);

  private:
    void gather();
    void handle(const ControllerEvent& event);
    void hint();

    Trackpads& trackpads_;
    GameControllers& controllers_;
    TouchSurface& surface_;
    GameController& game_;
    std::vector<Contact> windowContacts_;
    std::vector<Contact> gathered_;
    std::vector<Contact> reported_;
    double lastPoll_ = 0;
    bool hinted_ = false;
};

}  // namespace gull
