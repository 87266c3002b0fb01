#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Views/ViewLayers.h"
#include "Gullwick/HUD/AlertCard.h"
#include "Gullwick/HUD/Command.h"
#include "Gullwick/HUD/HUDView.h"
#include "Gullwick/HUD/HudMotion.h"
#include "Gullwick/HUD/MenuBar.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace gull {

class AppSettings;

/// Everything that covers the beach in the window: the HUD, and above it the menu bar and the cards that ask
/// something. It keeps a few layers at the window's pixel density and redraws only what changed on them.
///
/// The HUD itself takes no input: clicks and keys fall through to the beach. An open menu or card takes all
/// of it: hand every event to handle() first, and let the game have those that come back.
class Overlay {
  public:
    /// All are owned by the caller and must outlive the overlay. `language` is read before every frame;
    /// `menus` returns the menus in their current state whenever they are shown.
    Overlay(const GameController& game, const AppSettings& settings, const Language& language,
            ItemIcons& icons, std::function<std::vector<Menu>()> menus);
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    /// The layers at `now`, the game's clock, in a window of that size (points) at `scale` pixels a point,
    /// back to front; valid until the next update(). Each lists its changes since the last one.
    const std::vector<OverlayLayer>& update(double now, double width, double height, double scale);

    /// Makes one of the item pictures that this beach needs; false if there is none left to make. Call it
    /// once a frame while a beach opens.
    bool prepareIcon();

    // --- Input. True: taken; the game must not see it.
    bool handle(const KeyEvent& event);
    bool handle(const MouseEvent& event);
    /// A menu or a card is open: the pointer must be free, and the beach takes no clicks and no fingers.
    bool wantsInput() const;
    /// A card waits for an answer: nothing else works until it has one.
    bool asks() const { return alert_ && alert_->asks(); }
    /// Closes an open menu.
    void closeMenu();
    /// True if it may look different at the next update, or later although the game stands still.
    bool isMoving(double now);

    /// Shows `words` for `seconds` as a toast, in every phase and in a pause; they replace the game's own
    /// toast, and earlier words. The time starts with the next update().
    void tell(Message words, double seconds);
    /// `version`: "1.0.0".
    void showAbout(const std::string& version);
    /// Asks whether to erase all progress; `confirmed` runs if the player says so.
    void askReset(std::function<void()> confirmed);

    /// As last drawn.
    const Drawing& drawing() const { return layers_.drawing(); }

  private:
    void readState();
    void followNotice(double now);
    View view(double width, double height, double now);
    void put(AlertCard card);
    /// Lets `handle` pass the event to the card.
    template <typename Handle>
    void answer(const Handle& handle);

    const GameController& game_;
    const AppSettings& settings_;
    const Language& language_;
    ItemIcons& icons_;
    MenuBar menuBar_;
    std::optional<AlertCard> alert_;
    std::optional<AlertCard> leaving_;  ///< an answered card while it fades
    Animated alertOpacity_{0};
    HudMotion motion_;
    ViewLayers layers_;

    // The state is read again only after the game or the settings have announced a change.
    bool stateMayHaveChanged_ = true;
    bool stateChanged_ = false;  ///< since the last update()
    ChangeNotifier::Observation gameObservation_;
    ChangeNotifier::Observation settingsObservation_;
    HudState state_;
    std::optional<HudState> ended_;

    struct Notice {
        Message words;
        double seconds;
        std::optional<double> until;
    };
    std::optional<Notice> notice_;

    /// How the layers show the state.
    struct Shown {
        HudPose pose;
        double width = 0;
        double height = 0;
        double scale = 0;
        bool operator==(const Shown&) const = default;
    };
    std::optional<Shown> shown_;
    bool chromeChanged_ = true;
};

}  // namespace gull
