#pragma once

#include "Gullwick/HUD/Command.h"

#include <string>
#include <vector>

namespace gull {

class AppSettings;
class Feedback;
class GameController;
class TouchSurface;

/// The part of commands beyond the game, done by the owner of the window.
class WindowCommands {
  public:
    virtual ~WindowCommands() = default;
    virtual void showAbout() = 0;
    virtual void quit() = 0;
    virtual void minimise() = 0;
    virtual void toggleFullScreen() = 0;
    virtual bool isFullScreen() const = 0;
    /// Saves a picture of the window's current contents.
    virtual void takeScreenshot() = 0;
    /// Asks the player and erases all progress if the answer is yes.
    virtual void askReset() = 0;
    /// Changes to that language and stores it in the settings; empty: the system's language.
    virtual void speak(const std::string& code) = 0;
    /// Whether there is a font for that language. Asked for every language whenever the menus are made.
    virtual bool hasFont(const Language& language) = 0;
};

/// The program's menus in their current state: the name of each command, its key, whether it can be chosen,
/// whether it is checked, and what it does, in `language`. The one table behind keyboard and menu bar.
/// Everything passed in must outlive the menus.
std::vector<Menu> buildMenus(GameController& game, TouchSurface& surface, AppSettings& settings,
                             Feedback& feedback, WindowCommands& window, const Language& language = {});

}  // namespace gull
