#include "load/readers/markdown/markdown_lines.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"

namespace zorvane {

std::size_t IndentOf(std::string_view line) {
    return std::min(line.find_first_not_of(' '), line.size());
}

bool IsBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

bool IsCodeLine(std::string_view line) {
    return IndentOf(line) >= kCodeIndent && !IsBlankLine(line);
}

std::size_t HeadingLevel(std::string_view line) {
    line.remove_prefix(IndentOf(line));
    const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
    const bool ends = level == line.size() || line[level] == ' ' || line[level] == '\t';
    return level >= 1 && level <= 6 && ends ? level : 0;
}

bool IsRule(std::string_view line) {
    const std::string_view text = Trim(line);
    if (text.empty() || std::string_view("*-_").find(text[0]) == std::string_view::npos)
        return false;
    const std::size_t other = text.find_first_not_of(text[0] == '*'   ? "* \t"
                                                     : text[0] == '-' ? "- \t"
                                                                      : "_ \t");
    return other == std::string_view::npos && std::count(text.begin(), text.end(), text[0]) >= 3 &&
           !IsCodeLine(line);
}

std::size_t FenceLength(std::string_view line) {
    if (IsCodeLine(line))
        return 0;
    line.remove_prefix(IndentOf(line));
    if (!line.starts_with("```") && !line.starts_with("~~~"))
        return 0;
    const std::size_t length = std::min(line.find_first_not_of(line[0]), line.size());
    const bool inline_code = line[0] == '`' && line.find('`', length) != std::string_view::npos;
    return inline_code ? 0 : length;
}

bool IsQuote(std::string_view line) {
    const std::size_t indent = IndentOf(line);
    return indent < kCodeIndent && indent < line.size() && line[indent] == '>';
}

std::optional<MarkdownMarker> ReadMarker(std::string_view line) {
    const std::size_t indent = IndentOf(line);
    if (indent >= kCodeIndent || indent >= line.size() || IsRule(line))
        return std::nullopt;
    MarkdownMarker marker;
    std::size_t at = indent;
    while (at < line.size() && at - indent < 9 && IsAsciiDigit(line[at]))
        marker.number = marker.number * 10 + (line[at++] - '0');
    if (at >= line.size())
        return std::nullopt;
    marker.kind = line[at];
    const std::string_view kinds = at > indent ? ".)" : "-+*";
    if (kinds.find(marker.kind) == std::string_view::npos)
        return std::nullopt;
    ++at;
    const std::string_view rest = line.substr(at);
    marker.empty = IsBlankLine(rest);
    if (!rest.empty() && rest[0] != ' ' && rest[0] != '\t')
        return std::nullopt;
    const std::size_t blanks = std::min(rest.find_first_not_of(" \t"), rest.size());
    marker.content = at + (marker.empty || blanks > kCodeIndent ? 1 : blanks);
    return marker;
}

bool IsHtmlBlock(std::string_view line) {
    if (IsCodeLine(line))
        return false;
    line.remove_prefix(IndentOf(line));
    if (line.size() < 2 || line[0] != '<')
        return false;
    if (line[1] == '!' || line[1] == '?')
        return true;
    const std::string_view name = line.substr(line[1] == '/' ? 2 : 1);
    const std::size_t length = std::min(name.find_first_of(" \t>/"), name.size());
    const std::string lower = ToLower(name.substr(0, std::min<std::size_t>(length, 16)));
    constexpr std::string_view kNames =
        " address article aside blockquote body center dd details dialog dir div dl dt fieldset "
        "figcaption figure footer form h1 h2 h3 h4 h5 h6 head header hr html iframe legend li link "
        "main menu nav ol option p pre script section source style summary table tbody td template "
        "textarea tfoot th thead title tr ul ";
    return !lower.empty() && kNames.find(" " + lower + " ") != std::string_view::npos;
}

bool BeginsBlock(std::string_view line) {
    if (IsCodeLine(line))
        return false;
    if (HeadingLevel(line) > 0 || IsRule(line) || FenceLength(line) > 0 || IsQuote(line) ||
        IsHtmlBlock(line))
        return true;
    const std::optional<MarkdownMarker> marker = ReadMarker(line);
    const bool numbered = marker && (marker->kind == '.' || marker->kind == ')');
    return marker && !marker->empty && (!numbered || marker->number == 1);
}

std::vector<std::string_view> CellsOf(std::string_view line) {
    line = Trim(line);
    if (line.starts_with('|'))
        line.remove_prefix(1);
    if (line.ends_with('|') && !line.ends_with("\\|"))
        line.remove_suffix(1);
    std::vector<std::string_view> cells;
    std::size_t from = 0;
    for (std::size_t at = 0; at <= line.size(); ++at) {
        if (at + 1 < line.size() && line[at] == '\\') {
            ++at;
        } else if (at == line.size() || line[at] == '|') {
            cells.push_back(Trim(line.substr(from, at - from)));
            from = at + 1;
        }
    }
    return cells;
}

bool IsTableRule(std::string_view line) {
    if (line.find('-') == std::string_view::npos ||
        line.find_first_not_of("|-: \t\r") != std::string_view::npos)
        return false;
    const std::vector<std::string_view> cells = CellsOf(line);
    return std::all_of(cells.begin(), cells.end(), [](std::string_view cell) {
        return cell.find('-') != std::string_view::npos && cell.find(' ') == std::string_view::npos;
    });
}

}  // namespace zorvane
