#include "find/find_printer.h"

#include <array>
#include <charconv>
#include <fmt/format.h>

#include "common/base/append_format.h"
#include "common/base/json_text.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"
#include "common/base/visible_text.h"

namespace zorvane {
namespace {

constexpr const char* kPathColor = "\x1B[35m";
constexpr const char* kLineColor = "\x1B[32m";
constexpr const char* kMatchColor = "\x1B[1;31m";
constexpr const char* kEndColor = "\x1B[0m";

std::string Counted(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

void FindPrinter::Show(std::string_view text, std::string& out) const {
    if (style_.terminal)
        out += VisibleText(text, LineBreaks::Shown);
    else
        out += text;
}

void FindPrinter::ShowColored(const char* color, std::string_view text, std::string& out) const {
    if (style_.color)
        out += color;
    Show(text, out);
    if (style_.color)
        out += kEndColor;
}

std::vector<MatchSpan> FindPrinter::MatchesIn(std::string_view text, int thread) {
    std::unique_ptr<MatchScratch>& scratch = scratches_[static_cast<std::size_t>(thread)];
    if (!scratch)
        scratch = std::make_unique<MatchScratch>();
    return finder_.AllIn(text, *scratch);
}

std::string FindPrinter::Print(const FoundFile& file, int thread) {
    if (file.hits == 0)
        return {};
    std::string out;
    if (style_.layout == FindLayout::Files || style_.layout == FindLayout::Counts) {
        ShowColored(kPathColor, file.path, out);
        if (style_.layout == FindLayout::Counts)
            out += ":" + std::to_string(file.hits);
        return out + "\n";
    }
    constexpr std::size_t kAroundText = 16;
    out.reserve(file.texts.size() + file.lines.size() * (file.path.size() + kAroundText));
    std::int64_t last = 0;
    for (const FoundLine& line : file.lines) {
        if (style_.layout == FindLayout::Json) {
            PrintObject(file, line, thread, out);
            continue;
        }
        if (style_.context > 0 && last > 0 && line.line > last + 1)
            out += "--\n";
        last = line.line;
        PrintLine(file, line, thread, out);
    }
    return out;
}

std::string FindPrinter::Between() const {
    return style_.layout == FindLayout::Lines && style_.context > 0 ? "--\n" : "";
}

void FindPrinter::PrintLine(const FoundFile& file, const FoundLine& line, int thread,
                            std::string& out) {
    const bool hit = line.column > 0;
    const char sign = hit ? ':' : '-';
    ShowColored(kPathColor, file.path, out);
    out += sign;
    std::array<char, 20> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), line.line);
    ShowColored(kLineColor, {digits.data(), end.ptr}, out);
    out += sign;
    if (hit && file.place) {
        if (const std::string place = file.place(line.line, line.column); !place.empty())
            out += "[" + VisibleText(place, LineBreaks::Shown) + "] ";
    }
    const std::string_view text = file.Text(line);
    if (!hit || !style_.color) {
        Show(text, out);
        out += '\n';
        return;
    }
    std::size_t told = 0;
    for (const MatchSpan& match : MatchesIn(text, thread)) {
        Show(text.substr(told, match.begin - told), out);
        ShowColored(kMatchColor, text.substr(match.begin, match.end - match.begin), out);
        told = match.end;
    }
    Show(text.substr(told), out);
    out += '\n';
}

void FindPrinter::PrintObject(const FoundFile& file, const FoundLine& line, int thread,
                              std::string& out) {
    const bool hit = line.column > 0;
    out += hit ? "{\"type\":\"hit\"," : "{\"type\":\"context\",";
    AppendJsonPath("path", file.path, out);
    AppendFormat(out, ",\"line\":{}", line.line);
    const std::string_view text = file.Text(line);
    if (hit) {
        if (file.place) {
            if (const std::string place = file.place(line.line, line.column); !place.empty()) {
                out += ",\"place\":";
                AppendJsonString(place, out);
            }
        }
        out += ",\"matches\":[";
        const char* comma = "";
        // The first one is known, even where it is of no length.
        std::vector<MatchSpan> matches = MatchesIn(text, thread);
        if (matches.empty())
            matches.push_back({line.item, line.item + line.item_length});
        for (const MatchSpan& match : matches) {
            AppendFormat(out, "{}{{\"column\":{},\"text\":", comma,
                         CountUtf8(text.substr(0, match.begin)) + 1);
            AppendJsonString(text.substr(match.begin, match.end - match.begin), out);
            out += '}';
            comma = ",";
        }
        out += ']';
    }
    out += ",\"text\":";
    AppendJsonString(text, out);
    out += "}\n";
}

std::string FindPrinter::ErrorObject(const FoundFile& file) {
    std::string out = "{\"type\":\"error\",";
    AppendJsonPath("path", file.path, out);
    out += ",\"message\":";
    AppendJsonString(file.reason, out);
    return out + "}\n";
}

std::string FindPrinter::SummaryObject(const FindCounts& counts, std::int64_t hits,
                                       std::int64_t files_with_hits) {
    return fmt::format(
        "{{\"type\":\"summary\",\"schema\":\"zorvane-find/1\",\"hits\":{},"
        "\"files_with_hits\":{},\"files\":{},\"binary\":{},\"failed\":{}}}\n",
        hits, files_with_hits, counts.files, counts.binary, counts.failed);
}

std::string FindStatText(const FindCounts& counts, std::int64_t hits,
                         std::int64_t files_with_hits) {
    std::string text = Counted(hits, "line", "lines") + " in " + std::to_string(files_with_hits) +
                       " of " + Counted(counts.files, "file", "files");
    if (counts.binary > 0)
        text += ", " + Counted(counts.binary, "binary file", "binary files") + " passed over";
    if (counts.failed > 0)
        text += ", " + std::to_string(counts.failed) + " not read";
    return text + "\n";
}

}  // namespace zorvane
