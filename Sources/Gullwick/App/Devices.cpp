#include "Gullwick/App/Devices.h"

#include "Engine/Compositor/Renderer.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Loop/Clock.h"
#include "Engine/Raster/Text.h"
#include "Engine/Window/Window.h"
#include "Engine/Window/WindowOpening.h"
#include "Gullwick/App/DevicesReport.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/format.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <system_error>

namespace gull {

namespace {

void describeGraphics(DevicesReport& report, bool windowed) {
    const GraphicsInfo info = graphicsInfo();
    report.openGL = fmt::format("{}, {}, {}", info.renderer, info.vendor, info.version);
    if (!windowed) report.openGL += " (off screen)";
    const std::string problem = contextProblem();
    if (!problem.empty())
        report.tier = "none: " + problem;
    else
        report.tier = info.isSoftware ? "fast: a rasteriser on the CPU" : "full";
}

void describeDisplay(DevicesReport& report, const Window* window, const std::string& problem) {
    if (window) {
        report.display = fmt::format("{}, {:.0f} x {:.0f} points at scale {}", window->driverName(),
                                     window->width(), window->height(), window->scale());
        if (const std::string why = window->whyNotWayland(); !why.empty())
            report.display += fmt::format(" (not Wayland: {})", why);
        describeGraphics(report, true);
        return;
    }
    report.display = problem;
    std::string missing;
    if (const auto context = OffscreenContext::create(&missing)) {
        describeGraphics(report, false);
    } else {
        report.openGL = missing;
    }
}

std::vector<std::string> fonts() {
    std::vector<std::string> result;
    for (const FontDesign design : {FontDesign::monospaced, FontDesign::serif, FontDesign::proportional}) {
        Font font;
        font.design = design;
        font.italic = design == FontDesign::serif;
        result.push_back(describeFont(font));
    }
    return result;
}

std::string logOfTheLastGame() {
    const std::filesystem::path file = AppSettings::logFile(std::getenv);
    if (file.empty()) return "none: there is no home folder";
    std::error_code ignored;
    return file.string() + (std::filesystem::exists(file, ignored) ? "" : " (none yet: the game makes it)");
}

}  // namespace

int printDevices() {
    DevicesReport report;
    UptimeClock clock;
    std::unique_ptr<Window> window;
    std::string problem;
    try {
        Window::Options options;
        options.scale = requestedScale();
        options.isVisible = false;
        window.reset(new Window(openWindow(options)));
    } catch (const std::exception& error) {
        problem = error.what();
    }
    describeDisplay(report, window.get(), problem);

    AudioDevice audio;
    audio.start();
    audio.await(2);
    report.audio = audio.describe();
    Trackpads trackpads;
    trackpads.poll(clock.now());
    report.trackpads = trackpads.pads();
    if (window) {
        GameControllers controllers([&] { return clock.now(); });
        WindowHandlers handlers;
        handlers.raw = [&](const void* event) { controllers.handle(event); };
        window->setHandlers(std::move(handlers));
        window->pump(0);
        report.controllers = controllers.controllers();
        window->setHandlers({});
    }
    report.fonts = fonts();
    report.log = logOfTheLastGame();
    fmt::print("{}", report.text());
    return 0;
}

}  // namespace gull
