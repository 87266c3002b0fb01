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

/// The menus along the top edge of the window. The bar appears when a free pointer nears the edge, and with
/// F10 or Alt; it disappears when the pointer leaves it. Menus work with the mouse or with keys alone:
/// arrows, Return, Escape, and Alt with the first letter of a title. A pointer on its way to an open submenu
/// may cross other lines. The menus are built again each time they are shown.
class MenuBar {
  public:
    static constexpr double height = 30;    ///< points
    static constexpr double nearEdge = 10;  ///< the pointer shows the bar this close to the edge, points
    static constexpr double farEdge = 56;   ///< and hides it from here on
    static constexpr double fadeSeconds = 0.15;
    static constexpr double detour = 0.3;  ///< seconds that a pointer may rest on its way to a submenu

    using Source = std::function<std::vector<Menu>()>;
    explicit MenuBar(Source menus) : menus_(std::move(menus)) {}

    /// True: taken. `drawing` is the drawing that the player sees, for finding what is under the pointer.
    bool handle(const KeyEvent& event);
    bool handle(const MouseEvent& event, const Drawing& drawing, bool pointerIsFree);
    /// A menu is open and takes all input.
    bool isOpen() const { return open_.has_value(); }
    void close();
    /// Also hides the bar.
    void dismiss();

    /// Starts the fades that are due.
    void follow(double now);
    /// True if it will look different later without further input.
    bool isMoving(double now) const {
        return opacity_.isMoving(now) || listOpacity_.isMoving(now) || waiting_.has_value();
    }
    /// As large as the window. Named views: menuBar, menu.title.0, and menu.item.0 and menu.sub.0 for the
    /// lines of the open menu and of its open submenu.
    View body(double now, double width, double windowHeight, const Language& language = {}) const;

    /// The title under the pointer.
    std::optional<std::size_t> hoverTitle() const { return hoverTitle_; }
    std::optional<std::size_t> openMenu() const { return open_; }
    std::optional<std::size_t> chosenItem() const { return item_; }
    std::optional<std::size_t> chosenSubItem() const { return subItem_; }

  private:
    using Choice = std::optional<std::size_t>;
    /// An open menu.
    struct List {
        std::size_t menu = 0;
        Choice item;
        Choice subItem;
        bool subIsOpen = false;
    };

    const std::vector<Command>& items() const { return shown_[*open_].commands; }
    const std::vector<Command>* submenu() const;
    void open(std::size_t menu, bool chooseFirst);
    void openBeside(int step);
    void enterSubmenu();
    bool pointerDown(const MouseEvent& event, const std::string& name);
    void moveChoice(int step);
    void choose(const Command& command);
    /// Whether the line still exists: several events may come before the menus are drawn again.
    bool isStill(const std::string& name) const;
    void pointTo(const std::string& name);
    void press(const std::string& name);
    void openByLetter(char32_t letter);
    /// Whether the pointer, coming from the line with the open submenu, is on its way into it.
    bool isHeadingForSubmenu(const MouseEvent& event, const Drawing& drawing) const;
    View titles() const;
    std::vector<View> lists(const List& list, double opacity, double width, double windowHeight,
                            const Language& language) const;

    Source menus_;
    std::vector<Menu> shown_;  ///< as last shown
    bool isShown_ = false;
    Choice open_;
    Choice item_;
    Choice subItem_;
    bool subIsOpen_ = false;
    Choice hoverTitle_;
    double anchorX_ = 0;  ///< where the pointer last was on the line with the open submenu, points
    double anchorY_ = 0;
    std::optional<std::string> waiting_;  ///< the line that it crosses on its way
    std::optional<double> waitingSince_;
    List left_;  ///< the bar or menu that fades away
    Animated opacity_{0};
    Animated listOpacity_{0};
};

}  // namespace gull
