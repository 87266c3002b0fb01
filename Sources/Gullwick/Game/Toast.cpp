#include "Gullwick/Game/Toast.h"

#include <utility>

namespace gull {

void Toast::show(Message text, double seconds) {
    line_ = std::move(text);
    seconds_ = seconds;
    isUnseen_ = waits_;
    isOpening_ = false;
    expiry_ = {};  // cancels the older toast's expiry
    if (!isUnseen_) startTime();
}

void Toast::pictureShown() {
    if (!std::exchange(isUnseen_, false)) return;
    startTime();
    if (!isOpening_) return;
    readableAt_ = loop_.now() + readable;
    if (held_) wait();
}

void Toast::startTime() {
    expiry_ = loop_.after(seconds_, [this] { expire(); });
}

void Toast::showOpening(Message text, double seconds) {
    opened_ = true;
    show(std::move(text), seconds);
    isOpening_ = true;
    readableAt_ = loop_.now() + readable;
}

void Toast::showAfterOpening(std::function<Message()> text, double seconds) {
    held_ = HeldHint{std::move(text), seconds};
    wait();
}

void Toast::dropWaiting() {
    held_.reset();
    waiting_.cancel();
}

void Toast::wait() {
    waiting_ = loop_.after(readableAt_ - loop_.now(), [this] {
        if (isOpening_ && isUnseen_) return;  // its picture starts another wait
        const HeldHint hint = *std::exchange(held_, std::nullopt);
        show(hint.text(), hint.seconds);
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
