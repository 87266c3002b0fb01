#include "Gullwick/HUD/MenuBar.h"

#include "Gullwick/HUD/Palette.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace gull {

namespace {

constexpr const char* titlePrefix = "menu.title.";
constexpr const char* itemPrefix = "menu.item.";
constexpr const char* subPrefix = "menu.sub.";

/// The number after `prefix`: "menu.item.3" with "menu.item." gives 3.
std::optional<std::size_t> indexIn(const std::string& name, const std::string& prefix) {
    if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0) return std::nullopt;
    return static_cast<std::size_t>(std::stoul(name.substr(prefix.size())));
}

/// The next selectable command, moving by `step` from `from` and wrapping around; `from` may be empty.
std::optional<std::size_t> nextChoice(const std::vector<Command>& commands, std::optional<std::size_t> from,
                                      int step) {
    const auto count = static_cast<int>(commands.size());
    int at = from ? static_cast<int>(*from) : (step > 0 ? -1 : count);
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        if (commands[static_cast<std::size_t>(at)].canBeChosen()) return static_cast<std::size_t>(at);
    }
    return std::nullopt;
}

}  // namespace

const std::vector<Command>* MenuBar::submenu() const {
    if (!open_ || !item_ || items()[*item_].submenu.empty()) return nullptr;
    return &items()[*item_].submenu;
}

void MenuBar::open(std::size_t menu, bool chooseFirst) {
    shown_ = menus_();
    isShown_ = true;
    open_ = menu;
    subIsOpen_ = false;
    subItem_.reset();
    item_ = chooseFirst ? nextChoice(items(), std::nullopt, 1) : std::nullopt;
}

void MenuBar::openBeside(int step) {
    const auto count = static_cast<int>(shown_.size());
    open(static_cast<std::size_t>((static_cast<int>(*open_) + step + count) % count), true);
}

void MenuBar::close() {
    if (open_) left_ = {*open_, item_, subItem_, subIsOpen_};
    waiting_.reset();
    open_.reset();
    item_.reset();
    subItem_.reset();
    subIsOpen_ = false;
}

void MenuBar::dismiss() {
    close();
    isShown_ = false;
}

void MenuBar::enterSubmenu() {
    subIsOpen_ = true;
    subItem_ = nextChoice(*submenu(), std::nullopt, 1);
}

void MenuBar::choose(const Command& command) {
    if (!command.canBeChosen() || !command.action) return;
    // The action may open something else or request the menus again: finish with this one first.
    const std::function<void()> action = command.chosen ? command.chosen : command.action;
    dismiss();
    action();
}

/// To the next item that can be chosen, of the submenu if it is open.
void MenuBar::moveChoice(int step) {
    const std::vector<Command>* sub = subIsOpen_ ? submenu() : nullptr;
    (sub != nullptr ? subItem_ : item_) =
        sub != nullptr ? nextChoice(*sub, subItem_, step) : nextChoice(items(), item_, step);
}

bool MenuBar::handle(const KeyEvent& event) {
    if (event.modifiers.alt && event.key == Key::character) {
        if (!event.isRepeat) openByLetter(event.character);
        return true;
    }
    const bool callsMenu = event.key == Key::f10 || event.key == Key::alt;
    if (!open_) {
        if (!callsMenu || event.isRepeat) return false;
        open(0, true);
        return true;
    }
    const std::vector<Command>* sub = subIsOpen_ ? submenu() : nullptr;
    switch (event.key) {
        case Key::up:
        case Key::down:
            moveChoice(event.key == Key::down ? 1 : -1);
            break;
        case Key::left:
            if (sub != nullptr) {
                subIsOpen_ = false;
                subItem_.reset();
            } else {
                openBeside(-1);
            }
            break;
        case Key::right:
            if (sub == nullptr && submenu() != nullptr) {
                enterSubmenu();
            } else {
                openBeside(1);
            }
            break;
        case Key::returnKey:
        case Key::keypadEnter:
        case Key::space:
            if (event.isRepeat) break;
            if (sub != nullptr && subItem_) {
                choose((*sub)[*subItem_]);
            } else if (submenu() != nullptr) {
                enterSubmenu();
            } else if (item_) {
                choose(items()[*item_]);
            }
            break;
        case Key::escape:
            if (sub != nullptr) {
                subIsOpen_ = false;
                subItem_.reset();
            } else {
                dismiss();
            }
            break;
        case Key::f10:
        case Key::alt:
            if (!event.isRepeat) dismiss();
            break;
        default:
            break;
    }
    return true;
}

/// Titles with the same first letter take turns.
void MenuBar::openByLetter(char32_t letter) {
    const std::vector<Menu> menus = menus_();
    for (std::size_t step = 1; step <= menus.size(); ++step) {
        const std::size_t index = ((open_ ? *open_ : menus.size() - 1) + step) % menus.size();
        const std::string& title = menus[index].title;
        if (title.empty() ||
            static_cast<char32_t>(std::tolower(static_cast<unsigned char>(title[0]))) != letter)
            continue;
        open(index, true);
        return;
    }
}

bool MenuBar::isStill(const std::string& name) const {
    if (const auto index = indexIn(name, itemPrefix)) return open_ && *index < items().size();
    const auto sub = indexIn(name, subPrefix);
    return !sub || (submenu() != nullptr && *sub < submenu()->size());
}

void MenuBar::pointTo(const std::string& name) {
    if (const auto title = indexIn(name, titlePrefix)) {
        if (title != open_) open(*title, false);
    } else if (const auto index = indexIn(name, itemPrefix)) {
        waiting_.reset();
        if (item_ != index) {
            item_ = items()[*index].canBeChosen() ? index : std::nullopt;
            subItem_.reset();
        }
        subIsOpen_ = submenu() != nullptr;
    } else if (const auto sub = indexIn(name, subPrefix)) {
        subItem_ = (*submenu())[*sub].canBeChosen() ? sub : std::nullopt;
    } else if (!subIsOpen_) {
        item_.reset();
    }
}

void MenuBar::press(const std::string& name) {
    if (const auto index = indexIn(name, itemPrefix)) {
        if (items()[*index].submenu.empty()) choose(items()[*index]);
    } else if (const auto sub = indexIn(name, subPrefix)) {
        choose((*submenu())[*sub]);
    }
}

bool MenuBar::isHeadingForSubmenu(const MouseEvent& event, const Drawing& drawing) const {
    const auto target = drawing.find("menu.subpanel");
    if (!subIsOpen_ || !target || event.x <= anchorX_ || target->rect.x <= anchorX_) return false;
    // Within the triangle from where it left the line to the near edge of the submenu.
    constexpr double slack = 8;  // points above and below
    const double share = std::min((event.x - anchorX_) / (target->rect.x - anchorX_), 1.0);
    const double top = anchorY_ + (target->rect.y - slack - anchorY_) * share;
    const double bottom = anchorY_ + (target->rect.y + target->rect.height + slack - anchorY_) * share;
    return event.y >= top && event.y <= bottom;
}

/// On the view `name`, if any. True if the click is the bar's.
bool MenuBar::pointerDown(const MouseEvent& event, const std::string& name) {
    const auto title = indexIn(name, titlePrefix);
    if (title && title != open_) {
        open(*title, false);
        return true;
    }
    // A click that closes a menu does nothing else.
    const bool wasOpen = open_.has_value();
    if (open_ && (title || name.empty())) {
        close();
        if (event.y > farEdge) isShown_ = false;
    }
    return wasOpen || !name.empty() || (isShown_ && event.y < height);
}

bool MenuBar::handle(const MouseEvent& event, const Drawing& drawing, bool pointerIsFree) {
    const std::string seen = isShown_ ? drawing.at(event.x, event.y, "menu.") : std::string();
    const std::string name = isStill(seen) ? seen : std::string();
    switch (event.kind) {
        case MouseEvent::Kind::moved:
            hoverTitle_ = indexIn(name, titlePrefix);
            if (open_ && indexIn(name, itemPrefix) && isHeadingForSubmenu(event, drawing)) {
                waiting_ = name;
                waitingSince_.reset();
            } else if (open_) {
                waiting_.reset();
                pointTo(name);
                if (subIsOpen_ && indexIn(name, itemPrefix)) {
                    anchorX_ = event.x;
                    anchorY_ = event.y;
                }
            } else if (pointerIsFree && event.y < nearEdge) {
                if (!isShown_) shown_ = menus_();
                isShown_ = true;
            } else if (event.y > farEdge) {
                isShown_ = false;
            }
            return open_.has_value();
        case MouseEvent::Kind::down:
            return pointerDown(event, name);
        case MouseEvent::Kind::up: {
            if (!open_) return false;
            const bool onLine = !name.empty() && !indexIn(name, titlePrefix);
            if (onLine) press(name);
            return true;
        }
        case MouseEvent::Kind::left:
            hoverTitle_.reset();
            if (!open_) isShown_ = false;
            return false;
    }
    return false;
}

void MenuBar::follow(double now) {
    opacity_.moveTo(isShown_ ? 1 : 0, TimingCurve::easeOut(fadeSeconds), now);
    listOpacity_.moveTo(open_ ? 1 : 0, TimingCurve::easeOut(fadeSeconds), now);
    if (!waiting_) return;
    if (!waitingSince_) waitingSince_ = now;
    if (now - *waitingSince_ < detour) return;
    const std::string name = *std::exchange(waiting_, std::nullopt);
    if (isStill(name)) pointTo(name);
}

}  // namespace gull
