#include <algorithm>
#include <deque>
#include <optional>

#include "common/base/text_encoding.h"
#include "compare/document/beside.h"
#include "load/readers/markdown/markdown.h"
#include "load/readers/markdown/markdown_lines.h"

namespace zorvane {
namespace {

// An address stands at every link that names it, so that a long one is told by its digest.
std::string SharedAddress(const std::string& address) {
    constexpr std::size_t kLongest = 512;
    return address.size() <= kLongest
               ? address
               : address.substr(0, std::min<std::size_t>(address.find_first_of(" \t"), 60)) +
                     BesideDigest(address);
}

using Lines = std::vector<std::string_view>;
using Marker = MarkdownMarker;

constexpr int kMostNested = 32;
constexpr std::size_t kMostColumns = 256;

class MarkdownText {
  public:
    std::string Run(std::string_view text) {
        Lines lines = Split(text);
        FrontMatter(lines);
        Define(lines);
        Blocks(lines, 0);
        return std::move(html_);
    }

  private:
    Lines Split(std::string_view text) {
        Lines lines;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            std::string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            const std::size_t start = line.find_first_not_of(' ');
            const bool tab = start != std::string_view::npos && line[start] == '\t';
            lines.push_back(tab ? WithoutTabs(line) : line);
        }
        return lines;
    }

    // Tabs in front of a line reach to the next fourth column.
    std::string_view WithoutTabs(std::string_view line) {
        std::string text;
        std::size_t at = 0;
        for (; at < line.size() && (line[at] == ' ' || line[at] == '\t'); ++at)
            text.append(line[at] == '\t' ? 4 - text.size() % 4 : 1, ' ');
        return kept_.emplace_back(text + std::string(line.substr(at)));
    }

    // Settings in front of the text, between two lines "---" or "+++": shown line by line, since
    // they say something, and in no other way, since they are no Markdown.
    void FrontMatter(Lines& lines) {
        if (lines.size() < 3 || (lines[0] != "---" && lines[0] != "+++") ||
            lines[1].find_first_of(":=") == std::string_view::npos)
            return;
        for (std::size_t at = 1; at < lines.size(); ++at) {
            if (lines[at] == lines[0] || (lines[0] == "---" && lines[at] == "...")) {
                Code({lines.begin() + 1, lines.begin() + static_cast<std::ptrdiff_t>(at)});
                lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(at) + 1);
                return;
            }
        }
    }

    // Takes the definitions out of the text.
    void Define(Lines& lines) {
        Lines shown;
        bool in_code = false;
        for (std::size_t at = 0; at < lines.size(); ++at) {
            in_code = in_code != (FenceLength(lines[at]) > 0);
            const bool behind_text = !shown.empty() && !IsBlankLine(shown.back());
            if (in_code || !Definition(lines, at, behind_text))
                shown.push_back(lines[at]);
        }
        lines = std::move(shown);
    }

    bool Definition(const Lines& lines, std::size_t& at, bool behind_text) {
        const std::string_view line = Trim(lines[at]);
        if (!line.starts_with('[') || IsCodeLine(lines[at]))
            return false;
        const std::size_t end = line.find("]:");
        const bool note = line.starts_with("[^");
        if (end == std::string_view::npos || end < 2 || (behind_text && !note) ||
            line.substr(1, end - 1).find('[') != std::string_view::npos)
            return false;
        const std::string label = MarkdownLabel(line.substr(note ? 2 : 1, end - (note ? 2 : 1)));
        std::string content(Trim(line.substr(end + 2)));
        if (!note && content.empty())
            return false;
        if (!note) {
            definitions_.links.emplace(label, SharedAddress(content));
            return true;
        }
        while (at + 1 < lines.size() &&
               (IsCodeLine(lines[at + 1]) ||
                (IsBlankLine(lines[at + 1]) && at + 2 < lines.size() && IsCodeLine(lines[at + 2]))))
            content += " " + std::string(Trim(lines[++at]));
        definitions_.notes.emplace(label, content);
        return true;
    }

    void Blocks(const Lines& lines, int depth) {
        for (std::size_t at = 0; at < lines.size();) {
            const std::string_view line = lines[at];
            if (IsBlankLine(line))
                ++at;
            else if (IsCodeLine(line))
                IndentedCode(lines, at);
            else if (FenceLength(line) > 0)
                FencedCode(lines, at);
            else if (HeadingLevel(line) > 0)
                Heading(lines[at++]);
            else if (IsRule(line))
                Rule(at);
            else if (depth < kMostNested && IsQuote(line))
                Quote(lines, at, depth);
            else if (depth < kMostNested && ReadMarker(line))
                List(lines, at, depth);
            else if (IsHtmlBlock(line))
                Html(lines, at);
            else if (at + 1 < lines.size() && IsTable(line, lines[at + 1]))
                Table(lines, at);
            else
                Paragraph(lines, at);
        }
    }

    void Rule(std::size_t& at) {
        html_ += "<hr>\n";
        ++at;
    }

    void Code(const Lines& code) {
        html_ += "<pre>\n";
        for (const std::string_view line : code) {
            AppendEscaped(line, html_);
            html_ += '\n';
        }
        html_ += "</pre>\n";
    }

    void IndentedCode(const Lines& lines, std::size_t& at) {
        Lines code;
        for (; at < lines.size() && (IsCodeLine(lines[at]) || IsBlankLine(lines[at])); ++at)
            code.push_back(lines[at].substr(std::min(kCodeIndent, lines[at].size())));
        while (!code.empty() && IsBlankLine(code.back()))
            code.pop_back();
        Code(code);
    }

    void FencedCode(const Lines& lines, std::size_t& at) {
        const std::size_t indent = IndentOf(lines[at]);
        const std::size_t length = FenceLength(lines[at]);
        const char mark = lines[at][indent];
        Lines code;
        for (++at; at < lines.size(); ++at) {
            const std::string_view text = Trim(lines[at]);
            if (text.size() >= length && text[0] == mark && !IsCodeLine(lines[at]) &&
                text.find_first_not_of(mark) == std::string_view::npos) {
                ++at;
                break;
            }
            code.push_back(lines[at].substr(std::min(indent, IndentOf(lines[at]))));
        }
        Code(code);
    }

    void Heading(std::string_view line) {
        const std::size_t level = HeadingLevel(line);
        std::string_view text = Trim(line.substr(IndentOf(line) + level));
        const std::size_t end = text.find_last_not_of('#');
        if (end == std::string_view::npos)
            text = {};
        else if (end + 1 < text.size() && text[end] == ' ')
            text = Trim(text.substr(0, end));
        TitleOf(text, level);
    }

    void TitleOf(std::string_view text, std::size_t level) {
        const std::string name = "h" + std::to_string(level) + ">";
        html_ += "<" + name + MarkdownInline(text, definitions_) + "</" + name + "\n";
    }

    // Follows whether a line without its mark may go on with a paragraph that stands inside.
    class Inside {
      public:
        void Take(std::string_view line) {
            const bool fence = FenceLength(line) > 0;
            in_code_ = in_code_ != fence;
            paragraph_ = !in_code_ && !fence && !IsBlankLine(line) && !IsCodeLine(line) &&
                         HeadingLevel(line) == 0 && !IsRule(line);
        }
        bool GoesOnWith(std::string_view line) const {
            return paragraph_ && !IsBlankLine(line) && !BeginsBlock(line);
        }

      private:
        bool in_code_ = false;
        bool paragraph_ = false;
    };

    void Quote(const Lines& lines, std::size_t& at, int depth) {
        Lines inner;
        Inside inside;
        for (; at < lines.size(); ++at) {
            std::string_view line = lines[at];
            if (IsQuote(line)) {
                line.remove_prefix(IndentOf(line) + 1);
                if (line.starts_with(' '))
                    line.remove_prefix(1);
                inside.Take(line);
            } else if (!inside.GoesOnWith(line)) {
                break;
            }
            inner.push_back(line);
        }
        html_ += "<blockquote>\n";
        Blocks(inner, depth + 1);
        html_ += "</blockquote>\n";
    }

    void List(const Lines& lines, std::size_t& at, int depth) {
        const Marker first = *ReadMarker(lines[at]);
        const bool numbered = first.kind == '.' || first.kind == ')';
        html_ += numbered ? "<ol start=\"" + std::to_string(first.number) + "\">\n" : "<ul>\n";
        while (at < lines.size()) {
            const std::optional<Marker> marker = ReadMarker(lines[at]);
            if (!marker || marker->kind != first.kind)
                break;
            Item(lines, at, *marker, depth);
        }
        html_ += numbered ? "</ol>\n" : "</ul>\n";
    }

    void Item(const Lines& lines, std::size_t& at, const Marker& marker, int depth) {
        Lines inner = {lines[at].substr(std::min(marker.content, lines[at].size()))};
        Inside content;
        content.Take(inner.front());
        std::size_t blanks = 0;
        for (++at; at < lines.size(); ++at) {
            const std::string_view line = lines[at];
            if (IsBlankLine(line)) {
                ++blanks;
                continue;
            }
            const bool begins_late = marker.empty && inner.size() == 1 && blanks > 0;
            const bool inside = IndentOf(line) >= marker.content && !begins_late;
            if (!inside && (blanks > 0 || !content.GoesOnWith(line) || ReadMarker(line)))
                break;
            inner.insert(inner.end(), blanks, std::string_view());
            blanks = 0;
            inner.push_back(inside ? line.substr(marker.content) : line);
            if (inside)
                content.Take(inner.back());
        }
        html_ += "<li>";
        Task(inner.front());
        Blocks(inner, depth + 1);
        html_ += "</li>\n";
    }

    void Task(std::string_view& line) {
        const bool open = line.starts_with("[ ] ");
        const bool done = line.starts_with("[x] ") || line.starts_with("[X] ");
        if (!open && !done)
            return;
        line = kept_.emplace_back((open ? "\u2610 " : "\u2611 ") + std::string(line.substr(4)));
    }

    void Html(const Lines& lines, std::size_t& at) {
        const std::string_view start = Trim(lines[at]);
        std::string_view end;
        if (start.starts_with("<!--"))
            end = "-->";
        else if (start.starts_with("<script"))
            end = "</script>";
        else if (start.starts_with("<style"))
            end = "</style>";
        else if (start.starts_with("<pre"))
            end = "</pre>";
        while (at < lines.size()) {
            const std::string_view line = lines[at];
            if (end.empty() && IsBlankLine(line))
                return;
            html_ += line;
            html_ += '\n';
            ++at;
            if (!end.empty() && line.find(end) != std::string_view::npos)
                return;
        }
    }

    static bool IsTable(std::string_view head, std::string_view rule) {
        return head.find('|') != std::string_view::npos && IsTableRule(rule) &&
               CellsOf(head).size() == CellsOf(rule).size();
    }

    void Table(const Lines& lines, std::size_t& at) {
        const std::size_t columns = std::min(CellsOf(lines[at]).size(), kMostColumns);
        html_ += "<table>\n";
        TableRow(lines[at], columns, "th");
        for (at += 2; at < lines.size() && !IsBlankLine(lines[at]) && !BeginsBlock(lines[at]); ++at)
            TableRow(lines[at], columns, "td");
        html_ += "</table>\n";
    }

    void TableRow(std::string_view line, std::size_t columns, std::string_view name) {
        const std::vector<std::string_view> cells = CellsOf(line);
        html_ += "<tr>";
        for (std::size_t column = 0; column < columns; ++column) {
            // Short rows of a wide table are filled up, but not beyond all measure.
            if (column >= cells.size() && empty_cells_left_ == 0)
                break;
            empty_cells_left_ -= column >= cells.size() ? 1U : 0U;
            html_ += "<" + std::string(name) + ">";
            if (column < cells.size())
                html_ += MarkdownInline(cells[column], definitions_);
        }
        html_ += "</tr>\n";
    }

    void Paragraph(const Lines& lines, std::size_t& at) {
        std::string text(lines[at].substr(IndentOf(lines[at])));
        for (++at; at < lines.size(); ++at) {
            const std::string_view line = lines[at];
            const std::string_view under = Trim(line);
            if (!IsCodeLine(line) && !under.empty() && (under[0] == '=' || under[0] == '-') &&
                under.find_first_not_of(under[0]) == std::string_view::npos) {
                ++at;
                TitleOf(Trim(text), under[0] == '=' ? 1 : 2);
                return;
            }
            if (IsBlankLine(line) || BeginsBlock(line))
                break;
            text += '\n';
            text += line.substr(IndentOf(line));
        }
        html_ += "<p>" + MarkdownInline(Trim(text), definitions_) + "</p>\n";
    }

    std::string html_;
    std::deque<std::string> kept_;  // lines that are not as they stand in the text
    MarkdownDefinitions definitions_;
    std::size_t empty_cells_left_ = 100'000;
};

}  // namespace

std::string MarkdownToHtml(std::string_view utf8) {
    return MarkdownText().Run(utf8);
}

}  // namespace zorvane
