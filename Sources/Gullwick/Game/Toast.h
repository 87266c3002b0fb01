#pragma once

#include "Engine/Language/Message.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Loop/Published.h"

#include <deque>
#include <functional>
#include <optional>

namespace gull {

/// The one line of text that comes and goes. A newer toast replaces an older one, whose expiry then has no
/// effect. Hints wait until a beach's opening toast has had its time, so that messages about the machine do
/// not interrupt the game's first words.
class Toast {
  public:
    static constexpr double readable = 2.5;  ///< seconds that an opening toast is left alone

    using Line = Published<std::optional<Message>>;

    /// Both are owned by the caller and must outlive this object; `line` is what observers see.
    Toast(MainLoop& loop, Line& line) : loop_(loop), line_(line) {}

    /// From now on a toast's time starts only when pictureShown() says that it can be seen.
    void waitForPictures() { waits_ = true; }
    void pictureShown();
    /// Shows `text` for `seconds`.
    void show(Message text, double seconds);
    /// The same, for the toast that opens a beach: hints may follow it.
    void showOpening(Message text, double seconds);
    /// The same, after the opening toast has been up for `readable` seconds; a newer one replaces one that
    /// still waits. `text` is asked for when it is shown: much may be known by then.
    void showAfterOpening(std::function<Message()> text, double seconds);
    /// Cancels anything that showAfterOpening() still holds back.
    void dropWaiting();
    /// Shows `text` when the current toast ends, but not before an opening toast was shown. Hints follow one
    /// another.
    void queueHint(Message text, double seconds);

  private:
    struct Hint {
        Message text;
        double seconds;
    };
    struct HeldHint {
        std::function<Message()> text;
        double seconds;
    };
    void startTime();
    void wait();
    void expire();
    void showNextHint();

    MainLoop& loop_;
    Line& line_;
    MainLoop::Timer expiry_;
    MainLoop::Timer waiting_;
    std::optional<HeldHint> held_;  // by the opening toast
    double readableAt_ = 0;         // when the opening toast may be replaced
    double seconds_ = 0;            // that the current toast lasts
    bool waits_ = false;
    bool isUnseen_ = false;
    bool isOpening_ = false;
    std::deque<Hint> hints_;
    bool opened_ = false;
};

}  // namespace gull
