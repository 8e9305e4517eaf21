// The edits that a user can take back and do again, joined as people think of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "compare/document/editor.h"

namespace zorvane {

/// One change. Putting `old` in place of `length` units at `first` takes it back; what stood there
/// until then does it again. Of a change of formats only the runs of one kind are kept.
struct EditStep {
    enum class Part : std::uint8_t { Text, CharFormats, ParagraphFormats };

    Part part = Part::Text;
    CharPos first;
    std::int32_t length = 0;
    RichText old;
    std::optional<ParagraphFormat> empty_last_paragraph;  ///< as it was

    std::size_t Bytes() const;
};

/// Where a selection stood.
struct SelectionMark {
    CharPos anchor;
    CharPos caret;
    friend bool operator==(SelectionMark, SelectionMark) = default;
};

/// What the user did. Edits of one kind at one place are joined: typed letters to words, the blanks
/// behind a word with it; removed letters as long as the key is hit. `Other` is never joined.
enum class EditKind : std::uint8_t { Other, Typing, TypingOver, DeletingBack, DeletingForward };

/// Keeps steps and puts them into order; whoever owns the text carries them out.
class UndoList {
  public:
    /// Changes the text as the step says and leaves in it what takes that back.
    using Swap = std::function<void(EditStep&)>;
    /// What an undo or redo changed: this much of the text as it now is, and the selection as it
    /// was at that time.
    struct Change {
        TextRange range;
        SelectionMark selection;
    };
    struct Limits {
        std::size_t entries = 10'000;
        std::size_t bytes = std::size_t{64} << 20U;
    };

    UndoList() = default;
    explicit UndoList(const Limits& limits) : limits_(limits) {}

    /// A step that was just done. `typed` is what it put, of which the joining of typed letters
    /// looks at both ends; `before` and `after` are the selections. Forgets what was taken back.
    void Add(EditStep step, EditKind kind, std::u16string_view typed, SelectionMark before,
             SelectionMark after);
    /// Nothing is joined to the last entry any more: the caret went elsewhere, the user paused.
    void Seal() { joins_ = false; }
    /// Everything between is one entry. Batches may lie in each other.
    void BeginBatch();
    void EndBatch();

    bool CanUndo() const { return done_ > 0; }
    bool CanRedo() const { return done_ < entries_.size(); }
    std::optional<Change> Undo(const Swap& swap);
    std::optional<Change> Redo(const Swap& swap);
    /// Forgets everything. The text counts as unmodified behind a load, as before otherwise.
    void Clear();

    /// The text is saved as it is now.
    void SetCleanPoint();
    /// The text, as it is now or was, stands in no file.
    void ForgetCleanPoint() { clean_.reset(); }
    /// Undo to the clean point and it is unmodified again.
    bool IsModified() const { return clean_ != done_; }
    /// True once the oldest edits were forgotten for lack of room. The last one always stays.
    bool HasForgotten() const { return forgotten_; }
    std::size_t Bytes() const { return bytes_; }

  private:
    struct Entry {
        std::vector<EditStep> steps;
        EditKind kind = EditKind::Other;
        char16_t last_typed = 0;
        SelectionMark before;
        SelectionMark after;

        std::size_t Bytes() const;
    };

    bool Join(const EditStep& step, EditKind kind, std::u16string_view typed);
    void ForgetRedo();
    void Bound();

    Limits limits_;
    std::deque<Entry> entries_;
    std::size_t done_ = 0;                  // entries in front of it are done, the others undone
    std::optional<std::size_t> clean_ = 0;  // nothing: no undo leads there
    std::size_t bytes_ = 0;
    int batches_ = 0;
    bool batch_open_ = false;  // the last entry is that of the batch
    bool joins_ = false;
    bool forgotten_ = false;
};

}  // namespace zorvane
