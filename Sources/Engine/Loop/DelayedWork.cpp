#include "Engine/Loop/DelayedWork.h"

#include <utility>

namespace gull {

void DelayedWork::after(double delay, std::function<void()> work) {
    pending_.push_back(loop_.after(delay, std::move(work)));
}

void DelayedWork::cancelPending() {
    pending_.clear();
}

}  // namespace gull
