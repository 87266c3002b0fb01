#include "Engine/Loop/Published.h"

namespace gull {

ChangeNotifier::ObserverId ChangeNotifier::observe(std::function<void()> observer) {
    observers_.push_back(std::make_shared<Observer>(Observer{nextId_, std::move(observer)}));
    return nextId_++;
}

void ChangeNotifier::stopObserving(ObserverId id) {
    std::erase_if(observers_, [id](const std::shared_ptr<Observer>& observer) {
        if (observer->id != id) return false;
        observer->active = false;
        return true;
    });
}

void ChangeNotifier::willChange() {
    if (observers_.empty()) return;
    if (observers_.size() == 1) {  // by far the most usual case, and it runs several times a frame
        const std::shared_ptr<Observer> only = observers_.front();
        only->callback();
        return;
    }
    // A copy of the list, because an observer may change it.
    const std::vector<std::shared_ptr<Observer>> observers = observers_;
    for (const auto& observer : observers) {
        if (observer->active) observer->callback();
    }
}

}  // namespace gull
