// The text of an RTF file as it grows, with its runs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "compare/document/rich_text.h"

namespace zorvane {

inline constexpr char16_t kRtfLine = 11;  ///< a line in a paragraph
inline constexpr char16_t kRtfCell = 7;   ///< the end of a cell

/// A note stands at its mark in brackets of its own, a blank on either side, so that it touches no
/// word of the body.
class RtfOutput {
  public:
    void Append(std::u16string_view text, const CharFormat& format) {
        if (note_ == Note::Waits || (note_ == Note::Shown && blank_due_))
            text.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
        if (text.empty())
            return;
        if (note_ == Note::Waits)
            AppendAsIs(PartsWords(Last()) ? u"[note: " : u" [note: ", format);
        else if (blank_due_ && !PartsWords(text.front()))
            AppendAsIs(u" ", format);
        if (note_ == Note::Waits)
            note_ = Note::Shown;
        blank_due_ = false;
        AppendAsIs(text, format);
    }
    void Append(const RichText& text) {
        std::size_t at = 0;
        for (const CharRun& run : text.char_runs) {
            const auto length = static_cast<std::size_t>(run.length);
            AppendAsIs(std::u16string_view(text.text).substr(at, length), run.format);
            at += length;
        }
        for (const ParagraphRun& run : text.paragraph_runs)
            AddParagraphRun(run.length, run.format);
        paragraph_begin_ = rich_.Length();
        paragraph_ +=
            static_cast<std::int32_t>(std::count(text.text.begin(), text.text.end(), u'\n'));
    }
    void OpenNote() { note_ = Note::Waits; }
    /// The paragraphs and lines of a note stand behind each other.
    void BreakInNote() { blank_due_ = note_ == Note::Shown; }
    void CloseNote(const CharFormat& format) {
        if (std::exchange(note_, Note::None) != Note::Shown)
            return;
        AppendAsIs(u"]", format);
        blank_due_ = true;
    }
    void EndParagraph(const CharFormat& format, const ParagraphFormat& paragraph) {
        blank_due_ = false;
        AppendAsIs(u"\r\n", format);
        CloseParagraph(paragraph);
        ++paragraph_;
    }
    /// The number of the paragraph that is being written, from 1.
    std::int32_t Paragraph() const { return paragraph_; }
    void CloseParagraph(const ParagraphFormat& paragraph) {
        const std::int32_t length = rich_.Length() - paragraph_begin_;
        if (length == 0)
            return;
        AddParagraphRun(length, paragraph);
        paragraph_begin_ = rich_.Length();
    }
    bool AtParagraphBegin() const { return rich_.Length() == paragraph_begin_; }
    /// True when the paragraph at work holds nothing but blanks and ends of cells and lines.
    bool IsBlankParagraph() const {
        const auto begin = static_cast<std::size_t>(paragraph_begin_);
        return std::all_of(rich_.text.begin() + static_cast<std::ptrdiff_t>(begin),
                           rich_.text.end(),
                           [](char16_t unit) { return unit == u'\t' || PartsWords(unit); });
    }
    void DropParagraph() {
        std::int32_t length = rich_.Length() - paragraph_begin_;
        rich_.text.resize(static_cast<std::size_t>(paragraph_begin_));
        while (length > 0) {
            CharRun& last = rich_.char_runs.back();
            const std::int32_t part = std::min(length, last.length);
            last.length -= part;
            length -= part;
            if (last.length == 0)
                rich_.char_runs.pop_back();
        }
        blank_due_ = false;
    }
    RichText Take() {
        paragraph_begin_ = 0;
        paragraph_ = 1;
        blank_due_ = false;
        return std::exchange(rich_, {});
    }

  private:
    enum class Note : std::uint8_t { None, Waits, Shown };

    // A tab parts no words where texts are compared.
    static bool PartsWords(char16_t unit) {
        return unit == u' ' || unit == kRtfLine || unit == kRtfCell;
    }
    char16_t Last() const { return AtParagraphBegin() ? u' ' : rich_.text.back(); }
    void AppendAsIs(std::u16string_view text, const CharFormat& format) {
        rich_.text += text;
        const auto length = static_cast<std::int32_t>(text.size());
        if (!rich_.char_runs.empty() && rich_.char_runs.back().format == format)
            rich_.char_runs.back().length += length;
        else
            rich_.char_runs.push_back({length, format});
    }
    void AddParagraphRun(std::int32_t length, const ParagraphFormat& paragraph) {
        if (!rich_.paragraph_runs.empty() && rich_.paragraph_runs.back().format == paragraph)
            rich_.paragraph_runs.back().length += length;
        else
            rich_.paragraph_runs.push_back({length, paragraph});
    }

    RichText rich_;
    std::int32_t paragraph_begin_ = 0;
    std::int32_t paragraph_ = 1;
    Note note_ = Note::None;
    bool blank_due_ = false;
};

}  // namespace zorvane
