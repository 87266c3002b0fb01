#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Language/Language.h"
#include "Engine/Views/Drawing.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// A card that asks or tells something and takes all input until it is answered, by mouse or by keys alone:
/// arrows and Tab move the focus, Return and Space press the focused button, Escape presses the safe one.
class AlertCard {
  public:
    struct Button {
        std::string title;
        std::function<void()> action = {};  ///< may be empty
        bool destructive = false;
    };

    /// `safe`: the button that Escape presses and that has the focus at first. `asks`: it must be answered;
    /// otherwise a click beside it presses the safe button, too.
    AlertCard(View content, std::vector<Button> buttons, std::size_t safe, bool asks);

    /// Takes the event. Buttons run their action at once.
    void handle(const KeyEvent& event);
    /// `drawing` holds the positions of the buttons.
    void handle(const MouseEvent& event, const Drawing& drawing);
    /// True once a button was pressed.
    bool isAnswered() const { return answered_; }
    std::size_t focus() const { return focus_; }
    bool asks() const { return asks_; }

    /// The card in the middle of a dimmed window, both at `opacity` (0 to 1). Named views: alert,
    /// alert.button.0 and so on.
    View body(double opacity = 1) const;

  private:
    void press(std::size_t button);
    /// All are as wide as the longest title needs.
    double buttonsWidth() const;
    View button(std::size_t index) const;

    View content_;
    std::vector<Button> buttons_;
    std::size_t safe_;
    std::size_t focus_;
    bool asks_;
    std::optional<std::size_t> hover_;
    bool answered_ = false;
    bool pressing_ = false;  ///< the mouse went down on the button that has the focus
};

/// Name, version and licence.
AlertCard aboutCard(const std::string& version, const Language& language = {});
/// Asks for confirmation before all progress is erased; `confirmed` runs if the player agrees.
AlertCard resetAlert(std::function<void()> confirmed, const Language& language = {});

}  // namespace gull
