#include "redline/document_layout.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>
#include <vector>

namespace zorvane {
namespace {

constexpr char16_t kCellMark = 0x07;

class Layout {
  public:
    Layout(const RichText& text, DocumentPen& pen) : text_(text), pen_(pen) {}

    void Write() {
        const std::u16string_view text = text_.text;
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(u"\r\n", begin), text.size());
            // Behind the last break there is no paragraph.
            if (begin == text.size() && begin > 0)
                break;
            WriteLine(begin, end);
            begin = end + 2;
        }
        CloseTable();
    }

  private:
    void WriteLine(std::size_t begin, std::size_t end) {
        const bool row = end > begin && text_.text[end - 1] == kCellMark;
        if (row) {
            rows_.emplace_back(begin, end);
            return;
        }
        CloseTable();
        WriteParagraph(begin, end);
    }

    void WriteParagraph(std::size_t begin, std::size_t end) {
        const std::u16string_view text = std::u16string_view(text_.text).substr(begin, end - begin);
        const std::size_t label_end =
            text.starts_with(kLabelBegin) ? text.find(kLabelEnd) : std::u16string_view::npos;
        const bool has_label = label_end != std::u16string_view::npos;
        std::u16string_view label = has_label ? text.substr(1, label_end - 1) : u"";
        if (label.ends_with(u'\t'))
            label.remove_suffix(1);  // lists have one of their own
        pen_.BeginParagraph(ParagraphFormatAt(begin), label);
        WriteRuns(has_label ? begin + label_end + 1 : begin, end);
        pen_.EndParagraph();
    }

    void CloseTable() {
        if (rows_.empty())
            return;
        std::size_t columns = 0;
        for (const auto& [begin, end] : rows_) {
            const std::u16string_view row =
                std::u16string_view(text_.text).substr(begin, end - begin);
            columns = std::max(
                columns, static_cast<std::size_t>(std::count(row.begin(), row.end(), kCellMark)));
        }
        pen_.BeginTable(columns);
        for (const auto& [begin, end] : std::exchange(rows_, {})) {
            pen_.BeginRow();
            for (std::size_t cell = begin; cell < end;) {
                const std::size_t mark = text_.text.find(kCellMark, cell);
                pen_.BeginCell();
                WriteParagraph(cell, mark);
                pen_.EndCell();
                cell = mark + 1;
            }
            pen_.EndRow();
        }
        pen_.EndTable();
    }

    // Places only ever ascend.
    const ParagraphFormat& ParagraphFormatAt(std::size_t place) {
        static const ParagraphFormat kPlain;
        const auto& runs = text_.paragraph_runs;
        while (paragraph_run_ < runs.size() &&
               place >= paragraph_begin_ + static_cast<std::size_t>(runs[paragraph_run_].length))
            paragraph_begin_ += static_cast<std::size_t>(runs[paragraph_run_++].length);
        return paragraph_run_ < runs.size() ? runs[paragraph_run_].format : kPlain;
    }

    void WriteRuns(std::size_t begin, std::size_t end) {
        const auto& runs = text_.char_runs;
        while (begin < end && run_ < runs.size()) {
            const std::size_t run_end = run_begin_ + static_cast<std::size_t>(runs[run_].length);
            if (begin >= run_end) {
                run_begin_ = run_end;
                ++run_;
                continue;
            }
            const std::size_t stop = std::min(end, run_end);
            pen_.Run(runs[run_].format,
                     std::u16string_view(text_.text).substr(begin, stop - begin));
            begin = stop;
        }
    }

    const RichText& text_;
    DocumentPen& pen_;
    std::vector<std::pair<std::size_t, std::size_t>> rows_;
    std::size_t run_ = 0;
    std::size_t run_begin_ = 0;
    std::size_t paragraph_run_ = 0;
    std::size_t paragraph_begin_ = 0;
};

}  // namespace

void LayOut(const RichText& text, DocumentPen& pen) {
    Layout(text, pen).Write();
}

void AppendXml(std::string_view utf8, std::string& out) {
    for (const char byte : utf8) {
        if (byte == '&')
            out += "&amp;";
        else if (byte == '<')
            out += "&lt;";
        else if (byte == '>')
            out += "&gt;";
        else if (byte == '"')
            out += "&quot;";
        else
            out += byte;
    }
}

std::string HexOf(Color color) {
    std::array<char, 8> hex{};
    const auto value = static_cast<unsigned>(color.value);
    std::snprintf(hex.data(), hex.size(), "%02X%02X%02X", value & 0xFFU, (value >> 8U) & 0xFFU,
                  (value >> 16U) & 0xFFU);
    return hex.data();
}

}  // namespace zorvane
