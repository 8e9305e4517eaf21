#include "redline/new_document.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "common/base/text_encoding.h"
#include "redline/document_layout.h"
#include "redline/zip_writer.h"

namespace zorvane {
namespace {

constexpr std::string_view kTypes =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package."
    "relationships+xml\"/><Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/word/document.xml\" ContentType=\"application/"
    "vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/><Override "
    "PartName=\"/word/numbering.xml\" ContentType=\"application/"
    "vnd.openxmlformats-officedocument.wordprocessingml.numbering+xml\"/></Types>";
constexpr std::string_view kRelations =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
    "relationships/officeDocument\" Target=\"word/document.xml\"/></Relationships>";
constexpr std::string_view kTextRelations =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
    "relationships/numbering\" Target=\"numbering.xml\"/></Relationships>";
constexpr std::string_view kNumbering =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<w:numbering xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">";
constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><w:body>";
constexpr std::string_view kTail =
    "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/><w:pgMar w:top=\"1134\" w:right=\"1134\" "
    "w:bottom=\"1134\" w:left=\"1134\" w:header=\"709\" w:footer=\"709\" w:gutter=\"0\"/>"
    "</w:sectPr></w:body></w:document>";
void AppendElement(std::string& out, const char* name, std::string_view value = {}) {
    out.append("<w:").append(name);
    if (!value.empty())
        out.append(" w:val=\"").append(value).append("\"");
    out += "/>";
}

// In the order in which a schema wants them.
std::string LookOf(const CharFormat& format) {
    std::string look = "<w:rFonts w:ascii=\"";
    std::string font;
    AppendXml(format.font.view(), font);
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

std::string LookOf(const ParagraphFormat& format, std::size_t list) {
    constexpr std::array<const char*, 4> kAlignments{"", "center", "right", "both"};
    std::string look;
    if (list > 0)
        look += "<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"" + std::to_string(list) +
                "\"/></w:numPr>";
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

class WordPen : public DocumentPen {
  public:
    WordPen() : out_(kHead) {}

    void BeginParagraph(const ParagraphFormat& format, std::u16string_view label) override {
        const std::size_t list =
            label.empty() ? 0 : lists_.try_emplace(ToUtf8(label), lists_.size() + 1).first->second;
        out_ += "<w:p>" + LookOf(format, list);
    }
    void EndParagraph() override { out_ += "</w:p>"; }
    void Run(const CharFormat& format, std::u16string_view text) override {
        out_ += "<w:r>" + LookOf(format);
        WriteText(text);
        out_ += "</w:r>";
    }
    void BeginTable(std::size_t columns) override {
        out_ += "<w:tbl><w:tblPr><w:tblBorders>";
        for (const char* side : {"top", "left", "bottom", "right", "insideH", "insideV"})
            out_.append("<w:").append(side).append(
                " w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>");
        out_ += "</w:tblBorders></w:tblPr><w:tblGrid>";
        constexpr std::size_t kWidth = 9600;  // twips between the margins
        for (std::size_t i = 0; i < columns; ++i)
            out_ += "<w:gridCol w:w=\"" + std::to_string(kWidth / columns) + "\"/>";
        out_ += "</w:tblGrid>";
    }
    void EndTable() override { out_ += "</w:tbl>"; }
    void BeginRow() override { out_ += "<w:tr>"; }
    void EndRow() override { out_ += "</w:tr>"; }
    void BeginCell() override { out_ += "<w:tc><w:tcPr/>"; }
    void EndCell() override { out_ += "</w:tc>"; }

    std::string Take() { return std::move(out_.append(kTail)); }

    // A list for each label, whose only level shows it as a bullet: nothing counts.
    std::string Numbering() const {
        std::string lists(kNumbering);
        std::string numbers;
        for (const auto& [label, list] : lists_) {
            const std::string id = std::to_string(list);
            lists += "<w:abstractNum w:abstractNumId=\"" + id +
                     "\"><w:multiLevelType w:val=\"singleLevel\"/><w:lvl w:ilvl=\"0\"><w:start "
                     "w:val=\"1\"/><w:numFmt w:val=\"bullet\"/><w:lvlText w:val=\"";
            AppendXml(label, lists);
            lists += "\"/><w:lvlJc w:val=\"left\"/></w:lvl></w:abstractNum>";
            numbers +=
                "<w:num w:numId=\"" + id + "\"><w:abstractNumId w:val=\"" + id + "\"/></w:num>";
        }
        return lists + numbers + "</w:numbering>";
    }

  private:
    void WriteText(std::u16string_view text) {
        std::size_t begin = 0;
        const auto flush = [&](std::size_t end) {
            if (end == begin)
                return;
            out_ += "<w:t xml:space=\"preserve\">";
            AppendXml(ToUtf8(text.substr(begin, end - begin)), out_);
            out_ += "</w:t>";
        };
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (IsShown(text[i]))
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

    std::string out_;
    std::map<std::string, std::size_t> lists_;
};

}  // namespace

std::optional<std::string> NewDocument(const RichText& text) {
    WordPen pen;
    LayOut(text, pen);
    const std::string document = pen.Take();
    const std::string numbering = pen.Numbering();
    return WriteZip({{"[Content_Types].xml", kTypes},
                     {"_rels/.rels", kRelations},
                     {"word/document.xml", document},
                     {"word/_rels/document.xml.rels", kTextRelations},
                     {"word/numbering.xml", numbering}});
}

}  // namespace zorvane
