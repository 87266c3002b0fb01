#pragma once

#include "Engine/Views/Drawing.h"
#include "Gullwick/HUD/HudPose.h"
#include "Gullwick/HUD/ItemIcons.h"

namespace gull {

/// Everything drawn over the beach: shade, bars, find pop-up, toast, result card and beach select, in layers
/// that fill the window. The phase determines which of them show. It only reads, takes no input, and is
/// rebuilt whenever its state or its pose changes.
///
/// Named views, to be found in a Drawing: shade.top, shade.bottom, topBar, title, tide, bottomBar, signal,
/// tray, junk, instructions, popup, toast, card, select; and parts of them, "tray.slot.0".
struct HUDView {
    static constexpr double sidePadding = 26;  ///< of both bars
    static constexpr double topPadding = 32;
    static constexpr double bottomPadding = 20;
    static constexpr double barSpacing = 16;  ///< between the panels of the bottom bar
    static constexpr double toastTop = 112;

    const HudState& game;
    const HudState& ended;  ///< for the result card: `game`, or the old state while the card fades
    const HudPose& pose;
    ItemIcons& icons;
    double width;  ///< of the window, points
    double height;

    View body() const;

  private:
    View shade() const;
    View bars() const;
    View title() const;
    View bottomBar() const;
    View toast(const HudPose::Toast& toast, std::size_t index) const;
    View toasts(bool low) const;
    View placedCard() const;
};

/// Draws the whole HUD at rest onto `canvas`, whose size is the window's: no pop-up, fades and springs at
/// their ends, the toast as it is set.
void drawHud(Canvas& canvas, const HudState& state, ItemIcons& icons);

}  // namespace gull
