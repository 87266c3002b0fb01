#pragma once

#include "Engine/Language/Message.h"
#include "Engine/Raster/Image.h"
#include "Gullwick/Settings/AppSettings.h"

#include <filesystem>

namespace gull {

/// Pictures of the window that the player asks for.
namespace Screenshot {

/// The player's folder for pictures: what the desktop has chosen (XDG_PICTURES_DIR in user-dirs.dirs), else
/// Pictures in the home folder. Empty when the user has no home.
std::filesystem::path folder(const AppSettings::Environment& environment);

/// Writes `image` as a PNG there, under a name of its own made from the present time; makes the folder. The
/// result is a sentence for the player: where it is, or why it is not.
Message save(const Image& image, const std::filesystem::path& folder);

}  // namespace Screenshot

}  // namespace gull
