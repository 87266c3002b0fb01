#include "Engine/Stage/Stage.h"

namespace gull {

namespace {

// How many changed places are told apart; the oldest ones share a box. A window may be hidden for long, and
// its picture is worth keeping.
constexpr std::size_t rememberedTouches = 256;

std::uint64_t nextId() {
    static std::uint64_t last = 0;
    return ++last;
}

}  // namespace

Stage::Stage() : root("root"), id_(nextId()) {
    root.layer = Layer::still;
}

void Stage::touchStill() {
    wholeSerial_ = ++serial_;
    touches_.clear();
}

void Stage::touchStill(const Box& box) {
    remember(box, false);
}

void Stage::touchPaint(const Box& box) {
    remember(box, true);
}

void Stage::remember(const Box& box, bool onlyPaint) {
    if (box.empty()) return;
    touches_.push_back({++serial_, box, onlyPaint});
    if (touches_.size() > rememberedTouches) {
        const StillChange oldest = touches_.front();
        touches_.pop_front();
        touches_.front().box.include(oldest.box);
        touches_.front().onlyPaint &= oldest.onlyPaint;
    }
}

std::optional<std::vector<Stage::StillChange>> Stage::stillChangesSince(std::uint64_t serial) const {
    if (serial < wholeSerial_) return std::nullopt;
    std::vector<StillChange> changes;
    for (const StillChange& touch : touches_) {
        if (touch.serial > serial) changes.push_back(touch);
    }
    return changes;
}

}  // namespace gull
