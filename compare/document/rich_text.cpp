#include "compare/document/rich_text.h"

#include <algorithm>

#include "common/base/append_in_parts.h"
#include "common/base/paragraph_break.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

template <class Run>
void AppendRun(std::vector<Run>& runs, const Run& run) {
    if (run.length == 0)
        return;
    if (!runs.empty() && runs.back().format == run.format)
        runs.back().length += run.length;
    else
        runs.push_back(run);
}

}  // namespace

FontName::FontName(std::string_view utf8) {
    std::size_t size = std::min(utf8.size(), bytes_.size());
    while (size < utf8.size() && size > 0 && IsContinuation(utf8[size]))
        --size;
    std::copy_n(utf8.begin(), size, bytes_.begin());
    size_ = static_cast<std::uint8_t>(size);
}

RichText RichText::Plain(std::u16string_view text, const CharFormat& format) {
    RichText rich;
    rich.text = NormalizeBreaks(text);
    rich.SetOneFormat(format);
    return rich;
}

RichText CopyOf(const RichText& text, RunWatcher* watcher) {
    RichText copy;
    StopCheck stop(watcher);
    copy.text.reserve(text.text.size());
    AppendInParts(std::u16string_view(text.text), stop, copy.text);
    const auto copy_runs = [&stop](const auto& runs, auto& to) {
        to.reserve(runs.size());
        for (const auto& run : runs) {
            if (!stop.KeepGoing())
                return;
            to.push_back(run);
        }
    };
    copy_runs(text.char_runs, copy.char_runs);
    copy_runs(text.paragraph_runs, copy.paragraph_runs);
    if (stop.Stopped())
        copy = {};
    return copy;
}

RichText RichText::PlainFrom(std::u16string&& text, const CharFormat& format, RunWatcher* watcher) {
    RichText rich;
    rich.text = NormalizeBreaks(text, watcher);
    std::u16string().swap(text);
    rich.SetOneFormat(format);
    return rich;
}

void RichText::SetOneFormat(const CharFormat& format) {
    char_runs.clear();
    paragraph_runs.clear();
    AppendRun(char_runs, {Length(), format});
    AppendRun(paragraph_runs, {Length(), ParagraphFormat{}});
}

void RichText::Append(const RichText& other, RunWatcher* watcher) {
    StopCheck stop(watcher);
    if (text.capacity() - text.size() < other.text.size() && watcher != nullptr) {
        // Who ends it with a break need not move it.
        std::u16string joined;
        joined.reserve(text.size() + other.text.size() + kBreak.size());
        AppendInParts(std::u16string_view(text), stop, joined);
        text = std::move(joined);
    }
    AppendInParts(std::u16string_view(other.text), stop, text);
    for (const CharRun& run : other.char_runs) {
        if (!stop.KeepGoing())
            return;
        AppendRun(char_runs, run);
    }
    for (const ParagraphRun& run : other.paragraph_runs) {
        if (!stop.KeepGoing())
            return;
        AppendRun(paragraph_runs, run);
    }
}

void RichText::AppendPlain(std::u16string_view more, const CharFormat& format) {
    Append(Plain(more, format));
}

void CharFormatChange::ApplyTo(CharFormat& format) const {
    if (font)
        format.font = *font;
    if (half_points)
        format.half_points = *half_points;
    if (fore_color)
        format.fore_color = *fore_color;
    if (back_color)
        format.back_color = *back_color;
    if (underline)
        format.underline = *underline;
    if (baseline)
        format.baseline = *baseline;
    if (bold)
        format.bold = *bold;
    if (italic)
        format.italic = *italic;
    if (strikeout)
        format.strikeout = *strikeout;
}

void ParagraphFormatChange::ApplyTo(ParagraphFormat& format) const {
    if (alignment)
        format.alignment = *alignment;
    if (right_to_left)
        format.right_to_left = *right_to_left;
    if (left_indent)
        format.left_indent = *left_indent;
    if (right_indent)
        format.right_indent = *right_indent;
    if (first_line_indent)
        format.first_line_indent = *first_line_indent;
    if (space_before)
        format.space_before = *space_before;
    if (space_after)
        format.space_after = *space_after;
}

}  // namespace zorvane
