#pragma once

#include "Engine/Sound/AudioDevice.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/GameControllers.h"

#include <string>
#include <vector>

namespace gull {

/// A report of what was found on this machine and what is used: the first thing to ask a player for who has
/// trouble.
struct DevicesReport {
    std::string display;  ///< "x11, 1240 x 800 at scale 1", or why there is none
    std::string openGL;   ///< renderer and version, or why there is none
    std::string tier;     ///< how the picture is made there; empty when unknown
    AudioDevice::Description audio;
    std::vector<Trackpads::Pad> trackpads;
    std::vector<GameControllers::Description> controllers;
    std::vector<std::string> fonts;  ///< the fonts in use
    std::string log;                 ///< the log of the last game

    /// Several lines, each ended.
    std::string text() const;
};

}  // namespace gull
