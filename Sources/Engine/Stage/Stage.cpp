#include "Engine/Stage/Stage.h"

namespace gull {

namespace {

// How many places are told apart before a renderer that looks away gets told that everything changed.
constexpr std::size_t rememberedTouches = 256;

}  // namespace

Stage::Stage() : root("root") {
    root.layer = Layer::kept;
}

void Stage::touchKept() {
    wholeSerial_ = ++serial_;
    touches_.clear();
}

void Stage::touchKept(const Box& box) {
    if (box.empty()) return;
    touches_.push_back({++serial_, box});
    if (touches_.size() > rememberedTouches) {
        wholeSerial_ = touches_.front().serial;
        touches_.pop_front();
    }
}

std::optional<std::vector<Box>> Stage::keptChangesSince(std::uint64_t serial) const {
    if (serial < wholeSerial_) return std::nullopt;
    std::vector<Box> boxes;
    for (const Touch& touch : touches_) {
        if (touch.serial > serial) boxes.push_back(touch.box);
    }
    return boxes;
}

}  // namespace gull
