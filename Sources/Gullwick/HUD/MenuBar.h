#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Views/Animated.h"
#include "Engine/Views/Drawing.h"
#include "Gullwick/HUD/Command.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// The menus along the top edge of the window. The bar comes up when a free pointer nears the edge, and with
/// F10 or Alt; it goes again when the pointer leaves it. Menus are walked with the mouse or with the keys
/// alone: arrows, Return, Escape. What can be chosen is asked anew every time the menus are shown.
class MenuBar {
  public:
    static constexpr double height = 30;    ///< points
    static constexpr double nearEdge = 10;  ///< the pointer calls the bar this close to the edge, points
    static constexpr double farEdge = 56;   ///< and sends it away from here on
    static constexpr double fadeSeconds = 0.15;

    using Source = std::function<std::vector<Menu>()>;
    explicit MenuBar(Source menus) : menus_(std::move(menus)) {}

    /// True: taken. `drawing` is what the player sees, for what the pointer is on.
    bool handle(const KeyEvent& event);
    bool handle(const MouseEvent& event, const Drawing& drawing, bool pointerIsFree);
    /// A menu hangs open: it takes all input.
    bool isOpen() const { return open_.has_value(); }
    void close();
    /// Also hides the bar.
    void dismiss();

    /// Starts the fade that is due.
    void follow(double now);
    bool isMoving(double now) const { return opacity_.isMoving(now); }
    /// As large as the window. Named views: menuBar, menu.title.0, and menu.item.0 and menu.sub.0 for the
    /// lines of the open menu and of its open submenu.
    View body(double now, double width, double windowHeight) const;

    std::optional<std::size_t> openMenu() const { return open_; }
    std::optional<std::size_t> chosenItem() const { return item_; }
    std::optional<std::size_t> chosenSubItem() const { return subItem_; }

  private:
    using Choice = std::optional<std::size_t>;

    const std::vector<Command>& items() const { return shown_[*open_].commands; }
    const std::vector<Command>* submenu() const;
    void open(std::size_t menu, bool chooseFirst);
    void openBeside(int step);
    void enterSubmenu();
    void choose(const Command& command);
    /// Whether the line is still there: several events may come before the menus are drawn again.
    bool isStill(const std::string& name) const;
    void pointTo(const std::string& name);
    void press(const std::string& name);
    View titles() const;

    Source menus_;
    std::vector<Menu> shown_;  ///< as they stood when last shown
    bool isShown_ = false;
    Choice open_;
    Choice item_;
    Choice subItem_;
    bool subIsOpen_ = false;
    Animated opacity_{0};
};

}  // namespace gull
