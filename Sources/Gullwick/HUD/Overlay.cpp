#include "Gullwick/HUD/Overlay.h"

#include "Gullwick/Settings/AppSettings.h"

#include <algorithm>
#include <cmath>

namespace gull {

Overlay::Overlay(const GameController& game, const AppSettings& settings, ItemIcons& icons,
                 std::function<std::vector<Menu>()> menus)
    : game_(game), settings_(settings), icons_(icons), menuBar_(std::move(menus)) {}

const std::vector<Sheet>& Overlay::update(double now, double width, double height, double scale) {
    Shown next;
    next.state = HudState::of(game_, settings_.showTicks());
    motion_.follow(next.state, now, settings_.reduceMotion());
    next.pose = motion_.pose(now);
    next.width = width;
    next.height = height;
    next.scale = scale;
    // A finger that steers has no pointer to leave the bar with.
    if (game_.captured && !menuBar_.isOpen()) menuBar_.dismiss();
    menuBar_.follow(now);
    const bool chromeMoves = menuBar_.isMoving(now);
    // A card that fades away shows the beach that it was about, not the one that follows.
    if (next.state.isFinished()) ended_ = next.state;

    if (shown_ == next && !chromeChanged_ && !chromeMoves) {
        sheets_.showAgain();
    } else {
        shown_ = std::move(next);
        sheets_.show(Drawing(view(width, height, now), width, height, scale), width, height, scale);
        chromeChanged_ = chromeMoves;  // its last step is still to be drawn
    }
    return sheets_.sheets();
}

View Overlay::view(double width, double height, double now) {
    const HudState& state = shown_->state;
    const HUDView hud{state, ended_ ? *ended_ : state, shown_->pose, icons_, width, height};
    std::vector<View> all = views(hud.body(), menuBar_.body(now, width, height));
    if (alert_) all.push_back(alert_->body());
    return layers(std::move(all)).framed(width, height);
}

bool Overlay::prepareIcon() {
    return icons_.prepareOne(game_.spec);
}

bool Overlay::handle(const KeyEvent& event) {
    if (alert_) {
        // Answering may put up another card.
        AlertCard card = std::move(*alert_);
        alert_.reset();
        card.handle(event);
        if (!card.isAnswered()) alert_ = std::move(card);
        chromeChanged_ = true;
        return true;
    }
    const bool taken = menuBar_.handle(event);
    chromeChanged_ = chromeChanged_ || taken;
    return taken;
}

bool Overlay::handle(const MouseEvent& event) {
    if (alert_) {
        AlertCard card = std::move(*alert_);
        alert_.reset();
        card.handle(event, sheets_.drawing());
        if (!card.isAnswered()) alert_ = std::move(card);
        chromeChanged_ = true;
        return true;
    }
    const bool taken = menuBar_.handle(event, sheets_.drawing(), !game_.captured);
    chromeChanged_ = chromeChanged_ || taken;
    return taken;
}

bool Overlay::wantsInput() const {
    return alert_.has_value() || menuBar_.isOpen();
}

void Overlay::showAbout(const std::string& version) {
    alert_ = aboutCard(version);
    chromeChanged_ = true;
}

void Overlay::askReset(std::function<void()> confirmed) {
    alert_ = resetAlert(std::move(confirmed));
    chromeChanged_ = true;
}

}  // namespace gull
