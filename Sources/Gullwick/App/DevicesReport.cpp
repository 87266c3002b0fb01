#include "Gullwick/App/DevicesReport.h"

#include "Gullwick/App/TouchpadPermission.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace gull {
namespace {

constexpr int labelWidth = 12;

/// One item: the label before the first line, blanks before the others.
std::string line(const std::string& label, const std::string& text) {
    return fmt::format("{:<{}}{}\n", label, labelWidth, text);
}

std::string audioText(const AudioDevice::Description& audio) {
    std::string result;
    if (audio.isOpen)
        result = line("sound",
                      fmt::format("the default device through {}: {} Hz, {} channel{}, {} frames ({:.1f} ms)",
                                  audio.driver, audio.rate, audio.channels, audio.channels == 1 ? "" : "s",
                                  audio.bufferFrames, 1000.0 * audio.bufferFrames / std::max(audio.rate, 1)));
    else
        result = line("sound", "none: " + (audio.problem.empty() ? "not opened" : audio.problem));
    for (const std::string& device : audio.devices) result += line("", "found: " + device);
    return result;
}

std::string trackpadText(const std::vector<Trackpads::Pad>& pads) {
    if (pads.empty()) return line("trackpads", "none: the mouse steers");
    std::string result;
    std::string label = "trackpads";
    bool mayBeAllowed = false;
    for (const Trackpads::Pad& pad : pads) {
        const std::string name = pad.name.empty() ? "unnamed" : pad.name;
        result += line(
            std::exchange(label, ""),
            fmt::format("{} ({}): {}", name, pad.path, pad.isRead ? "read, " + pad.geometry : "not read"));
        if (!pad.problem.empty()) result += line("", "  " + pad.problem);
        mayBeAllowed = mayBeAllowed || pad.isForbidden;
    }
    if (mayBeAllowed) result += line("", "  to allow it: " + TouchpadPermission::command());
    return result;
}

std::string controllerText(const std::vector<GameControllers::Description>& controllers) {
    if (controllers.empty()) return line("controllers", "none");
    std::string result;
    std::string label = "controllers";
    for (const GameControllers::Description& controller : controllers)
        result += line(
            std::exchange(label, ""),
            fmt::format("{}: {}, {}", controller.name,
                        controller.hasTouchSurface ? "its touch surface is a trackpad" : "no touch surface",
                        controller.rumbles ? "rumbles" : "does not rumble"));
    return result;
}

/// The device that would receive pulses.
std::string hapticsText(const DevicesReport& report) {
    for (const Trackpads::Pad& pad : report.trackpads)
        if (pad.pulses) return line("haptics", "the actuator of " + pad.name);
    for (const GameControllers::Description& controller : report.controllers)
        if (controller.rumbles) return line("haptics", "the rumble of " + controller.name);
    return line("haptics", "none: nothing here can be felt");
}

}  // namespace

std::string DevicesReport::text() const {
    std::string result = line("display", display);
    result += line("OpenGL", openGL);
    if (!tier.empty()) result += line("picture", tier);
    result += audioText(audio);
    result += trackpadText(trackpads);
    result += controllerText(controllers);
    result += hapticsText(*this);
    std::string label = "fonts";
    for (const std::string& font : fonts) result += line(std::exchange(label, ""), font);
    if (fonts.empty()) result += line("fonts", "none");
    if (!log.empty()) result += line("log", log);
    return result;
}

}  // namespace gull
