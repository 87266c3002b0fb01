#include "House/IncludeRules.h"

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string_view>

namespace gull {
namespace {

/// A room and what it may include beside itself: rooms, or single headers of one.
struct Room {
    std::string name;
    std::vector<std::string> mayInclude;
};

/// Below all rows: every room may have something to say.
constexpr std::string_view cellar = "Engine/Log";

/// Lowest row first.
const std::vector<Room>& rooms() {
    static const std::vector<Room> table{
        {std::string(cellar), {}},

        {"Engine/Files", {}},
        {"Engine/Language", {}},
        {"Engine/Loop", {}},
        {"Engine/Raster", {}},
        {"Engine/Input", {}},
        {"Engine/Sound", {}},

        {"GullCore", {"Engine/Files", "Engine/Language/Message.h"}},
        {"Engine/Stage", {"Engine/Raster"}},
        {"Engine/Views", {"Engine/Raster", "Engine/Loop"}},
        {"Engine/Touch", {"Engine/Input"}},
        {"Engine/Window", {"Engine/Input", "Engine/Language/Message.h", "Engine/Raster/Image.h"}},

        {"Engine/Gl", {"Engine/Raster"}},
        {"Engine/Render", {"Engine/Gl", "Engine/Stage", "Engine/Raster"}},
        {"Engine/Compositor", {"Engine/Render", "Engine/Gl", "Engine/Stage", "Engine/Raster"}},
        {"Gullwick/Settings", {"Engine/Files", "Engine/Loop"}},

        {"Gullwick/Feedback", {"Gullwick/Settings", "Engine/Sound", "Engine/Input", "Engine/Loop"}},
        {"Gullwick/Scene", {"GullCore", "Engine/Stage", "Engine/Raster", "Engine/Loop"}},

        {"Gullwick/Game",
         {"GullCore", "Gullwick/Scene", "Gullwick/Feedback", "Gullwick/Settings", "Engine/Stage",
          "Engine/Language", "Engine/Loop", "Engine/Input"}},

        // The overlay uses the scene's colours and icon models, but nothing that moves.
        {"Gullwick/HUD",
         {"Gullwick/Game", "Gullwick/Settings", "GullCore", "Gullwick/Scene/Look.h",
          "Gullwick/Scene/ItemModels.h", "Gullwick/Scene/Textures.h", "Engine/Views", "Engine/Stage",
          "Engine/Raster", "Engine/Language", "Engine/Input", "Engine/Loop"}},

        {"Gullwick/App", {"GullCore", "Engine", "Gullwick"}},
    };
    return table;
}

/// Libraries that stay inside the rooms that own them. Anybody may use the standard library and fmt.
struct Library {
    std::string headers;  ///< pattern for the name between < and >
    std::set<std::string> rooms;
};

const std::vector<Library>& libraries() {
    static const std::vector<Library> table{
        {"(SDL2/)?SDL[^/]*\\.h", {"Engine/Sound", "Engine/Window"}},
        {"(epoxy|GL|GLES[0-9]*|KHR|EGL)/.*", {"Engine/Gl", "Engine/Window"}},
        {"(X11/.*|wayland-.*)", {"Engine/Window"}},
        {"systemd/.*", {"Engine/Touch"}},
        {"(cairo|pango|fontconfig|freetype|glib|hb|ft2build).*", {"Engine/Raster"}},
        {"(libevdev/.*|libudev\\.h|linux/.*)", {"Engine/Touch"}},
        {"nlohmann/.*", {"GullCore", "Gullwick/Settings"}},
    };
    return table;
}

/// Vectors and matrices: the one library that may show in headers, from the stage upward.
const std::set<std::string> glmRooms{"Engine/Stage",   "Engine/Gl",     "Engine/Render", "Engine/Compositor",
                                     "Gullwick/Scene", "Gullwick/Game", "Gullwick/HUD",  "Gullwick/App"};

bool isBelow(std::string_view path, std::string_view folder) {
    return path == folder || (path.starts_with(folder) && path[folder.size()] == '/');
}

const Room* roomOf(std::string_view path) {
    const auto& table = rooms();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Room& room) { return isBelow(path, room.name); });
    return found == table.end() ? nullptr : &*found;
}

struct Include {
    bool isOurs;  ///< in quotes
    std::string path;
};

std::vector<Include> includesOf(const std::string& text) {
    static const std::regex pattern(R"(^\s*#\s*(?:include|import)\s*([<"])([^">]+)[">].*)");
    std::vector<Include> includes;
    std::istringstream lines(text);
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_match(line, match, pattern)) includes.push_back({match[1] == "\"", match[2]});
    }
    return includes;
}

/// The library of `header`, if it is one that must stay inside its rooms.
const Library* libraryOf(const std::string& header) {
    for (const Library& library : libraries()) {
        if (std::regex_match(header, std::regex(library.headers))) return &library;
    }
    return nullptr;
}

bool showsALibrary(const std::string& text) {
    const auto includes = includesOf(text);
    return std::any_of(includes.begin(), includes.end(),
                       [](const Include& include) { return !include.isOurs && libraryOf(include.path); });
}

/// The fault of an include of ours in a file of `room`; empty if there is none.
std::string faultOfOurs(const Room& room, const std::string& header, const SourceTree& sources) {
    const auto target = sources.find(header);
    if (target == sources.end()) return "no such header below Sources";
    if (isBelow(header, room.name) || isBelow(header, cellar)) return {};
    const bool isAllowed = std::any_of(room.mayInclude.begin(), room.mayInclude.end(),
                                       [&](const std::string& allowed) { return isBelow(header, allowed); });
    if (!isAllowed) return "points against the arrows of " + room.name;
    if (showsALibrary(target->second)) return "a header that shows its library is private to its room";
    return {};
}

std::string faultOfTheirs(const Room& room, const std::string& header) {
    if (header.starts_with("glm/")) return glmRooms.contains(room.name) ? "" : "glm starts at the stage";
    const Library* library = libraryOf(header);
    return !library || library->rooms.contains(room.name) ? "" : "this library stays in its own rooms";
}

/// Path without extension: a header and its source are one.
std::string unitOf(const std::string& path) {
    return path.substr(0, path.rfind('.'));
}

using Units = std::map<std::string, std::set<std::string>>;

/// Whether `goal` is included by any of `from` or by their includes.
bool reaches(const Units& units, const std::set<std::string>& from, const std::string& goal) {
    std::vector<std::string> left(from.begin(), from.end());
    std::set<std::string> seen;
    while (!left.empty()) {
        const std::string unit = left.back();
        left.pop_back();
        if (unit == goal) return true;
        const auto found = units.find(unit);
        if (!seen.insert(unit).second || found == units.end()) continue;
        left.insert(left.end(), found->second.begin(), found->second.end());
    }
    return false;
}

}  // namespace

std::vector<std::string> includeViolations(const SourceTree& sources) {
    std::vector<std::string> violations;
    for (const auto& [path, text] : sources) {
        const Room* room = roomOf(path);
        if (!room) {
            violations.push_back(path + ": stands in no room");
            continue;
        }
        for (const Include& include : includesOf(text)) {
            const std::string fault = include.isOurs ? faultOfOurs(*room, include.path, sources)
                                                     : faultOfTheirs(*room, include.path);
            if (!fault.empty()) violations.push_back(path + ": includes " + include.path + ": " + fault);
        }
    }
    return violations;
}

std::vector<std::string> openGlCallsOutside(const SourceTree& sources) {
    static const std::regex call(R"((^|[^A-Za-z0-9_:.>])(gl[A-Z][A-Za-z0-9]+)\s*\()");
    std::vector<std::string> violations;
    for (const auto& [path, text] : sources) {
        if (isBelow(path, "Engine/Gl") || isBelow(path, "Engine/Window")) continue;
        std::istringstream lines(text);
        std::smatch match;
        for (std::string line; std::getline(lines, line);) {
            const std::string code = line.substr(0, line.find("//"));
            if (std::regex_search(code, match, call)) violations.push_back(path + ": " + match[2].str());
        }
    }
    return violations;
}

std::vector<std::string> rendererViolations(const SourceTree& sources) {
    constexpr std::ptrdiff_t mostLines = 300;
    std::vector<std::string> violations;
    std::map<std::string, std::set<std::string>> units;
    for (const auto& [path, text] : sources) {
        const bool isRenderer = isBelow(path, "Engine/Gl") || isBelow(path, "Engine/Render") ||
                                isBelow(path, "Engine/Compositor");
        if (!isRenderer) continue;
        if (std::count(text.begin(), text.end(), '\n') > mostLines)
            violations.push_back(path + ": longer than 300 lines");
        std::set<std::string>& unit = units[unitOf(path)];
        for (const Include& include : includesOf(text))
            if (include.isOurs && unitOf(include.path) != unitOf(path)) unit.insert(unitOf(include.path));
    }
    for (const auto& [unit, includes] : units)
        if (reaches(units, includes, unit)) violations.push_back(unit + ": stands in an include circle");
    return violations;
}

}  // namespace gull
