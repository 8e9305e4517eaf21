#include "load/document_text.h"

#include <algorithm>
#include <utility>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"
#include "load/column_letters.h"

namespace zorvane {
namespace {

constexpr std::string_view kSheetRule = "============= ";
constexpr std::string_view kSheetRuleBehind = " =============";

// The next line without its end; false at the end of the text.
bool NextLine(std::string_view text, std::size_t& at, std::string_view& line) {
    if (at >= text.size())
        return false;
    const std::size_t end = std::min(text.find('\n', at), text.size());
    line = text.substr(at, end - at);
    at = end + 1;
    return true;
}

DocumentText WithPages(std::string text) {
    DocumentText document;
    document.places.push_back({PlaceKind::Page, 1, "1"});
    std::int64_t line = 1;
    for (const char character : text) {
        if (character == '\n')
            ++line;
        if (character == '\f') {
            const std::string number = std::to_string(document.places.size() + 1);
            document.places.push_back({PlaceKind::Page, line, number});
        }
    }
    std::erase(text, '\f');
    document.text = std::move(text);
    return document;
}

DocumentText WithSheets(std::string text) {
    DocumentText document;
    std::size_t at = 0;
    std::int64_t number = 0;
    for (std::string_view line; NextLine(text, at, line);) {
        ++number;
        if (line.size() > kSheetRule.size() + kSheetRuleBehind.size() &&
            line.starts_with(kSheetRule) && line.ends_with(kSheetRuleBehind)) {
            line.remove_prefix(kSheetRule.size());
            line.remove_suffix(kSheetRuleBehind.size());
            document.places.push_back({PlaceKind::Sheet, number, std::string(line)});
        }
    }
    document.text = std::move(text);
    return document;
}

// A line of the slides' own that looks like a mark does not stand where the next one is due, or is
// not followed by what follows a mark.
DocumentText WithSlides(const std::string& text) {
    DocumentText document;
    std::vector<std::string_view> lines;
    std::size_t at = 0;
    for (std::string_view line; NextLine(text, at, line);)
        lines.push_back(line);
    std::int64_t written = 0;
    int slide = 0;
    int shape = 0;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const std::string next_slide = "Slide " + std::to_string(slide + 1);
        const bool last = index + 1 == lines.size();
        const std::string_view behind = last ? "" : lines[index + 1];
        const bool marks = last || behind.empty() || behind == "Shape 1:" ||
                           behind == "Slide " + std::to_string(slide + 2);
        if (lines[index] == next_slide && marks) {
            ++slide;
            shape = 0;
            document.places.push_back({PlaceKind::Slide, written + 1, std::to_string(slide)});
            continue;
        }
        if (slide > 0 && lines[index] == "Shape " + std::to_string(shape + 1) + ":") {
            ++shape;
            continue;
        }
        document.text.append(lines[index]) += '\n';
        ++written;
    }
    return document;
}

}  // namespace

std::string PlainLines(std::u16string text) {
    std::erase(text, u'\r');
    std::replace(text.begin(), text.end(), u'\x0B', u'\n');
    std::replace(text.begin(), text.end(), u'\x07', u'\t');
    return ToUtf8(text);
}

DocumentText WithPlaces(std::string text, PlaceMarks marks) {
    switch (marks) {
        case PlaceMarks::FormFeeds:
            return WithPages(std::move(text));
        case PlaceMarks::SlideNumbers:
            return WithSlides(text);
        case PlaceMarks::SheetNames:
            return WithSheets(std::move(text));
        case PlaceMarks::None:
            break;
    }
    return {std::move(text), {}};
}

std::string PlaceFinder::PlaceOf(std::int64_t line, std::int32_t column) {
    const auto behind = std::upper_bound(
        document_.places.begin(), document_.places.end(), line,
        [](std::int64_t number, const TextPlace& place) { return number < place.line; });
    if (behind == document_.places.begin())
        return {};
    const TextPlace& place = *std::prev(behind);
    switch (place.kind) {
        case PlaceKind::Page:
            return "page " + place.name;
        case PlaceKind::Slide:
            return "slide " + place.name;
        case PlaceKind::Sheet:
            return line == place.line ? place.name : CellOf(place, line, column);
    }
    return {};
}

void PlaceFinder::Step() {
    const std::string& text = document_.text;
    const std::size_t end = std::min(text.find('\n', at_), text.size());
    const auto quotes = std::count(text.begin() + static_cast<std::ptrdiff_t>(at_),
                                   text.begin() + static_cast<std::ptrdiff_t>(end), '"');
    quoted_ = quoted_ != (quotes % 2 != 0);
    at_ = std::min(end + 1, text.size());
    ++line_;
    if (!quoted_) {
        ++row_;
        row_at_ = at_;
    }
}

// Rows count from the line behind the sheet's name; one with a line end in a cell is several lines.
void PlaceFinder::GoTo(std::int64_t line, std::int64_t sheet_line) {
    if (line < line_) {
        line_ = 1;
        at_ = row_at_ = 0;
        quoted_ = false;
    }
    while (line_ < line) {
        if (line_ == sheet_line) {
            quoted_ = false;
            row_ = 0;
        }
        Step();
    }
}

std::string PlaceFinder::CellOf(const TextPlace& sheet, std::int64_t line, std::int32_t column) {
    if (line_ < sheet.line || line_ > line)
        GoTo(sheet.line, sheet.line);
    GoTo(line, sheet.line);
    const std::string& text = document_.text;
    std::size_t end = at_;
    for (std::int32_t left = column - 1; left > 0 && end < text.size(); --left) {
        ++end;
        while (end < text.size() && IsContinuation(text[end]))
            ++end;
    }
    std::int64_t cell = 0;
    bool quoted = false;
    for (std::size_t at = row_at_; at < end; ++at) {
        quoted = quoted != (text[at] == '"');
        cell += text[at] == ',' && !quoted ? 1 : 0;
    }
    std::string place = sheet.name + "!";
    AppendColumn(cell, place);
    return place + std::to_string(row_);
}

}  // namespace zorvane
