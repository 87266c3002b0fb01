#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/GameControllers.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

class GameController;
class TouchSurface;

/// Passes the reports of the player's devices (touchpads, game controllers) to the surface, once a frame.
/// Fingers on several pads count as fingers on one. Also tells the player, once, what a device needs or can
/// do, and tells the game which controls the player has in hand.
class PlayerInput {
  public:
    /// Everything is owned by the caller and must outlive this object.
    PlayerInput(Trackpads& trackpads, GameControllers& controllers, TouchSurface& surface,
                GameController& game);

    /// Fingers that the window system itself reports.
    void windowContacts(const std::vector<Contact>& contacts);
    /// Notes that the mouse is in use; the surface acts on it.
    void noteMouse(const MouseEvent& event);
    /// `now`: uptime in seconds. Call it once a frame and before passing on a click: with tapping on, the
    /// click follows close on the finger.
    void poll(double now);

  private:
    void readFingers(double now);
    void gather();
    bool isRead(std::int64_t finger) const;
    void watchTrackpads();
    void handle(const ControllerEvent& event);
    void hint();
    /// Publishes the controls that the player has in hand.
    void look(double now);

    Trackpads& trackpads_;
    GameControllers& controllers_;
    TouchSurface& surface_;
    GameController& game_;
    std::vector<Contact> windowContacts_;
    std::vector<Contact> gathered_;
    std::vector<Contact> reported_;
    double lastPoll_ = 0;
    std::optional<std::size_t> trackpadCount_;  ///< at the last poll
    bool hinted_ = false;
    double nextLook_ = 0;
    bool padIsRead_ = false;
    bool usesController_ = false;  ///< rather than the mouse
    double mouseX_ = -1;           ///< where the mouse was last seen, points; -1: nowhere yet
    double mouseY_ = -1;
};

}  // namespace gull
