#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Views/ViewSurface.h"
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

/// The picture that lies over the beach in the window: the HUD, and above it the menu bar and the cards that
/// ask something. It keeps one bitmap at the window's pixel density and draws again only what changed.
///
/// The HUD itself takes no input: clicks and keys fall through to the beach. An open menu or card takes all
/// of it: hand every event to handle() first, and let the game have those that come back.
class Overlay {
  public:
    using Area = ViewSurface::Area;

    /// All are owned by the caller and must outlive the overlay. `menus` is asked for the menus as they stand
    /// whenever they are shown.
    Overlay(const GameController& game, const AppSettings& settings, ItemIcons& icons,
            std::function<std::vector<Menu>()> menus);

    /// Brings the bitmap up to date for a window of that size (points) at `scale` pixels a point; `now` is
    /// the game's clock. Returns the areas that were drawn again, in pixels; none when nothing changed.
    const std::vector<Area>& update(double now, double width, double height, double scale);
    /// Of the last update(): areas outside of which the bitmap is clear, in pixels. They do not overlap.
    const std::vector<Area>& coverage() const { return surface_.coverage(); }
    /// Premultiplied B G R A, row 0 at the top; valid until the next update().
    const unsigned char* pixels() const { return surface_.canvas()->pixels(); }
    int strideBytes() const { return surface_.canvas()->strideBytes(); }
    int pixelWidth() const { return surface_.canvas()->pixelWidth(); }
    int pixelHeight() const { return surface_.canvas()->pixelHeight(); }

    /// Makes one of the item pictures that this beach needs; false when there is none to make. Once a frame
    /// while a beach opens.
    bool prepareIcon();

    // --- Input. True: taken, the game must not see it.
    bool handle(const KeyEvent& event);
    bool handle(const MouseEvent& event);
    /// A menu or a card is open: the pointer must be free, the beach takes no clicks and no fingers.
    bool wantsInput() const;

    /// `version`: "1.0.0".
    void showAbout(const std::string& version);
    /// Asks whether to erase all progress; `confirmed` runs if the player says so.
    void askReset(std::function<void()> confirmed);

    /// As last drawn.
    const Drawing& drawing() const { return surface_.drawing(); }

  private:
    View view(double width, double height, double now);

    const GameController& game_;
    const AppSettings& settings_;
    ItemIcons& icons_;
    MenuBar menuBar_;
    std::optional<AlertCard> alert_;
    HudMotion motion_;
    ViewSurface surface_;

    /// What the bitmap shows.
    struct Shown {
        HudState state;
        HudPose pose;
        double width = 0;
        double height = 0;
        double scale = 0;
        bool operator==(const Shown&) const = default;
    };
    std::optional<Shown> shown_;
    std::optional<HudState> ended_;
    bool chromeChanged_ = true;
};

}  // namespace gull
