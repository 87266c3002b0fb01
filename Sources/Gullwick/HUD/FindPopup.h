#pragma once

#include "Engine/Language/Language.h"
#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudPose.h"
#include "Gullwick/HUD/ItemIcons.h"

namespace gull {

/// The card that rises over the bottom bar after a find, with what was found and its worth.
struct FindPopup {
    static constexpr double bottomGap = 170;  ///< below it at rest, points

    const HudPose::Popup& pose;
    ItemIcons& icons;
    const Language& language;

    /// As high as the room it is given. Named view: popup.
    View body() const;
};

}  // namespace gull
