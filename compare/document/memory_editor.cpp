#include "compare/document/memory_editor.h"

#include <algorithm>
#include <utility>

#include "common/base/paragraph_break.h"
#include "common/base/text_encoding.h"
#include "common/base/unit_search.h"
#include "common/platform/files.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"

namespace zorvane {
namespace {

constexpr std::int32_t kSmall = 1 << 14;  // taken without asking in between

// False after a stop.
bool HasLoneBreak(std::u16string_view text, RunWatcher* watcher) {
    constexpr std::size_t kPart = std::size_t{1} << 20;
    StopCheck stop(watcher, kPart);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(at + kPart, text.size());
        const std::size_t found =
            std::min(FindEitherUnit(text.substr(0, end), u'\r', u'\n', at), end);
        const bool whole = text.substr(found, kBreak.size()) == kBreak;
        if (found < end && !whole)
            return true;
        const std::size_t next = whole ? found + kBreak.size() : end;
        if (!stop.KeepGoing(static_cast<std::int64_t>(next - at)))
            return false;
        at = next;
    }
    return false;
}

// How long a stretch of the text is once every lone break in it has become a pair.
std::int32_t NormalLength(std::u16string_view text, std::size_t begin, std::size_t end) {
    std::int32_t length = 0;
    for (std::size_t at = begin; at < end; ++at) {
        const bool second = text[at] == u'\n' && at > 0 && text[at - 1] == u'\r';
        if (text[at] == u'\r' || (text[at] == u'\n' && !second))
            length += kBreakLength;
        else if (!second)
            ++length;
    }
    return length;
}

template <class Run>
void StretchRuns(std::vector<Run>& runs, std::u16string_view text) {
    std::vector<Run> stretched;
    std::size_t begin = 0;
    for (Run& run : runs) {
        const std::size_t end = begin + static_cast<std::size_t>(run.length);
        run.length = NormalLength(text, begin, end);
        begin = end;
        if (!stretched.empty() && stretched.back().format == run.format)
            stretched.back().length += run.length;
        else if (run.length > 0)
            stretched.push_back(std::move(run));
    }
    runs = std::move(stretched);
}

// Rich text from elsewhere may hold lone breaks.
RichText Normalized(RichText text) {
    StretchRuns(text.char_runs, text.text);
    StretchRuns(text.paragraph_runs, text.text);
    text.text = NormalizeBreaks(text.text);
    return text;
}

}  // namespace

RichText MemoryEditor::Rich() const {
    return Rich({CharPos{0}, Length()});
}

RichText MemoryEditor::TakeRich() {
    const std::int32_t length = Length();
    RichText rich;
    rich.text = text_.TakeAll(watcher_);
    rich.char_runs = char_runs_.TakeAll(watcher_);
    rich.paragraph_runs = paragraph_runs_.TakeAll(watcher_);
    selection_ = {};
    line_ends_.Forget();
    empty_last_paragraph_.reset();
    // Parts that do not fit each other are nothing.
    if (length > kSmall && !KeepGoing(watcher_))
        rich = {};
    return rich;
}

void MemoryEditor::SetText(std::u16string_view text) {
    SetRich(RichText::Plain(text, default_format_));
}

void MemoryEditor::SetRich(RichText text) {
    if (HasLoneBreak(text.text, watcher_))
        text = Normalized(std::move(text));
    text_.Assign(std::move(text.text));
    char_runs_.Assign(text.char_runs, watcher_);
    paragraph_runs_.Assign(text.paragraph_runs, watcher_);
    selection_ = {};
    line_ends_.Forget();
    empty_last_paragraph_.reset();
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
        text += kBreak;
    return text;
}

RichText MemoryEditor::Rich(TextRange range) const {
    range = Clip(range);
    const TextRange inside = InText(range);
    RichText rich;
    rich.text = text_.Take(inside.first.value, inside.length, watcher_);
    rich.char_runs = char_runs_.Take(inside.first.value, inside.length, watcher_);
    rich.paragraph_runs = paragraph_runs_.Take(inside.first.value, inside.length, watcher_);
    if (inside.length > kSmall && !KeepGoing(watcher_))
        rich = {};
    if (range.end() > inside.end() && range.length > 0) {
        RichText last_break;
        last_break.text = kBreak;
        last_break.char_runs.push_back({kBreakLength, rich.char_runs.empty()
                                                          ? InsertionFormat(inside)
                                                          : rich.char_runs.back().format});
        last_break.paragraph_runs.push_back({kBreakLength, ParagraphFormatAt(CharPos{Length()})});
        rich.Append(last_break);
    }
    return rich;
}

void MemoryEditor::Format(TextRange range, const CharFormatChange& change) {
    range = InText(Clip(range));
    if (range.length == 0)
        return;
    char_runs_.ChangeFormats(range.first.value, range.length,
                             [&change](CharFormat& format) { change.ApplyTo(format); });
}

CharFormat MemoryEditor::InsertionFormat(TextRange range) const {
    range = InText(range);
    const std::int32_t first = range.first.value;
    const bool replaces = range.length > 0;
    const CharFormat* format =
        replaces || first == 0 ? char_runs_.At(first) : char_runs_.At(first - 1);
    return format == nullptr ? default_format_ : *format;
}

CharFormat MemoryEditor::FormatAt(CharPos position) const {
    const CharFormat* format = char_runs_.At(position.value);
    return format == nullptr ? InsertionFormat({position, 0}) : *format;
}

ParagraphFormat MemoryEditor::ParagraphFormatAt(CharPos position) const {
    const ParagraphFormat* format = paragraph_runs_.At(position.value);
    if (format == nullptr && empty_last_paragraph_)
        return *empty_last_paragraph_;
    if (format == nullptr && position > CharPos{0})
        format = paragraph_runs_.At(position.value - 1);
    return format == nullptr ? ParagraphFormat{} : *format;
}

std::vector<CharRun> MemoryEditor::CharRuns(TextRange range) const {
    return char_runs_.Take(range.first.value, range.length);
}

void MemoryEditor::SetCharRuns(TextRange range, const std::vector<CharRun>& runs) {
    char_runs_.Replace(range.first.value, range.length, runs);
}

std::vector<ParagraphRun> MemoryEditor::ParagraphRuns(TextRange range) const {
    return paragraph_runs_.Take(range.first.value, range.length);
}

void MemoryEditor::SetParagraphRuns(TextRange range, const std::vector<ParagraphRun>& runs) {
    paragraph_runs_.Replace(range.first.value, range.length, runs);
}

TextRange MemoryEditor::ParagraphsOf(TextRange range) const {
    range = InText(Clip(range));
    const std::int32_t begin = text_.Last(u'\n', range.first.value) + 1;
    std::int32_t end = range.end().value;
    if (range.length == 0 || text_.At(end - 1) != u'\n') {
        const std::int32_t feed = text_.Next(u'\n', end);
        end = feed < 0 ? Length() : feed + 1;
    }
    return {CharPos{begin}, end - begin};
}

void MemoryEditor::FormatParagraphs(TextRange range, const ParagraphFormatChange& change) {
    range = Clip(range);
    // A selection up to its begin does not touch it.
    if (LastParagraphIsEmpty() &&
        (range.end().value > Length() || range == TextRange{CharPos{Length()}, 0})) {
        ParagraphFormat format = ParagraphFormatAt(CharPos{Length()});
        change.ApplyTo(format);
        empty_last_paragraph_ = format;
    }
    range = ParagraphsOf(range);
    paragraph_runs_.ChangeFormats(range.first.value, range.length,
                                  [&change](ParagraphFormat& format) { change.ApplyTo(format); });
}

void MemoryEditor::Put(TextRange range, const RichText& text) {
    if (range.length == 0 && text.Empty())
        return;
    const bool at_end = range.end().value == Length();
    if (!text_.Replace(range.first.value, range.length, text.text, watcher_))
        return;
    if (at_end)
        empty_last_paragraph_.reset();
    line_ends_.Replaced(range.first.value, range.length, text.text);
    char_runs_.Replace(range.first.value, range.length, text.char_runs, watcher_);
    paragraph_runs_.Replace(range.first.value, range.length, text.paragraph_runs, watcher_);
    selection_ = Clip(selection_);
}

RichText MemoryEditor::Dressed(TextRange range, std::u16string_view text) const {
    const TextRange inside = InText(Clip(range));
    RichText rich = RichText::Plain(text, InsertionFormat(inside));
    if (!rich.Empty())
        rich.paragraph_runs = {{rich.Length(), ParagraphFormatAt(inside.first)}};
    return rich;
}

TextRange MemoryEditor::Replace(TextRange range, std::u16string_view text) {
    return Replace(range, Dressed(range, text));
}

TextRange MemoryEditor::Replace(TextRange range, const RichText& text) {
    range = Clip(range);
    const TextRange inside = InText(range);
    const bool last_break = range.length > 0 && range.end() > inside.end();
    if (HasLoneBreak(text.text, watcher_))
        return Replace(range, Normalized(text));
    if (!last_break || !text.text.ends_with(kBreak)) {
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
    return InsertionFormat(selection_);
}

const LineEnds& MemoryEditor::Lines() const {
    if (!line_ends_.Known())
        line_ends_.Build(TextPieces());
    return line_ends_;
}

std::int32_t MemoryEditor::LineOfChar(CharPos position) const {
    return Lines().CountBefore(SnapToBreak(std::clamp(position.value, 0, Length())));
}

CharPos MemoryEditor::FirstCharOfLine(std::int32_t line) const {
    const std::int32_t wanted = std::min(line, Lines().Count());
    return CharPos{wanted <= 0 ? 0 : Lines().At(wanted - 1) + 1};
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
