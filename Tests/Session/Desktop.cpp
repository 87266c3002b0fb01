#include "Session/Desktop.h"

#include <fstream>
#include <stdexcept>

namespace gull::session {

Desktop::Desktop(int width, int height, const std::string& options) {
    // Xvfb chooses a free number and writes it to the descriptor once it takes clients.
    const std::string numberFile = (folder_.path() / "display").string();
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    const std::string command =
        "exec Xvfb -displayfd 3 -screen 0 " + screen + " -nolisten tcp " + options + " 3>" + numberFile;
    server_ = std::make_unique<Process>("sh", std::vector<std::string>{"-c", command}, Environment{},
                                        folder_.path());
    for (int i = 0; i < 1000 && display_.empty(); ++i) {
        pause(0.01);
        const std::string number = contents(numberFile);
        if (number.find('\n') != std::string::npos) display_ = ":" + number.substr(0, number.find('\n'));
    }
    if (display_.empty()) throw std::runtime_error("Xvfb did not start: " + server_->errors());
}

Environment Desktop::environment(const std::filesystem::path& home) const {
    return {{"DISPLAY", display_},
            {"WAYLAND_DISPLAY", std::nullopt},
            {"SDL_AUDIODRIVER", "dummy"},
            {"HOME", home.string()},
            {"XDG_CONFIG_HOME", (home / "config").string()},
            {"XDG_DATA_HOME", (home / "data").string()},
            {"XDG_STATE_HOME", (home / "state").string()},
            {"GULLWICK_SAVE", std::nullopt},
            {"GULLWICK_SCALE", std::nullopt},
            {"GULLWICK_PROBE", std::nullopt}};
}

std::string Desktop::xdotool(const std::vector<std::string>& arguments) {
    return run("xdotool", arguments, {{"DISPLAY", display_}}, 20).output;
}

bool Desktop::waitForWindow(const std::string& title, double seconds) {
    if (!waitForWindowAlone(title, seconds)) return false;
    xdotool({"windowfocus", window_});
    return true;
}

void Desktop::manageWindows() {
    const Environment environment{{"DISPLAY", display_}, {"HOME", folder_.path().string()}};
    manager_ = std::make_unique<Process>("openbox", std::vector<std::string>{}, environment, folder_.path());
    // Once it answers, it has taken over.
    for (int i = 0; i < 200 && xdotool({"get_desktop"}).empty(); ++i) pause(0.05);
}

bool Desktop::waitForWindowAlone(const std::string& title, double seconds) {
    for (double waited = 0; waited < seconds; waited += 0.1) {
        window_ = xdotool({"search", "--onlyvisible", "--name", "^" + title + "$"});
        window_ = window_.substr(0, window_.find('\n'));
        if (!window_.empty()) return true;
        pause(0.1);
    }
    return false;
}

void Desktop::moveMouse(int x, int y) {
    xdotool({"mousemove", "--window", window_, std::to_string(x), std::to_string(y)});
}

void Desktop::click(int button) {
    xdotool({"click", std::to_string(button)});
}
void Desktop::key(const std::string& keys) {
    xdotool({"key", keys});
}

void Desktop::screenshot(const std::filesystem::path& file) {
    run("import", {"-window", "root", file.string()}, {{"DISPLAY", display_}});
}

}  // namespace gull::session
