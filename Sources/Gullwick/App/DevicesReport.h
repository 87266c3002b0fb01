#pragma once

#include "Engine/Sound/AudioDevice.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/GameControllers.h"

#include <string>
#include <vector>

namespace gull {

/// What was found on this machine and what of it is used, as text: the first thing to ask of a player who
/// has trouble.
struct DevicesReport {
    std::string display;  ///< "x11, 1240 x 800 at scale 1", or why there is none
    std::string openGL;   ///< renderer and version, or why there is none
    std::string tier;     ///< how the picture is made there; empty when unknown
    AudioDevice::Description audio;
    std::vector<Trackpads::Pad> trackpads;
    std::vector<GameControllers::Description> controllers;
    std::vector<std::string> fonts;  ///< what serves each of the program's fonts
    std::string log;                 ///< where the last game kept what it said

    /// Several lines, each ended.
    std::string text() const;
};

}  // namespace gull
