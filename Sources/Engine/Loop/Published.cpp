#include "Engine/Loop/Published.h"

namespace gull {

ChangeNotifier::Observation ChangeNotifier::observe(std::function<void()> observer) {
    std::erase_if(observers_, [](const std::weak_ptr<const Observer>& other) { return other.expired(); });
    auto observation = std::make_shared<const Observer>(std::move(observer));
    observers_.push_back(observation);
    return observation;
}

void ChangeNotifier::willChange() {
    if (observers_.empty()) return;
    if (observers_.size() == 1) {  // by far the most usual case, and it runs several times a frame
        if (const auto only = observers_.front().lock()) (*only)();
        return;
    }
    // A copy of the list, because an observer may change it.
    const std::vector<std::weak_ptr<const Observer>> observers = observers_;
    for (const auto& observer : observers) {
        if (const auto active = observer.lock()) (*active)();
    }
}

}  // namespace gull
