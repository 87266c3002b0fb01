#pragma once

#include "Engine/Language/Message.h"
#include "Engine/Raster/Image.h"
#include "Gullwick/Settings/AppSettings.h"

#include <filesystem>

namespace gull {

/// Pictures of the window, taken at the player's request.
namespace Screenshot {

/// The player's folder for pictures: the desktop's choice (XDG_PICTURES_DIR in user-dirs.dirs), else Pictures
/// in the home folder. Empty if the user has no home.
std::filesystem::path folder(const AppSettings::Environment& environment);

/// Writes `image` there as a PNG with a unique name made from the current time; creates the folder. Returns a
/// sentence for the player: where it is, or why it is not.
Message save(const Image& image, const std::filesystem::path& folder);

}  // namespace Screenshot

}  // namespace gull
