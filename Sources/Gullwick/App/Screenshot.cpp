#include "Gullwick/App/Screenshot.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Raster/Png.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace gull {

namespace {

namespace fs = std::filesystem;

/// The value of a line like XDG_PICTURES_DIR="$HOME/Pictures" in the desktop's list of folders; only absolute
/// paths and those in the home folder count there.
std::optional<fs::path> chosenFolder(const std::string& list, const fs::path& home) {
    constexpr std::string_view key = "XDG_PICTURES_DIR=\"";
    constexpr std::string_view homeMark = "$HOME";
    const std::size_t found = list.find(key);
    if (found == std::string::npos || (found > 0 && list[found - 1] != '\n')) return std::nullopt;
    const std::size_t start = found + key.size();
    const std::size_t end = list.find('"', start);
    if (end == std::string::npos) return std::nullopt;
    const std::string value = list.substr(start, end - start);
    if (value.starts_with(homeMark)) return home / fs::path(value.substr(homeMark.size())).relative_path();
    return fs::path(value).is_absolute() ? std::optional<fs::path>(value) : std::nullopt;
}

/// As the player would write it: with ~ for the home folder.
std::string shortened(const fs::path& file, const char* home) {
    const std::string path = file.string();
    const std::string prefix = home ? std::string(home) + "/" : std::string();
    return !prefix.empty() && path.starts_with(prefix) ? "~/" + path.substr(prefix.size()) : path;
}

}  // namespace

fs::path Screenshot::folder(const AppSettings::Environment& environment) {
    const fs::path settings = AppSettings::defaultFile(environment);
    if (settings.empty()) return {};
    const char* set = environment("HOME");
    const fs::path home = set && *set ? fs::path(set) : settings.parent_path().parent_path().parent_path();
#ifndef __APPLE__
    const auto list = SmallFile::read(settings.parent_path().parent_path() / "user-dirs.dirs");
    if (list.bytes) {
        if (const auto chosen = chosenFolder(*list.bytes, home)) return *chosen;
    }
#endif
    return home / "Pictures";
}

Message Screenshot::save(const Image& image, const fs::path& folder) {
    if (folder.empty()) return message("There is no home folder to save a picture in");
    const std::time_t now = std::time(nullptr);
    const std::string stem = fmt::format("Gullwick {:%Y-%m-%d %H.%M.%S}", fmt::localtime(now));
    fs::path file = folder / (stem + ".png");
    std::error_code ignored;
    for (int copy = 2; fs::exists(file, ignored); ++copy)
        file = folder / fmt::format("{} {}.png", stem, copy);
    const auto png = encodePng(image);
    if (!png) return message("The picture could not be saved: {}", message("it cannot be encoded"));
    const std::string_view bytes(reinterpret_cast<const char*>(png->data()), png->size());
    if (const auto written = SmallFile::replace(file, bytes); !written)
        return message("The picture could not be saved: {}", written.failure);
    return message("Picture saved: {}", shortened(file, std::getenv("HOME")));
}

}  // namespace gull
