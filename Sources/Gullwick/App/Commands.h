#pragma once

#include "Gullwick/HUD/Command.h"

#include <string>
#include <vector>

namespace gull {

class AppSettings;
class Feedback;
class GameController;
class TouchSurface;

/// What commands do beyond the game: whoever owns the window does it.
class WindowCommands {
  public:
    virtual ~WindowCommands() = default;
    virtual void showAbout() = 0;
    virtual void quit() = 0;
    virtual void minimise() = 0;
    virtual void toggleFullScreen() = 0;
    virtual bool isFullScreen() const = 0;
    /// Saves a picture of the window as it is.
    virtual void takeScreenshot() = 0;
    /// Asks the player, and erases all progress if the answer is yes.
    virtual void askReset() = 0;
    /// Changes to that language and keeps it in the settings; empty: the one that the system asks for.
    virtual void speak(const std::string& code) = 0;
    /// Whether a font here shows that language. Asked for every language whenever the menus are made.
    virtual bool hasFont(const Language& language) = 0;
};

/// The program's menus as they stand now: what each command is called, its key, whether it can be chosen,
/// whether it is checked, and what it does, in `language`. The one table behind keyboard and menu bar.
/// Everything passed in must outlive the menus.
std::vector<Menu> buildMenus(GameController& game, TouchSurface& surface, AppSettings& settings,
                             Feedback& feedback, WindowCommands& window, const Language& language = {});

}  // namespace gull
