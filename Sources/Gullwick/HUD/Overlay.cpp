#include "Gullwick/HUD/Overlay.h"

#include "Gullwick/Settings/AppSettings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace gull {

Overlay::Overlay(const GameController& game, const AppSettings& settings, const Language& language,
                 ItemIcons& icons, std::function<std::vector<Menu>()> menus)
    : game_(game), settings_(settings), language_(language), icons_(icons), menuBar_(std::move(menus)) {
    const auto note = [this] { stateMayHaveChanged_ = true; };
    gameObservation_ = game.changes().observe(note);
    settingsObservation_ = settings.changes().observe(note);
}

void Overlay::readState() {
    if (!std::exchange(stateMayHaveChanged_, false) && state_.language == language_) return;
    HudState state = HudState::of(game_, settings_.showTicks(), language_);
    if (notice_) state.notice = language_.tr(notice_->words);
    if (state == state_) return;
    stateChanged_ = true;
    state_ = std::move(state);
    // A fading card shows its own beach, not the one that follows.
    if (state_.isFinished()) ended_ = state_;
}

void Overlay::followNotice(double now) {
    if (!notice_) return;
    if (!notice_->until) notice_->until = now + notice_->seconds;
    if (now < *notice_->until) return;
    notice_.reset();
    stateMayHaveChanged_ = true;
}

const std::vector<OverlayLayer>& Overlay::update(double now, double width, double height, double scale) {
    followNotice(now);
    readState();
    const bool stateChanged = std::exchange(stateChanged_, false);
    motion_.follow(state_, now, settings_.reduceMotion());
    Shown next{.pose = motion_.pose(now), .width = width, .height = height, .scale = scale};
    // A steering finger has no pointer to leave the bar with.
    if (game_.captured && !menuBar_.isOpen()) menuBar_.dismiss();
    menuBar_.follow(now);
    alertOpacity_.moveTo(alert_ ? 1 : 0, TimingCurve::easeOut(HudMotion::toastSeconds), now);
    const bool chromeMoves = menuBar_.isMoving(now) || alertOpacity_.isMoving(now);
    if (!alert_ && !chromeMoves) leaving_.reset();

    if (shown_ == next && !stateChanged && !chromeChanged_ && !chromeMoves) {
        layers_.showAgain();
    } else {
        shown_ = std::move(next);
        layers_.show(Drawing(view(width, height, now), width, height, scale), width, height, scale);
        chromeChanged_ = chromeMoves;  // its last step still has to be drawn
    }
    return layers_.layers();
}

View Overlay::view(double width, double height, double now) {
    const HUDView hud{state_, ended_ ? *ended_ : state_, shown_->pose, icons_, width, height};
    std::vector<View> all = views(hud.body(), menuBar_.body(now, width, height, language_));
    if (const AlertCard* card = alert_ ? &*alert_ : (leaving_ ? &*leaving_ : nullptr))
        all.push_back(card->body(alertOpacity_.value(now)));
    return layers(std::move(all)).framed(width, height);
}

bool Overlay::prepareIcon() {
    return icons_.prepareOne(game_.spec);
}

template <typename Handle>
void Overlay::answer(const Handle& handle) {
    // Answering may put up another card.
    AlertCard card = std::move(*alert_);
    alert_.reset();
    handle(card);
    std::optional<AlertCard>& place = card.isAnswered() ? leaving_ : alert_;
    if (!alert_) place = std::move(card);
    chromeChanged_ = true;
}

void Overlay::put(AlertCard card) {
    alert_ = std::move(card);
    leaving_.reset();
    chromeChanged_ = true;
}

bool Overlay::handle(const KeyEvent& event) {
    if (alert_) {
        answer([&](AlertCard& card) { card.handle(event); });
        return true;
    }
    const bool taken = menuBar_.handle(event);
    chromeChanged_ = chromeChanged_ || taken;
    return taken;
}

bool Overlay::handle(const MouseEvent& event) {
    if (alert_) {
        answer([&](AlertCard& card) { card.handle(event, layers_.drawing()); });
        return true;
    }
    const auto titleBefore = menuBar_.hoverTitle();
    const bool taken = menuBar_.handle(event, layers_.drawing(), !game_.captured);
    chromeChanged_ = chromeChanged_ || taken || menuBar_.hoverTitle() != titleBefore;
    return taken;
}

bool Overlay::wantsInput() const {
    return alert_.has_value() || menuBar_.isOpen();
}

void Overlay::closeMenu() {
    if (!menuBar_.isOpen()) return;
    menuBar_.dismiss();
    chromeChanged_ = true;
}

bool Overlay::isMoving(double now) {
    readState();
    return stateChanged_ || chromeChanged_ || notice_ || menuBar_.isMoving(now) ||
           alertOpacity_.isMoving(now) || motion_.isMoving(now);
}

void Overlay::tell(Message words, double seconds) {
    notice_ = Notice{std::move(words), seconds, std::nullopt};
    stateMayHaveChanged_ = true;
}

void Overlay::showAbout(const std::string& version) {
    put(aboutCard(version, language_));
}

void Overlay::askReset(std::function<void()> confirmed) {
    put(resetAlert(std::move(confirmed), language_));
}

}  // namespace gull
