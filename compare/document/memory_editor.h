// The rich-text editor without a window.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "compare/document/editor.h"
#include "compare/document/format_runs.h"
#include "compare/document/line_ends.h"
#include "compare/document/piece_text.h"

namespace zorvane {

/// Costs: an edit by its length and the pieces between it and the last one (well under a
/// millisecond in 80 MB), a look-up by the logarithm of what was edited and formatted. The first
/// question for a line reads the whole text; not to be asked by two threads at once.
class MemoryEditor : public Editor {
  public:
    /// Of the run that the editor belongs to: what is large is stopped in between, and then nothing
    /// is given (`Rich`, `TakeRich`) or put (`Replace`), or it has not its formats. Borrowed.
    void Watch(RunWatcher* watcher) { watcher_ = watcher; }

    std::int32_t Length() const override { return text_.Length(); }
    std::u16string Text() const override { return text_.Take(0, Length()); }
    RichText Rich() const override;
    using Editor::TextPieces;
    std::vector<std::u16string_view> TextPieces(TextRange range) const override {
        range = InText(Clip(range));
        return text_.Pieces(range.first.value, range.length);
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
    void FormatParagraphs(TextRange range, const ParagraphFormatChange& change) override;

    TextRange Selection() const override { return selection_; }
    void Select(TextRange range) override { selection_ = Clip(range); }
    void ReplaceSelection(std::u16string_view text) override;
    void ReplaceSelection(const RichText& text) override;
    CharFormat SelectionFormat() const override;

    CharFormat DefaultFormat() const override { return default_format_; }
    void SetDefaultFormat(const CharFormat& format) override { default_format_ = format; }
    std::int32_t LineOfChar(CharPos position) const override;
    CharPos FirstCharOfLine(std::int32_t line) const override;

    Status LoadFile(const std::string& path, FileFormat format) override;
    Status SaveFile(const std::string& path, FileFormat format) const override;

    // For who writes on top of it. Ranges are as `Clip` and `InText` give them.
    /// A clipped range without the break behind the text.
    TextRange InText(TextRange range) const;
    /// All of the paragraphs that hold a unit of the range, or its place if it is empty.
    TextRange ParagraphsOf(TextRange range) const;
    /// Of the character at a position; behind the text, of the last one.
    CharFormat FormatAt(CharPos position) const;
    ParagraphFormat ParagraphFormatAt(CharPos position) const;
    /// That new text in place of the range takes, and such text.
    CharFormat InsertionFormat(TextRange range) const;
    RichText Dressed(TextRange range, std::u16string_view text) const;
    std::vector<CharRun> CharRuns(TextRange range) const;
    void SetCharRuns(TextRange range, const std::vector<CharRun>& runs);
    std::vector<ParagraphRun> ParagraphRuns(TextRange range) const;
    void SetParagraphRuns(TextRange range, const std::vector<ParagraphRun>& runs);
    /// The format of an empty last paragraph, which no unit of the text carries. Nothing: as the
    /// paragraph in front. Text put at the end takes it over.
    const std::optional<ParagraphFormat>& EmptyLastParagraph() const {
        return empty_last_paragraph_;
    }
    void SetEmptyLastParagraph(const std::optional<ParagraphFormat>& format) {
        empty_last_paragraph_ = format;
    }

  private:
    std::int32_t SnapToBreak(std::int32_t position) const;
    void Put(TextRange range, const RichText& text);
    const LineEnds& Lines() const;
    bool LastParagraphIsEmpty() const { return Length() == 0 || text_.At(Length() - 1) == u'\n'; }

    RunWatcher* watcher_ = nullptr;
    PieceText text_;
    FormatRuns<CharRun> char_runs_;
    FormatRuns<ParagraphRun> paragraph_runs_;
    std::optional<ParagraphFormat> empty_last_paragraph_;
    TextRange selection_;
    CharFormat default_format_;
    // Found when a line is first asked for, then kept through edits.
    mutable LineEnds line_ends_;
};

}  // namespace zorvane
