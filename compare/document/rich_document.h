// An editor's text that is shown: whoever shows it hears of every edit, and the user's can be
// undone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "compare/document/document_observer.h"
#include "compare/document/memory_editor.h"
#include "compare/document/text_boundaries.h"
#include "compare/document/text_selection.h"
#include "compare/document/undo_list.h"

namespace zorvane {

/// The only writer of its text. An edit goes to the text, to the undo list, to the selection and
/// then to the observers.
///
/// Whose edit it is. What is called here is the user's edit and can be undone, but for a whole new
/// text (`SetText`, `SetRich`, `TakeRich`, `Clear`, `LoadFile`), which empties the list and counts
/// as unmodified, and what happens under a `ProgrammeEdit`: formats then leave the list as it is,
/// another text empties it.
///
/// Notices. One for each edit; one for an `EditBatch`, over everything from its first to its last
/// change; a `Reset` if that is very much.
class RichDocument : public Editor {
  public:
    RichDocument();
    ~RichDocument() override;
    RichDocument(const RichDocument&) = delete;
    RichDocument& operator=(const RichDocument&) = delete;

    void AddObserver(DocumentObserver& observer) { observers_.Add(observer); }
    void RemoveObserver(DocumentObserver& observer) { observers_.Remove(observer); }

    // Reading.
    std::int32_t Length() const override { return text_.Length(); }
    std::u16string Text() const override { return text_.Text(); }
    std::u16string Text(TextRange range) const override { return text_.Text(range); }
    RichText Rich() const override { return text_.Rich(); }
    RichText Rich(TextRange range) const override { return text_.Rich(range); }
    using Editor::TextPieces;
    std::vector<std::u16string_view> TextPieces(TextRange range) const override {
        return text_.TextPieces(range);
    }
    TextRange Clip(TextRange range) const override { return text_.Clip(range); }
    /// Of the character at a position, of the paragraph there.
    CharFormat FormatAt(CharPos position) const { return text_.FormatAt(position); }
    ParagraphFormat ParagraphFormatAt(CharPos position) const {
        return text_.ParagraphFormatAt(position);
    }
    CharFormat DefaultFormat() const override { return text_.DefaultFormat(); }
    std::int32_t LineOfChar(CharPos position) const override { return text_.LineOfChar(position); }
    CharPos FirstCharOfLine(std::int32_t line) const override {
        return text_.FirstCharOfLine(line);
    }

    // A whole new text.
    RichText TakeRich() override;
    void SetText(std::u16string_view text) override;
    void SetRich(RichText text) override;
    void Clear() override { SetRich({}); }
    Status LoadFile(const std::string& path, FileFormat format) override;
    Status SaveFile(const std::string& path, FileFormat format) const override {
        return text_.SaveFile(path, format);
    }
    void SetDefaultFormat(const CharFormat& format) override { text_.SetDefaultFormat(format); }

    // Edits of a range. The selection stays where it is in the text.
    TextRange Replace(TextRange range, std::u16string_view text) override;
    TextRange Replace(TextRange range, const RichText& text) override;
    void Format(TextRange range, const CharFormatChange& change) override;
    void FormatParagraphs(TextRange range, const ParagraphFormatChange& change) override;

    // The selection. Moving it ends the joining of typed letters.
    TextRange Selection() const override { return selection_.Range(); }
    void Select(TextRange range) override;
    const TextSelection& Caret() const { return selection_; }
    void MoveCaret(CharPos place);
    void ExtendSelection(CharPos caret);
    void SetWantedX(double x) { selection_.SetWantedX(x); }
    void ReplaceSelection(std::u16string_view text) override;
    void ReplaceSelection(const RichText& text) override;
    CharFormat SelectionFormat() const override { return TypingFormat(); }

    // Typing. Each replaces the selection, if there is one.
    /// Puts the text in the typing format; letters typed one after the other are one undo.
    void Type(std::u16string_view text);
    /// The same over the characters in front of it, at most to the end of the paragraph.
    void TypeOver(std::u16string_view text);
    /// A word is removed with the blanks between it and the caret; a line from the caret to its
    /// begin or end. At the begin or end of a paragraph the break goes, whatever the unit.
    void DeleteBack(TextUnit unit);
    void DeleteForward(TextUnit unit);
    /// The format of the selection, or of what is typed at the caret.
    CharFormat TypingFormat() const;
    /// The user paused: what is typed next is an undo of its own.
    void EndTyping() { undo_.Seal(); }

    // Undo. Both give the range that was changed, and put the selection back as it was before (or
    // behind) the edit, if it was there; else the range is selected.
    bool CanUndo() const override { return undo_.CanUndo(); }
    bool CanRedo() const { return undo_.CanRedo(); }
    std::optional<TextRange> Undo() override;
    std::optional<TextRange> Redo();
    void SetCleanPoint() { undo_.SetCleanPoint(); }
    /// What was put here has edits of its own that are not saved.
    void SetModified() { undo_.ForgetCleanPoint(); }
    bool IsModified() const { return undo_.IsModified(); }

  protected:
    void BeginBatch() override;
    void EndBatch() override;
    void BeginProgrammeEdit() override { ++programme_edits_; }
    void EndProgrammeEdit() override;

  private:
    // What a batch changed so far: the units from `first` to `old_end` of the text before it became
    // those from `first` to `new_end`.
    struct Pending {
        bool reset = false;
        bool any = false;
        bool text = false;
        std::int32_t first = 0;
        std::int32_t old_end = 0;
        std::int32_t new_end = 0;
        bool selection = false;
    };

    bool ByUser() const { return programme_edits_ == 0; }
    SelectionMark Mark() const { return {selection_.Anchor(), selection_.Caret()}; }
    enum class CaretGoes : std::uint8_t { Nowhere, BehindIt };
    TextRange Put(TextRange range, const RichText& text, EditKind kind, CaretGoes caret);
    RichText Typed(TextRange range, std::u16string_view text) const;
    void Delete(TextRange range, EditKind kind);
    void SwapStep(EditStep& step);
    std::optional<TextRange> AfterUndo(const std::optional<UndoList::Change>& change);
    EditStep NewStep(EditStep::Part part, TextRange range) const;
    void Remember(EditStep step, EditKind kind, std::u16string_view typed, SelectionMark before);
    void NoteReplaced(std::int32_t first, std::int32_t removed, std::int32_t inserted);
    void NoteReformatted(TextRange range);
    void NoteReset();
    void NoteSelection();
    void SendPending();

    MemoryEditor text_;
    TextSelection selection_{text_};
    UndoList undo_;
    ObserverList observers_;
    Pending pending_;
    int batches_ = 0;
    int programme_edits_ = 0;
    bool programme_wrote_ = false;  // another text under a programme's edit
};

}  // namespace zorvane
