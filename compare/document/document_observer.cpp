#include "compare/document/document_observer.h"

#include <algorithm>

namespace zorvane {

void ObserverList::Remove(DocumentObserver& observer) {
    if (!Busy()) {
        std::erase(observers_, &observer);
        return;
    }
    // Whoever notifies walks by index, so the places stay until it is done.
    std::replace(observers_.begin(), observers_.end(), &observer,
                 static_cast<DocumentObserver*>(nullptr));
}

ObserverList::Notifying::~Notifying() {
    if (--list_.depth_ == 0)
        std::erase(list_.observers_, nullptr);
}

}  // namespace zorvane
