// The rich-text editor without a window.
#pragma once

#include <cstddef>
#include <deque>

#include "compare/document/editor.h"
#include "compare/document/gap_runs.h"
#include "compare/document/gap_text.h"

namespace zorvane {

/// Asking for a line costs by its distance from the line asked for last, or from the last edit if
/// that was in front of it. Not to be asked by two threads at once.
class MemoryEditor : public Editor {
  public:
    std::int32_t Length() const override { return text_.Length(); }
    std::u16string Text() const override { return text_.Take(0, Length()); }
    RichText Rich() const override;
    std::array<std::u16string_view, 2> TextPieces() const override {
        return {text_.Front(), text_.Back()};
    }
    RichText TakeRich() override;
    void SetText(std::u16string_view text) override;
    void SetRich(RichText text) override;
    void Clear() override { SetRich({}); }

    TextRange Clip(TextRange range) const override;
    std::u16string Text(TextRange range) const override;
    RichText Rich(TextRange range) const override;
    void Format(TextRange range, const CharFormatChange& change) override;
    TextRange Replace(TextRange range, std::u16string_view text) override;
    TextRange Replace(TextRange range, const RichText& text) override;

    TextRange Selection() const override { return selection_; }
    void Select(TextRange range) override { selection_ = Clip(range); }
    void ReplaceSelection(std::u16string_view text) override;
    void ReplaceSelection(const RichText& text) override;
    CharFormat SelectionFormat() const override;

    CharFormat DefaultFormat() const override { return default_format_; }
    void SetDefaultFormat(const CharFormat& format) override { default_format_ = format; }
    std::int32_t LineOfChar(CharPos position) const override;
    CharPos FirstCharOfLine(std::int32_t line) const override;
    bool CanUndo() const override { return !undo_.empty(); }
    void Undo() override;
    void SetUndoEnabled(bool enabled) override;

    Status LoadFile(const std::string& path, FileFormat format) override;
    Status SaveFile(const std::string& path, FileFormat format) const override;

  private:
    // What an edit replaced: putting `old` in place of `length` characters at `first` takes it
    // back. Of a change of formats only the character runs are kept.
    struct UndoStep {
        std::int32_t first = 0;
        std::int32_t length = 0;
        bool formats_only = false;
        RichText old;

        std::size_t Bytes() const;
    };
    // A line and its first position.
    struct LineMark {
        std::int32_t line = 0;
        std::int32_t first = 0;
    };

    std::int32_t SnapToBreak(std::int32_t position) const;
    // The range without the break behind the text.
    TextRange InText(TextRange range) const;
    CharFormat InsertionFormat(TextRange range) const;
    ParagraphFormat ParagraphFormatAt(std::int32_t position) const;
    void Put(TextRange range, const RichText& text);
    void Remember(UndoStep step);
    void ForgetUndo();
    void MoveLineMarkBack(std::int32_t position) const;

    GapText text_;
    GapRuns<CharRun> char_runs_;
    GapRuns<ParagraphRun> paragraph_runs_;
    TextRange selection_;
    CharFormat default_format_;
    bool undo_enabled_ = true;
    std::deque<UndoStep> undo_;
    std::size_t undo_bytes_ = 0;
    // The line asked for last, from which the next one is counted. An edit in front of it moves it
    // back to the line of the edit, so it is always true.
    mutable LineMark line_mark_;
};

}  // namespace zorvane
