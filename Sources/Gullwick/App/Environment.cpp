#include "Gullwick/App/Environment.h"

#include "Engine/Log/Log.h"
#include "Gullwick/App/Numbers.h"
#include "Gullwick/Scene/SceneCamera.h"

#include <fmt/format.h>

#include <cstdlib>

namespace gull {

std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<double> requestedScale() {
    const auto text = environmentVariable("GULLWICK_SCALE");
    if (!text) return std::nullopt;
    const auto scale = parseNumber(*text);
    if (scale && *scale >= 0.5 && *scale <= 4) return scale;
    Log::say("GULLWICK_SCALE takes a number from 0.5 to 4; \"{}\" is ignored", *text);
    return std::nullopt;
}

std::vector<std::string> cameraComplaints() {
    std::vector<std::string> result;
    for (const char* name : {"GW_CAM", "GW_LOOK"}) {
        const auto text = environmentVariable(name);
        if (text && !SceneCamera::parseTriple(text->c_str()))
            result.push_back(
                fmt::format("{} takes three numbers up to 10000, \"x,y,z\"; \"{}\" is ignored", name, *text));
    }
    if (const auto text = environmentVariable("GW_FOV"); text && !SceneCamera::parseAngle(text->c_str()))
        result.push_back(fmt::format("GW_FOV takes degrees between 0 and 180; \"{}\" is ignored", *text));
    return result;
}

}  // namespace gull
