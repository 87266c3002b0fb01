#include "Gullwick/HUD/AlertCard.h"

#include "Engine/Log/Require.h"
#include "Engine/Views/Layout.h"
#include "Gullwick/HUD/Palette.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace gull {

namespace {

constexpr const char* buttonPrefix = "alert.button.";
constexpr double buttonWidth = 118;  // at least
constexpr double buttonPadding = 14;
constexpr double textWidth = 330;

/// The button under the pointer.
std::optional<std::size_t> buttonAt(const MouseEvent& event, const Drawing& drawing) {
    const std::string name = drawing.at(event.x, event.y, buttonPrefix);
    if (name.empty()) return std::nullopt;
    return static_cast<std::size_t>(std::stoul(name.substr(std::string(buttonPrefix).size())));
}

}  // namespace

AlertCard::AlertCard(View content, std::vector<Button> buttons, std::size_t safe, bool asks)
    : content_(std::move(content)), buttons_(std::move(buttons)), safe_(safe), focus_(safe), asks_(asks) {
    require(safe_ < buttons_.size(), "AlertCard: button {} of {}", safe_, buttons_.size());
}

void AlertCard::press(std::size_t button) {
    answered_ = true;
    if (buttons_[button].action) buttons_[button].action();
}

void AlertCard::handle(const KeyEvent& event) {
    const std::size_t count = buttons_.size();
    switch (event.key) {
        case Key::escape:
            return press(safe_);
        case Key::returnKey:
        case Key::keypadEnter:
        case Key::space:
            // A key still held from the game must not answer.
            if (!event.isRepeat) press(focus_);
            return;
        case Key::left:
        case Key::up:
            focus_ = focus_ == 0 ? 0 : focus_ - 1;
            return;
        case Key::right:
        case Key::down:
            focus_ = focus_ + 1 == count ? focus_ : focus_ + 1;
            return;
        case Key::tab:
            focus_ = (focus_ + (event.modifiers.shift ? count - 1 : 1)) % count;
            return;
        default:
            return;
    }
}

void AlertCard::handle(const MouseEvent& event, const Drawing& drawing) {
    const std::optional<std::size_t> under = buttonAt(event, drawing);
    hover_ = event.kind == MouseEvent::Kind::left ? std::nullopt : under;
    if (event.kind == MouseEvent::Kind::down) {
        if (!asks_ && drawing.at(event.x, event.y, "alert").empty()) return press(safe_);
        pressing_ = under.has_value() && event.button == 1;
        if (pressing_) focus_ = *under;
    } else if (event.kind == MouseEvent::Kind::up) {
        const bool chosen = pressing_ && under == focus_;
        pressing_ = false;
        if (chosen) press(focus_);
    }
}

double AlertCard::buttonsWidth() const {
    double width = buttonWidth;
    for (const Button& button : buttons_) {
        const View title = text(button.title, Type::sans(13, FontWeight::semibold), Palette::cream);
        width = std::max(width, Layout::measure(title).width + 2 * buttonPadding);
    }
    return width;
}

View AlertCard::button(std::size_t index) const {
    const Button& own = buttons_[index];
    const bool focused = index == focus_;
    const Colour accent = own.destructive ? Palette::coral : Palette::sea;
    ShapeStyle face = roundedRectangle(7);
    // A hovered button is lighter, a pressed one darker.
    const bool hovered = index == hover_;
    const double light = hovered ? (pressing_ && focused ? -1 : 1) : 0;
    face =
        focused
            ? face.filled(mixed(accent, light < 0 ? Palette::black : Palette::white, 0.22 * std::abs(light))
                              .withAlpha(0.9 + 0.1 * std::max(light, 0.0)))
            : face.filled(Palette::cream.withAlpha(hovered ? 0.16 : 0.06));
    const Colour ink =
        focused ? Colour{0.01, 0.06, 0.08, 1} : (own.destructive ? Palette::coral : Palette::cream);
    View name = text(own.title, Type::sans(13, FontWeight::semibold), ink)
                    .framed(buttonsWidth(), 34)
                    .behind(shape(face.stroked(focused ? accent : Palette::cream.withAlpha(0.28))));
    return std::move(name).named(buttonPrefix + std::to_string(index));
}

View AlertCard::body(double opacity) const {
    std::vector<View> row1;
    for (std::size_t i = 0; i < buttons_.size(); ++i) row1.push_back(button(i));
    View content = content_;
    View outline = shape(roundedRectangle(14).filled({0.02, 0.08, 0.1, 0.94}).stroked(Palette::panelLine))
                       .shadowed(Palette::black.withAlpha(0.5), 30);
    return layers(
        views(shape(rectangle().filled(Palette::black.withAlpha(0.35))).onLayer("alert.backdrop", opacity),
              column(22, Place::centre, views(std::move(content), row(12, Place::centre, std::move(row1))))
                  .padded(34, 28, 34, 26)
                  .behind(std::move(outline))
                  .named("alert")
                  .onLayer("alert", opacity)));
}

namespace {

View credit(const std::string& words) {
    return text(words, Type::sans(12), Palette::cream.withAlpha(0.7), 0, TextAlign::centre)
        .noWiderThan(textWidth);
}

}  // namespace

AlertCard aboutCard(const std::string& version, const Language& language) {
    View content = column(
        7, Place::centre,
        views(
            sign(Symbol::waves, 26, Palette::sea),
            text("GULLWICK", Type::mono(24, FontWeight::bold), Palette::cream, 8).padded(0, 8, 0, 0),
            text(language.tr("Version {}", version), Type::mono(11, FontWeight::semibold), Palette::dim, 1.5),
            text(language.tr("Free software under the MIT License"), Type::italic(15),
                 Palette::cream.withAlpha(0.85))
                .padded(0, 6, 0, 6),
            credit(language.tr("Every picture, every model and every sound is made by code while it runs.")),
            credit(language.tr("Built on {}. Set in {}.",
                               "SDL, libepoxy, Cairo, Pango, fontconfig, GLM, {fmt}, JSON for Modern C++, "
                               "libevdev, libudev",
                               "JetBrains Mono, Vollkorn, Inter"))));
    return {std::move(content), {{.title = language.tr("Close")}}, 0, false};
}

AlertCard resetAlert(std::function<void()> confirmed, const Language& language) {
    View content = column(
        10, Place::centre,
        views(text(language.tr("Reset all progress?"), Type::sans(17, FontWeight::bold), Palette::cream),
              text(language.tr("Your stars and best hauls are erased and you start again from beach 1."),
                   Type::sans(13), Palette::cream.withAlpha(0.78), 0, TextAlign::centre)
                  .noWiderThan(textWidth)));
    return {std::move(content),
            {{.title = language.tr("Reset"), .action = std::move(confirmed), .destructive = true},
             {.title = language.tr("Cancel")}},
            1,
            true};
}

}  // namespace gull
