#include "redline/new_document.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "common/base/text_encoding.h"
#include "redline/zip_writer.h"

namespace zorvane {
namespace {

constexpr std::string_view kTypes =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package."
    "relationships+xml\"/><Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/word/document.xml\" ContentType=\"application/"
    "vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/></Types>";
constexpr std::string_view kRelations =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
    "relationships/officeDocument\" Target=\"word/document.xml\"/></Relationships>";
constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><w:body>";
constexpr std::string_view kTail =
    "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/><w:pgMar w:top=\"1134\" w:right=\"1134\" "
    "w:bottom=\"1134\" w:left=\"1134\" w:header=\"709\" w:footer=\"709\" w:gutter=\"0\"/>"
    "</w:sectPr></w:body></w:document>";
constexpr char16_t kCellMark = 0x07;
constexpr char16_t kLineMark = 0x0B;

void AppendEscaped(std::string_view utf8, std::string& out) {
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

void AppendElement(std::string& out, const char* name, std::string_view value = {}) {
    out.append("<w:").append(name);
    if (!value.empty())
        out.append(" w:val=\"").append(value).append("\"");
    out += "/>";
}

std::string HexOf(Color color) {
    std::array<char, 8> hex{};
    const auto value = static_cast<unsigned>(color.value);
    std::snprintf(hex.data(), hex.size(), "%02X%02X%02X", value & 0xFFU, (value >> 8U) & 0xFFU,
                  (value >> 16U) & 0xFFU);
    return hex.data();
}

// In the order in which a schema wants them.
std::string LookOf(const CharFormat& format) {
    std::string look = "<w:rFonts w:ascii=\"";
    std::string font;
    AppendEscaped(format.font.view(), font);
    look += font + "\" w:hAnsi=\"" + font + "\" w:cs=\"" + font + "\"/>";
    if (format.bold)
        AppendElement(look, "b");
    if (format.italic)
        AppendElement(look, "i");
    if (format.strikeout)
        AppendElement(look, "strike");
    if (format.hidden)
        AppendElement(look, "vanish");
    if (format.fore_color)
        AppendElement(look, "color", HexOf(*format.fore_color));
    AppendElement(look, "sz", std::to_string(format.half_points));
    if (format.underline != Underline::None)
        AppendElement(look, "u", "single");
    if (format.back_color)
        look += "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"" + HexOf(*format.back_color) +
                "\"/>";
    if (format.baseline != Baseline::Normal)
        AppendElement(look, "vertAlign",
                      format.baseline == Baseline::Superscript ? "superscript" : "subscript");
    return "<w:rPr>" + look + "</w:rPr>";
}

std::string LookOf(const ParagraphFormat& format) {
    constexpr std::array<const char*, 4> kAlignments{"", "center", "right", "both"};
    std::string look;
    if (format.right_to_left)
        AppendElement(look, "bidi");
    const auto number = [](std::int32_t value) { return std::to_string(value); };
    if (format.space_before > 0 || format.space_after > 0)
        look += "<w:spacing w:before=\"" + number(std::max(0, format.space_before)) +
                "\" w:after=\"" + number(std::max(0, format.space_after)) + "\"/>";
    if (format.left_indent != 0 || format.right_indent != 0 || format.first_line_indent != 0) {
        look += "<w:ind w:left=\"" + number(format.left_indent) + "\" w:right=\"" +
                number(format.right_indent) + "\"";
        look += format.first_line_indent < 0
                    ? " w:hanging=\"" + number(-format.first_line_indent) + "\"/>"
                    : " w:firstLine=\"" + number(format.first_line_indent) + "\"/>";
    }
    if (format.alignment != Alignment::Left)
        AppendElement(look, "jc", kAlignments[static_cast<std::size_t>(format.alignment)]);
    return look.empty() ? look : "<w:pPr>" + look + "</w:pPr>";
}

class Layout {
  public:
    explicit Layout(const RichText& text) : text_(text) {}

    std::string Write() {
        out_ = kHead;
        const std::u16string_view text = text_.text;
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(u"\r\n", begin), text.size());
            const std::size_t next = end + 2;
            // Behind the last break there is no paragraph.
            if (begin == text.size() && begin > 0)
                break;
            WriteLine(begin, end);
            begin = next;
        }
        CloseTable();
        if (!last_is_paragraph_)
            out_ += "<w:p/>";
        return std::move(out_.append(kTail));
    }

  private:
    void WriteLine(std::size_t begin, std::size_t end) {
        const bool row = end > begin && text_.text[end - 1] == kCellMark;
        if (row) {
            rows_.emplace_back(begin, end);
            last_is_paragraph_ = false;
            return;
        }
        CloseTable();
        WriteParagraph(begin, end);
        last_is_paragraph_ = true;
    }

    void WriteParagraph(std::size_t begin, std::size_t end) {
        out_ += "<w:p>" + LookOf(ParagraphFormatAt(begin));
        WriteRuns(begin, end);
        out_ += "</w:p>";
    }

    // Tables beside each other in the text are one.
    void CloseTable() {
        if (rows_.empty())
            return;
        const auto is_mark = [this](std::size_t at) { return text_.text[at] == kCellMark; };
        std::size_t columns = 0;
        std::string rows;
        std::swap(rows, out_);
        for (const auto& [begin, end] : rows_) {
            out_ += "<w:tr>";
            std::size_t cells = 0;
            for (std::size_t cell = begin; cell < end; ++cells) {
                std::size_t mark = cell;
                while (!is_mark(mark))
                    ++mark;
                out_ += "<w:tc><w:tcPr/>";
                WriteParagraph(cell, mark);
                out_ += "</w:tc>";
                cell = mark + 1;
            }
            out_ += "</w:tr>";
            columns = std::max(columns, cells);
        }
        std::swap(rows, out_);
        out_ += "<w:tbl><w:tblPr><w:tblBorders>";
        for (const char* side : {"top", "left", "bottom", "right", "insideH", "insideV"})
            out_.append("<w:").append(side).append(
                " w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>");
        out_ += "</w:tblBorders></w:tblPr><w:tblGrid>";
        constexpr std::size_t kWidth = 9600;  // twips between the margins
        for (std::size_t i = 0; i < columns; ++i)
            out_ += "<w:gridCol w:w=\"" + std::to_string(kWidth / columns) + "\"/>";
        out_ += "</w:tblGrid>" + rows + "</w:tbl>";
        rows_.clear();
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
            out_ += "<w:r>" + LookOf(runs[run_].format);
            WriteText(std::u16string_view(text_.text).substr(begin, stop - begin));
            out_ += "</w:r>";
            begin = stop;
        }
    }

    void WriteText(std::u16string_view text) {
        std::size_t begin = 0;
        const auto flush = [&](std::size_t end) {
            if (end == begin)
                return;
            out_ += "<w:t xml:space=\"preserve\">";
            AppendEscaped(ToUtf8(text.substr(begin, end - begin)), out_);
            out_ += "</w:t>";
        };
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] >= u' ' && text[i] < 0xFFFE)
                continue;
            flush(i);
            begin = i + 1;
            if (text[i] == u'\t')
                out_ += "<w:tab/>";
            else if (text[i] == kLineMark)
                out_ += "<w:br/>";
        }
        flush(text.size());
    }

    const RichText& text_;
    std::string out_;
    std::vector<std::pair<std::size_t, std::size_t>> rows_;
    bool last_is_paragraph_ = false;
    std::size_t run_ = 0;
    std::size_t run_begin_ = 0;
    std::size_t paragraph_run_ = 0;
    std::size_t paragraph_begin_ = 0;
};

}  // namespace

std::optional<std::string> NewDocument(const RichText& text) {
    const std::string document = Layout(text).Write();
    return WriteZip({{"[Content_Types].xml", kTypes},
                     {"_rels/.rels", kRelations},
                     {"word/document.xml", document}});
}

}  // namespace zorvane
