// Those who hear of the edits of a document, and the list of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/base/number.h"

namespace zorvane {

/// Is told of each edit after it is done, in positions of the text: before the edit for what was
/// removed, after it for what was inserted. Who applies the notices one after the other to a copy
/// of the text has the text. An observer reads the document as it likes, adds and removes observers
/// (itself too), and does not edit.
class DocumentObserver {
  public:
    DocumentObserver() = default;
    DocumentObserver(const DocumentObserver&) = default;
    DocumentObserver& operator=(const DocumentObserver&) = default;
    virtual ~DocumentObserver() = default;

    /// `removed` units at `first` gave way to `inserted` others.
    virtual void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) = 0;
    /// The text is the same, its character or paragraph formats are not.
    virtual void Reformatted(CharPos first, std::int32_t length) = 0;
    /// Everything may be different: a load, a run's result, a large batch.
    virtual void Reset() = 0;
    /// The selection was moved, by an edit or without one. Comes behind the notice of the edit.
    virtual void SelectionChanged() {}
};

/// Observers in the order in which they came. Adding and removing is safe inside a notice: who is
/// removed hears nothing any more, who is added hears the next one.
class ObserverList {
  public:
    /// Borrowed; to be removed before it dies.
    void Add(DocumentObserver& observer) { observers_.push_back(&observer); }
    void Remove(DocumentObserver& observer);
    /// Calls `notice(observer)` for each.
    template <class Notice>
    void Notify(const Notice& notice) {
        const Notifying level(*this);
        const std::size_t count = observers_.size();
        for (std::size_t at = 0; at < count; ++at) {
            if (observers_[at] != nullptr)
                notice(*observers_[at]);
        }
    }
    bool Busy() const { return depth_ > 0; }

  private:
    class Notifying {
      public:
        explicit Notifying(ObserverList& list) : list_(list) { ++list_.depth_; }
        ~Notifying();
        Notifying(const Notifying&) = delete;
        Notifying& operator=(const Notifying&) = delete;

      private:
        ObserverList& list_;
    };

    std::vector<DocumentObserver*> observers_;  // nothing: removed inside a notice
    int depth_ = 0;
};

}  // namespace zorvane
