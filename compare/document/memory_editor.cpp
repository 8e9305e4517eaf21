#include "compare/document/memory_editor.h"

#include <algorithm>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"

namespace zorvane {
namespace {

constexpr std::int32_t kBreakLength = 2;
constexpr std::size_t kMostUndoSteps = 1000;
constexpr char16_t kLineInParagraph = 11;

bool HasLoneBreak(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\n')
            return true;
        if (text[i] != u'\r')
            continue;
        if (i + 1 == text.size() || text[i + 1] != u'\n')
            return true;
        ++i;
    }
    return false;
}

}  // namespace

RichText MemoryEditor::Rich() const {
    return Rich({CharPos{0}, Length()});
}

RichText MemoryEditor::TakeRich() {
    RichText rich;
    rich.text = text_.TakeAll();
    rich.char_runs = char_runs_.TakeAll();
    rich.paragraph_runs = paragraph_runs_.TakeAll();
    selection_ = {};
    undo_.clear();
    return rich;
}

void MemoryEditor::SetText(std::u16string_view text) {
    SetRich(RichText::Plain(text, default_format_));
}

// Rich text from elsewhere may hold lone breaks; its runs are stretched where one becomes a pair.
RichText MemoryEditor::Normalized(const RichText& text) {
    RichText normal;
    std::int32_t at = 0;
    std::size_t paragraph = 0;
    std::int32_t paragraph_end = text.paragraph_runs.empty() ? 0 : text.paragraph_runs[0].length;
    for (const CharRun& run : text.char_runs) {
        const std::int32_t end = at + run.length;
        while (at < end) {
            while (at >= paragraph_end && paragraph + 1 < text.paragraph_runs.size())
                paragraph_end += text.paragraph_runs[++paragraph].length;
            const std::int32_t stop = paragraph_end > at ? std::min(end, paragraph_end) : end;
            RichText piece;
            for (; at < stop; ++at) {
                const char16_t unit = text.text[static_cast<std::size_t>(at)];
                const bool behind_return =
                    at > 0 && text.text[static_cast<std::size_t>(at - 1)] == u'\r';
                if (unit == u'\r' || (unit == u'\n' && !behind_return))
                    piece.text += u"\r\n";
                else if (unit != u'\n')
                    piece.text += unit;
            }
            piece.char_runs.push_back({piece.Length(), run.format});
            piece.paragraph_runs.push_back(
                {piece.Length(), text.paragraph_runs.empty()
                                     ? ParagraphFormat{}
                                     : text.paragraph_runs[paragraph].format});
            normal.Append(piece);
        }
    }
    return normal;
}

void MemoryEditor::SetRich(RichText text) {
    if (HasLoneBreak(text.text))
        text = Normalized(text);
    text_.Assign(std::move(text.text));
    char_runs_.Assign(std::move(text.char_runs));
    paragraph_runs_.Assign(std::move(text.paragraph_runs));
    selection_ = {};
    undo_.clear();
}

std::int32_t MemoryEditor::SnapToBreak(std::int32_t position) const {
    const std::int32_t length = Length();
    if (position > length)
        return position >= length + kBreakLength ? length + kBreakLength : length;
    const bool inside = position > 0 && position < length && text_.At(position - 1) == u'\r' &&
                        text_.At(position) == u'\n';
    return inside ? position - 1 : position;
}

TextRange MemoryEditor::Clip(TextRange range) const {
    const std::int64_t most = Length() + kBreakLength;
    const std::int64_t first = std::clamp<std::int64_t>(range.first.value, 0, most);
    const std::int64_t end = std::clamp<std::int64_t>(
        std::int64_t{range.first.value} + std::max(range.length, 0), first, most);
    return TextRange::Between(CharPos{SnapToBreak(static_cast<std::int32_t>(first))},
                              CharPos{SnapToBreak(static_cast<std::int32_t>(end))});
}

TextRange MemoryEditor::InText(TextRange range) const {
    const std::int32_t first = std::min(range.first.value, Length());
    const std::int32_t end = std::min(range.end().value, Length());
    return {CharPos{first}, end - first};
}

std::u16string MemoryEditor::Text(TextRange range) const {
    range = Clip(range);
    const TextRange inside = InText(range);
    std::u16string text = text_.Take(inside.first.value, inside.length);
    if (range.end() > inside.end() && range.length > 0)
        text += u"\r\n";
    return text;
}

RichText MemoryEditor::Rich(TextRange range) const {
    range = Clip(range);
    const TextRange inside = InText(range);
    RichText rich;
    rich.text = text_.Take(inside.first.value, inside.length);
    rich.char_runs = char_runs_.Take(inside.first.value, inside.length);
    rich.paragraph_runs = paragraph_runs_.Take(inside.first.value, inside.length);
    if (range.end() > inside.end() && range.length > 0) {
        RichText last_break;
        last_break.text = u"\r\n";
        last_break.char_runs.push_back({kBreakLength, rich.char_runs.empty()
                                                          ? InsertionFormat(inside)
                                                          : rich.char_runs.back().format});
        last_break.paragraph_runs.push_back({kBreakLength, ParagraphFormatAt(Length())});
        rich.Append(last_break);
    }
    return rich;
}

void MemoryEditor::Format(TextRange range, const CharFormatChange& change) {
    range = InText(Clip(range));
    if (range.length == 0)
        return;
    Remember(range, range.length);
    char_runs_.ChangeFormats(range.first.value, range.length,
                             [&change](CharFormat& format) { change.ApplyTo(format); });
}

CharFormat MemoryEditor::InsertionFormat(TextRange range) const {
    const std::int32_t first = range.first.value;
    const bool replaces = range.length > 0;
    const CharFormat* format =
        replaces || first == 0 ? char_runs_.At(first) : char_runs_.At(first - 1);
    return format == nullptr ? default_format_ : *format;
}

ParagraphFormat MemoryEditor::ParagraphFormatAt(std::int32_t position) const {
    const ParagraphFormat* format = paragraph_runs_.At(position);
    if (format == nullptr && position > 0)
        format = paragraph_runs_.At(position - 1);
    return format == nullptr ? ParagraphFormat{} : *format;
}

void MemoryEditor::Remember(TextRange range, std::int32_t new_length) {
    if (!undo_enabled_)
        return;
    if (undo_.size() == kMostUndoSteps)
        undo_.erase(undo_.begin(), undo_.begin() + kMostUndoSteps / 4);
    undo_.push_back({range.first.value, new_length, Rich(range)});
}

void MemoryEditor::Put(TextRange range, const RichText& text) {
    Remember(range, text.Length());
    text_.Replace(range.first.value, range.length, text.text);
    char_runs_.Replace(range.first.value, range.length, text.char_runs);
    paragraph_runs_.Replace(range.first.value, range.length, text.paragraph_runs);
    selection_ = Clip(selection_);
}

TextRange MemoryEditor::Replace(TextRange range, std::u16string_view text) {
    range = Clip(range);
    RichText rich = RichText::Plain(text, InsertionFormat(InText(range)));
    if (!rich.Empty())
        rich.paragraph_runs = {{rich.Length(), ParagraphFormatAt(range.first.value)}};
    return Replace(range, rich);
}

TextRange MemoryEditor::Replace(TextRange range, const RichText& text) {
    range = Clip(range);
    const TextRange inside = InText(range);
    const bool last_break = range.length > 0 && range.end() > inside.end();
    if (HasLoneBreak(text.text))
        return Replace(range, Normalized(text));
    if (!last_break || !text.text.ends_with(u"\r\n")) {
        Put(inside, text);
        return {inside.first, text.Length()};
    }
    // The break at the end of the new text takes the place of the last one, which cannot go.
    MemoryEditor cut;
    cut.SetRich(text);
    const RichText shorter = cut.Rich({CharPos{0}, text.Length() - kBreakLength});
    Put(inside, shorter);
    return {inside.first, text.Length()};
}

void MemoryEditor::ReplaceSelection(std::u16string_view text) {
    const TextRange inserted = Replace(selection_, text);
    selection_ = Clip({inserted.end(), 0});
}

void MemoryEditor::ReplaceSelection(const RichText& text) {
    const TextRange inserted = Replace(selection_, text);
    selection_ = Clip({inserted.end(), 0});
}

CharFormat MemoryEditor::SelectionFormat() const {
    return InsertionFormat(InText(selection_));
}

std::int32_t MemoryEditor::LineOfChar(CharPos position) const {
    const std::int32_t end = SnapToBreak(std::clamp(position.value, 0, Length()));
    std::int32_t line = 0;
    for (std::int32_t at = 0; at < end; ++at) {
        const char16_t unit = text_.At(at);
        line += unit == u'\n' || unit == kLineInParagraph ? 1 : 0;
    }
    return line;
}

CharPos MemoryEditor::FirstCharOfLine(std::int32_t line) const {
    std::int32_t first = 0;
    for (std::int32_t at = 0; at < Length() && line > 0; ++at) {
        const char16_t unit = text_.At(at);
        if (unit == u'\n' || unit == kLineInParagraph) {
            first = at + 1;
            --line;
        }
    }
    return CharPos{first};
}

void MemoryEditor::Undo() {
    if (undo_.empty())
        return;
    const UndoStep step = std::move(undo_.back());
    undo_.pop_back();
    const bool enabled = std::exchange(undo_enabled_, false);
    Put({CharPos{step.first}, step.length}, step.old);
    undo_enabled_ = enabled;
    selection_ = Clip({CharPos{step.first}, step.old.Length()});
}

void MemoryEditor::SetUndoEnabled(bool enabled) {
    undo_enabled_ = enabled;
    undo_.clear();
}

Status MemoryEditor::LoadFile(const std::string& path, FileFormat format) {
    const Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return bytes.failure();
    if (format == FileFormat::RichText && LooksLikeRtf(bytes.value()))
        SetRich(ReadRtf(bytes.value()));
    else
        SetText(DecodeText(bytes.value(), DetectEncoding(bytes.value(), "")));
    return Status::Ok();
}

Status MemoryEditor::SaveFile(const std::string& path, FileFormat format) const {
    return ReplaceFile(path, format == FileFormat::RichText ? WriteRtf(Rich()) : ToUtf8(Text()));
}

}  // namespace zorvane
