// The rich-text editor as the rest of the program sees it, with a window or without one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/number.h"
#include "common/base/result.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// A stretch of an editor's text, in UTF-16 code units.
struct TextRange {
    CharPos first{0};
    std::int32_t length = 0;

    constexpr CharPos end() const { return first + length; }
    static constexpr TextRange Between(CharPos first, CharPos end) { return {first, end - first}; }
    friend bool operator==(TextRange, TextRange) = default;
};

enum class FileFormat { RichText = 0, PlainText = 1 };

/// The contract of a rich-text editor.
///
/// Positions. A paragraph break is CR LF and counts two. Behind the text stands one break more, the
/// last paragraph's own: it is never part of `Text()`, it can be selected (so a selection may end
/// at `Length() + 2`), and it reads as CR LF in what is taken from such a selection. It cannot be
/// removed: replacing it replaces up to the text's end, and a break at the very end of the new text
/// merges with it. A position between the CR and the LF of any break is in front of that break:
/// both ends of a range are moved there.
///
/// Ranges. Every range is clipped to 0 .. `Length() + 2` first, so no call fails for its range.
///
/// Cost. Reading, formatting or replacing at a place costs by the distance from the place of the
/// last edit plus the length touched, or by the logarithm of the size, never by the size. `Text()`,
/// `Rich()`, `SetText()` and `SetRich()` cost by the size.
class Editor {
  public:
    virtual ~Editor() = default;

    // The whole.
    virtual std::int32_t Length() const = 0;
    virtual std::u16string Text() const = 0;
    virtual RichText Rich() const = 0;
    /// The text without a copy, in pieces to be read one behind the other; breaks and characters
    /// may be cut between them. Borrowed until the next edit.
    std::vector<std::u16string_view> TextPieces() const {
        return TextPieces({CharPos{0}, Length()});
    }
    /// Of a range, clipped and without the break behind the text.
    virtual std::vector<std::u16string_view> TextPieces(TextRange range) const = 0;
    /// Moves everything out and leaves the editor empty.
    virtual RichText TakeRich() = 0;
    /// Replaces all. Breaks are normalized; the format is `DefaultFormat()`; the caret goes to 0
    /// and the undo list is emptied.
    virtual void SetText(std::u16string_view text) = 0;
    virtual void SetRich(RichText text) = 0;
    virtual void Clear() = 0;

    // A range, without regard to the selection.
    virtual TextRange Clip(
        TextRange range) const = 0;  ///< the range that a selection of it would be
    virtual std::u16string Text(TextRange range) const = 0;
    virtual RichText Rich(TextRange range) const = 0;
    virtual void Format(TextRange range, const CharFormatChange& change) = 0;
    /// New plain text takes the format of the character that it replaces, else of the one in front.
    /// Gives back the range of what was inserted.
    virtual TextRange Replace(TextRange range, std::u16string_view text) = 0;
    virtual TextRange Replace(TextRange range, const RichText& text) = 0;
    /// Of the paragraphs that hold a unit of the range, or its place if it is empty.
    virtual void FormatParagraphs(TextRange range, const ParagraphFormatChange& change) = 0;

    // The selection.
    virtual TextRange Selection() const = 0;
    virtual void Select(TextRange range) = 0;
    void SelectAll() { Select({CharPos{0}, Length() + 2}); }
    std::u16string SelectedText() const { return Text(Selection()); }
    RichText SelectedRich() const { return Rich(Selection()); }
    void FormatSelection(const CharFormatChange& change) { Format(Selection(), change); }
    /// The caret goes behind the new text.
    virtual void ReplaceSelection(std::u16string_view text) = 0;
    virtual void ReplaceSelection(const RichText& text) = 0;
    /// The format of the selection's first character, or of what would be typed at the caret.
    virtual CharFormat SelectionFormat() const = 0;

    // Defaults, lines, undo.
    virtual CharFormat DefaultFormat() const = 0;
    virtual void SetDefaultFormat(const CharFormat& format) = 0;
    /// 0-based line (paragraph or `\line`) of a position, and first position of a line; the number
    /// of lines, and a line past the last, give the last line.
    virtual std::int32_t LineOfChar(CharPos position) const = 0;
    virtual CharPos FirstCharOfLine(std::int32_t line) const = 0;
    /// An editor that only a run writes keeps nothing to undo. Gives the range that was changed.
    virtual bool CanUndo() const { return false; }
    virtual std::optional<TextRange> Undo() { return std::nullopt; }

    // Files. RTF is told by its first characters even when rich text is asked for: a file without
    // "{\rtf" is read as plain text in the encoding that its bytes show. An RTF file is written
    // whole to a new file and renamed. Failures name the file.
    virtual Status LoadFile(const std::string& path, FileFormat format) = 0;
    virtual Status SaveFile(const std::string& path, FileFormat format) const = 0;

  protected:
    friend class EditBatch;
    friend class ProgrammeEdit;

    // Of interest only where somebody hears of edits or undoes them.
    virtual void BeginBatch() {}
    virtual void EndBatch() {}
    virtual void BeginProgrammeEdit() {}
    virtual void EndProgrammeEdit() {}
};

/// As long as it lives, all edits of the editor are one: one undo, one notice at the end.
class EditBatch {
  public:
    explicit EditBatch(Editor& editor) : editor_(editor) { editor_.BeginBatch(); }
    ~EditBatch() { editor_.EndBatch(); }
    EditBatch(const EditBatch&) = delete;
    EditBatch& operator=(const EditBatch&) = delete;

  private:
    Editor& editor_;
};

/// As long as it lives, the edits are the programme's own and nothing that a user could undo. They
/// are a batch as well.
class ProgrammeEdit {
  public:
    explicit ProgrammeEdit(Editor& editor) : batch_(editor), editor_(editor) {
        editor_.BeginProgrammeEdit();
    }
    ~ProgrammeEdit() { editor_.EndProgrammeEdit(); }
    ProgrammeEdit(const ProgrammeEdit&) = delete;
    ProgrammeEdit& operator=(const ProgrammeEdit&) = delete;

  private:
    EditBatch batch_;
    Editor& editor_;
};

}  // namespace zorvane
