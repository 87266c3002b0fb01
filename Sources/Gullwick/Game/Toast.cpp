#include "Gullwick/Game/Toast.h"

#include <utility>

namespace gull {

void Toast::show(Message text, double seconds) {
    line_ = std::move(text);
    seconds_ = seconds;
    isUnseen_ = waits_;
    expiry_ = {};  // cancels the older toast's expiry
    if (!isUnseen_) startTime();
}

void Toast::pictureShown() {
    if (!std::exchange(isUnseen_, false)) return;
    startTime();
}

void Toast::startTime() {
    expiry_ = loop_.after(seconds_, [this] { expire(); });
}

void Toast::showOpening(Message text, double seconds) {
    opened_ = true;
    readableAt_ = loop_.now() + readable;
    show(std::move(text), seconds);
}

void Toast::showAfterOpening(Message text, double seconds) {
    waiting_ = loop_.after(readableAt_ - loop_.now(), [this, text = std::move(text), seconds]() mutable {
        show(std::move(text), seconds);
    });
}

void Toast::queueHint(Message text, double seconds) {
    hints_.push_back({std::move(text), seconds});
    if (opened_ && !line_.get()) showNextHint();
}

void Toast::expire() {
    line_ = std::nullopt;
    if (opened_ && !hints_.empty()) showNextHint();
}

void Toast::showNextHint() {
    Hint hint = std::move(hints_.front());
    hints_.pop_front();
    show(std::move(hint.text), hint.seconds);
}

}  // namespace gull
