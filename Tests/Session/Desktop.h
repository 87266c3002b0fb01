#pragma once

#include "Session/Process.h"

#include <memory>
#include <string>

namespace gull::session {

/// A private display (Xvfb) with a hand on mouse and keyboard (xdotool). Throws if Xvfb does not start, so a
/// test without a display fails.
class Desktop {
  public:
    /// `options` are additional ones for Xvfb, e.g. "-extension GLX".
    Desktop(int width, int height, const std::string& options = {});

    const std::string& display() const { return display_; }
    /// The environment of a program to run on this desktop, with its files in `home`.
    Environment environment(const std::filesystem::path& home) const;

    /// Waits for a window of that title, gives it the keyboard and returns its place.
    bool waitForWindow(const std::string& title, double seconds);
    /// The same for a window that must get the keyboard by itself.
    bool waitForWindowAlone(const std::string& title, double seconds);
    /// Runs a window manager (openbox) from now on.
    void manageWindows();
    void moveMouse(int x, int y);
    void click(int button = 1);
    /// In xdotool's names: "Return", "ctrl+3", "h".
    void key(const std::string& keys);
    /// A picture of the whole screen as a PNG file.
    void screenshot(const std::filesystem::path& file);

  private:
    std::string xdotool(const std::vector<std::string>& arguments);

    ScratchFolder folder_;
    std::string display_;
    std::unique_ptr<Process> server_;
    std::unique_ptr<Process> manager_;
    std::string window_;
};

}  // namespace gull::session
