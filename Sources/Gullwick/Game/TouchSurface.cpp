#include "Gullwick/Game/TouchSurface.h"

#include "GullCore/Beach.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Settings/AppSettings.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <optional>

namespace gull {
namespace {

constexpr double toastSeconds = 3.4;
constexpr int leftButton = 1;

/// A freed pointer moves by itself, back to where it was locked. Its motion within this time (seconds) or
/// this distance (points) is not the player's.
constexpr double pointerRest = 0.15;
constexpr double pointerSlack = 3;

bool contains(const std::vector<std::int64_t>& ids, std::int64_t id) {
    return std::ranges::find(ids, id) != ids.end();
}

}  // namespace

TouchSurface::TouchSurface(GameController& game, AppSettings& settings, PointerLock& pointer,
                           const Clock& clock)
    : game_(game), settings_(settings), pointer_(pointer), clock_(clock) {}

TouchSurface::~TouchSurface() {
    release();
}

void TouchSurface::touches(const std::vector<Contact>& contacts) {
    down_.clear();
    for (const Contact& contact : contacts) down_.push_back(contact.id);
    std::erase_if(barred_, [this](std::int64_t id) { return !contains(down_, id); });
    if (!attends()) {
        barred_ = down_;
        return;
    }
    if (!settings_.trackpadSweep()) return;

    const Contact* steering = nullptr;
    for (const Contact& contact : contacts) {
        if (contains(barred_, contact.id)) continue;
        if (!steering || contact.y > steering->y) steering = &contact;
    }
    if (steering) {
        engage();
        steer(*steering);
    } else if (liftedAt_ < 0) {
        liftedAt_ = clock_.now();
    }
}

void TouchSurface::steer(const Contact& finger) {
    if (steering_ != finger.id || liftedAt_ >= 0) touchedAt_ = clock_.now();
    steering_ = finger.id;
    liftedAt_ = -1;
    // A click rolls the finger a little: the coil must dig where it was.
    if (holdsTarget()) {
        waiting_ = finger;
    } else {
        waiting_.reset();
        game_.fingerMoved(finger.x, finger.y);
    }
}

void TouchSurface::update() {
    if (!waiting_ || holdsTarget()) return;
    game_.fingerMoved(waiting_->x, waiting_->y);
    waiting_.reset();
}

void TouchSurface::mouse(const MouseEvent& event) {
    switch (event.kind) {
        case MouseEvent::Kind::moved:
            if (!captured_ && attends() && isMovedByHand(event) &&
                game_.phase != GameController::Phase::selecting)
                game_.setTarget(game_.world().plotPoint({event.x, event.y}, viewSize_));
            break;
        case MouseEvent::Kind::down:
            // A desktop may turn a corner of the pad into another button: while a finger steers, every button
            // clicks.
            if (!captured_) {
                if (event.button != leftButton || !attends()) break;
                if (game_.phase == GameController::Phase::playing)
                    game_.setTarget(game_.world().plotPoint({event.x, event.y}, viewSize_));
            }
            pressed(event.button);
            break;
        case MouseEvent::Kind::up:
            released(event.button);
            break;
        case MouseEvent::Kind::left:
            break;
    }
}

void TouchSurface::pressed(int button) {
    if (!attends()) return;
    buttons_ |= 1U << (static_cast<unsigned>(button) % 32);
    // The finger is up again before the coil has arrived, and the tapped place must be dug.
    if (hasTapped()) game_.arrive();
    game_.click();
}

void TouchSurface::released(int button) {
    const unsigned bit = 1U << (static_cast<unsigned>(button) % 32);
    if (!(buttons_ & bit)) return;
    buttons_ &= ~bit;
    if (buttons_ == 0) heldUntil_ = clock_.now() + clickHold;
}

bool TouchSurface::holdsTarget() const {
    return buttons_ != 0 || clock_.now() < heldUntil_;
}

bool TouchSurface::hasTapped() const {
    return captured_ && liftedAt_ >= 0 && liftedAt_ - touchedAt_ <= tapLength &&
           clock_.now() - liftedAt_ <= tapDelay;
}

bool TouchSurface::isMovedByHand(const MouseEvent& event) {
    if (settings_.trackpadSweep() && !barred_.empty()) return false;
    if (!isPointerFresh_) return true;
    const glm::dvec2 at{event.x, event.y};
    if (!restsAt_ || clock_.now() - freedAt_ < pointerRest) {
        restsAt_ = at;
        return false;
    }
    isPointerFresh_ = glm::distance(at, *restsAt_) < pointerSlack;
    return !isPointerFresh_;
}

bool TouchSurface::key(const KeyEvent& event) {
    if (event.modifiers.command || event.modifiers.alt) return false;
    const auto move = [&](int dx, int dy) {
        game_.key(KeyAction::Move{dx, dy});
        return true;
    };
    switch (event.key) {
        case Key::left:
            return move(-1, 0);
        case Key::right:
            return move(1, 0);
        case Key::down:
            return move(0, 1);
        case Key::up:
            return move(0, -1);
        default:
            break;
    }

    // All keys but the arrows act once, however long they are held.
    const auto act = [&](const KeyAction::Any& action) {
        if (!event.isRepeat) game_.key(action);
        return true;
    };
    switch (event.key) {
        case Key::returnKey:
        case Key::space:
        case Key::keypadEnter:
            return act(KeyAction::Confirm{});
        case Key::escape:
            if (game_.phase == GameController::Phase::selecting) return act(KeyAction::Back{});
            if (!event.isRepeat) toggleTrackpad();
            return true;
        case Key::character:
            break;
        default:
            return false;
    }
    switch (event.character) {
        case U'h':
        case U'H':
            return act(KeyAction::Ping{});
        case U'r':
        case U'R':
            return act(KeyAction::Restart{});
        case U'l':
        case U'L':
            return act(KeyAction::Levels{});
        case U'n':
        case U'N':
            return act(KeyAction::Next{});
        case U'p':
        case U'P':
            return act(KeyAction::Pause{});
        default:
            return false;
    }
}

void TouchSurface::stick(double x, double y, double dt) {
    const double tilt = std::hypot(x, y);
    if (!attends()) return;
    if (game_.phase == GameController::Phase::selecting) {
        if (tilt < stickTilt / 2) stickStepped_ = false;
        if (tilt < stickTilt || stickStepped_) return;
        stickStepped_ = true;
        if (std::abs(x) > std::abs(y))
            game_.key(KeyAction::Move{x > 0 ? 1 : -1, 0});
        else
            game_.key(KeyAction::Move{0, y > 0 ? -1 : 1});
        return;
    }
    if (tilt <= 0) return;
    const double live = std::min(tilt, 1.0);
    // Squared, so that a small tilt places the coil finely. The plot is wider than deep, so the same distance
    // on the sand is a smaller share of its width.
    const double way = stickSpeed * live * live * dt / tilt;
    const PlotPoint target = game_.target();
    game_.setTarget(PlotPoint{target.x + x * way / Plot::aspect, target.y + y * way}.clamped());
}

void TouchSurface::perform(const KeyAction::Any& action) {
    if (attends()) game_.key(action);
}

void TouchSurface::toggleTrackpad() {
    setTrackpad(!captured_);
}

void TouchSurface::setTrackpad(bool on) {
    if (!on) release();
    settings_.trackpadSweep = on;
    const auto text = [&] {
        if (!on)
            return message("Pointer freed — the mouse moves the detector now. Esc to use the trackpad again");
        return game_.controls->kind == Controls::Kind::trackpad
                   ? message("Trackpad sweep on — rest a finger on the trackpad")
                   : message("There is no trackpad to sweep with — the mouse moves the detector");
    };
    game_.showToast(text(), toastSeconds);
}

void TouchSurface::trackpadLost() {
    release();
    game_.showToast(message("Trackpad unplugged — the mouse moves the detector now"), toastSeconds);
}

void TouchSurface::trackpadFound() {
    if (settings_.trackpadSweep())
        game_.showToast(message("Trackpad plugged in — rest a finger on it"), toastSeconds);
}

void TouchSurface::engage() {
    if (captured_) return;
    captured_ = true;
    pointer_.lock();
    game_.captured = true;
}

void TouchSurface::release() {
    if (!captured_) return;
    captured_ = false;
    pointer_.unlock();
    game_.captured = false;
    isPointerFresh_ = true;
    freedAt_ = clock_.now();
    restsAt_.reset();
}

void TouchSurface::focusGained() {
    focused_ = true;
}

void TouchSurface::focusLost() {
    focused_ = false;
    leave();
}

void TouchSurface::setCovered(bool covered) {
    covered_ = covered;
    if (covered) leave();
}

/// Fingers that are down count again only after being lifted; held buttons are forgotten.
void TouchSurface::leave() {
    barred_ = down_;
    buttons_ = 0;
    waiting_.reset();
    release();
}

}  // namespace gull
