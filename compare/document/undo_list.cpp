#include "compare/document/undo_list.h"

#include <algorithm>
#include <utility>

#include "compare/document/text_boundaries.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLongestJoined = 10'000;  // a key held down long enough is several undos

// A word is over where something else than a blank follows a blank. A break is a step of its own.
bool EndsWord(char16_t last, char16_t next) {
    return EndsLine(last) || EndsLine(next) || (IsBlankUnit(last) && !IsBlankUnit(next));
}

// A change of formats touches places, not lengths.
std::int32_t LengthAfter(const EditStep& step) {
    return step.part == EditStep::Part::Text ? step.old.Length() : step.length;
}

// The range of a text that a number of steps, done one after the other, changed.
class ChangedRange {
  public:
    void Add(CharPos first, std::int32_t length, std::int32_t length_after) {
        const CharPos end = first + length;
        begin_ = any_ ? std::min(begin_, first) : first;
        any_ = true;
        end_ = std::max(end_, end) + (length_after - length);
    }
    TextRange range() const { return TextRange::Between(begin_, end_); }

  private:
    bool any_ = false;
    CharPos begin_;
    CharPos end_;
};

}  // namespace

std::size_t EditStep::Bytes() const {
    return sizeof(EditStep) + old.text.capacity() * sizeof(char16_t) +
           old.char_runs.capacity() * sizeof(CharRun) +
           old.paragraph_runs.capacity() * sizeof(ParagraphRun);
}

std::size_t UndoList::Entry::Bytes() const {
    std::size_t bytes = sizeof(Entry);
    for (const EditStep& step : steps)
        bytes += step.Bytes();
    return bytes;
}

bool UndoList::Join(const EditStep& step, EditKind kind, std::u16string_view typed) {
    if (!joins_ || done_ == 0 || CanRedo() || kind == EditKind::Other)
        return false;
    Entry& entry = entries_.back();
    if (entry.kind != kind)
        return false;
    EditStep& last = entry.steps.back();
    if (last.old.Length() > kLongestJoined)
        return false;
    const CharPos end = last.first + last.length;
    switch (kind) {
        case EditKind::Typing:
        case EditKind::TypingOver:
            if (step.first != end || typed.empty() || EndsWord(entry.last_typed, typed.front()))
                return false;
            last.length += step.length;
            last.old.Append(step.old);
            return true;
        case EditKind::DeletingForward:
            if (step.first != last.first)
                return false;
            last.old.Append(step.old);
            return true;
        default: {
            if (step.first + step.old.Length() != last.first)
                return false;
            RichText joined = step.old;
            joined.Append(last.old);
            last.first = step.first;
            last.old = std::move(joined);
            return true;
        }
    }
}

void UndoList::Add(EditStep step, EditKind kind, std::u16string_view typed, SelectionMark before,
                   SelectionMark after) {
    ForgetRedo();
    if (batches_ > 0) {
        if (!batch_open_) {
            entries_.push_back({{}, EditKind::Other, 0, before, after});
            bytes_ += sizeof(Entry);
            ++done_;
        }
        batch_open_ = true;
        bytes_ += step.Bytes();
        entries_.back().steps.push_back(std::move(step));
        entries_.back().after = after;
        return;
    }
    const std::size_t old_bytes = done_ > 0 ? entries_.back().Bytes() : 0;
    if (Join(step, kind, typed)) {
        bytes_ += entries_.back().Bytes() - old_bytes;
    } else {
        Entry entry{{}, kind, 0, before, after};
        entry.steps.push_back(std::move(step));
        bytes_ += entry.Bytes();
        entries_.push_back(std::move(entry));
        ++done_;
    }
    entries_.back().after = after;
    entries_.back().last_typed = typed.empty() ? u'\0' : typed.back();
    joins_ = true;
    Bound();
}

void UndoList::BeginBatch() {
    ++batches_;
    Seal();
}

void UndoList::EndBatch() {
    if (--batches_ > 0)
        return;
    batch_open_ = false;
    Seal();
    Bound();
}

std::optional<UndoList::Change> UndoList::Undo(const Swap& swap) {
    if (!CanUndo())
        return std::nullopt;
    Seal();
    batch_open_ = false;
    Entry& entry = entries_[--done_];
    bytes_ -= entry.Bytes();
    ChangedRange changed;
    for (std::size_t at = entry.steps.size(); at-- > 0;) {
        EditStep& step = entry.steps[at];
        changed.Add(step.first, step.length, LengthAfter(step));
        swap(step);
    }
    bytes_ += entry.Bytes();
    return Change{changed.range(), entry.before};
}

std::optional<UndoList::Change> UndoList::Redo(const Swap& swap) {
    if (!CanRedo())
        return std::nullopt;
    Seal();
    batch_open_ = false;
    Entry& entry = entries_[done_++];
    bytes_ -= entry.Bytes();
    ChangedRange changed;
    for (EditStep& step : entry.steps) {
        changed.Add(step.first, step.length, LengthAfter(step));
        swap(step);
    }
    bytes_ += entry.Bytes();
    return Change{changed.range(), entry.after};
}

void UndoList::Clear() {
    const bool modified = IsModified();
    entries_.clear();
    done_ = 0;
    bytes_ = 0;
    batch_open_ = false;
    forgotten_ = false;
    clean_.reset();
    if (!modified)
        clean_ = 0;
    Seal();
}

void UndoList::SetCleanPoint() {
    clean_ = done_;
    Seal();
}

void UndoList::ForgetRedo() {
    while (CanRedo()) {
        bytes_ -= entries_.back().Bytes();
        entries_.pop_back();
    }
    if (clean_ && *clean_ > done_)
        clean_.reset();
}

// From the oldest, but the last edit can always be taken back.
void UndoList::Bound() {
    while (done_ > 1 && (entries_.size() > limits_.entries || bytes_ > limits_.bytes)) {
        bytes_ -= entries_.front().Bytes();
        entries_.pop_front();
        --done_;
        forgotten_ = true;
        if (clean_)
            clean_ = *clean_ == 0 ? std::nullopt : std::optional(*clean_ - 1);
    }
}

}  // namespace zorvane
