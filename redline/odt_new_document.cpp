// The OpenDocument text that a rich text is laid out as.
#include <map>
#include <string_view>

#include "common/base/text_encoding.h"
#include "redline/document_layout.h"
#include "redline/new_document.h"
#include "redline/zip_writer.h"

namespace zorvane {
namespace {

constexpr std::string_view kNames =
    " xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
    " xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\""
    " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
    " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
    " xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\""
    " xmlns:svg=\"urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0\""
    " xmlns:dc=\"http://purl.org/dc/elements/1.1/\" office:version=\"1.3\"";
constexpr std::string_view kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr std::string_view kNewManifest =
    "<manifest:manifest xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" "
    "manifest:version=\"1.3\"><manifest:file-entry manifest:full-path=\"/\" "
    "manifest:version=\"1.3\" "
    "manifest:media-type=\"application/vnd.oasis.opendocument.text\"/><manifest:file-entry "
    "manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/><manifest:file-entry "
    "manifest:full-path=\"styles.xml\" manifest:media-type=\"text/xml\"/></manifest:manifest>";
constexpr std::string_view kPage =
    "<office:styles/><office:automatic-styles><style:page-layout style:name=\"Page\">"
    "<style:page-layout-properties fo:page-width=\"210mm\" fo:page-height=\"297mm\" "
    "fo:margin=\"20mm\"/></style:page-layout></office:automatic-styles><office:master-styles>"
    "<style:master-page style:name=\"Standard\" style:page-layout-name=\"Page\"/>"
    "</office:master-styles>";
constexpr std::string_view kBorderedCell =
    "<style:style style:name=\"Cell\" style:family=\"table-cell\"><style:table-cell-properties "
    "fo:padding=\"1mm\" fo:border=\"0.5pt solid #000000\"/></style:style>";

void AppendAttribute(std::string& out, const char* name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    AppendXml(value, out);
    out += '"';
}

std::string Points(std::int32_t twips) {
    constexpr std::int32_t kTwipsInPoint = 20;
    const std::int32_t part = twips % kTwipsInPoint * 5;  // hundredths
    const std::int32_t size = part < 0 ? -part : part;
    return (twips < 0 ? "-" : "") +
           std::to_string(twips < 0 ? -(twips / kTwipsInPoint) : twips / kTwipsInPoint) +
           (size < 10 ? ".0" : ".") + std::to_string(size) + "pt";
}

std::string OdtLookOf(const CharFormat& format) {
    std::string look;
    if (format.fore_color)
        AppendAttribute(look, "fo:color", "#" + HexOf(*format.fore_color));
    if (format.back_color)
        AppendAttribute(look, "fo:background-color", "#" + HexOf(*format.back_color));
    AppendAttribute(look, "fo:font-family", "'" + std::string(format.font.view()) + "'");
    constexpr std::int32_t kTwipsInHalfPoint = 10;
    AppendAttribute(look, "fo:font-size", Points(format.half_points * kTwipsInHalfPoint));
    if (format.bold)
        AppendAttribute(look, "fo:font-weight", "bold");
    if (format.italic)
        AppendAttribute(look, "fo:font-style", "italic");
    if (format.strikeout)
        AppendAttribute(look, "style:text-line-through-style", "solid");
    if (format.underline != Underline::None)
        AppendAttribute(look, "style:text-underline-style", "solid");
    if (format.hidden)
        AppendAttribute(look, "text:display", "none");
    if (format.baseline != Baseline::Normal)
        AppendAttribute(look, "style:text-position",
                        format.baseline == Baseline::Superscript ? "super 58%" : "sub 58%");
    return "<style:text-properties" + look + "/>";
}

std::string OdtLookOf(const ParagraphFormat& format) {
    constexpr const char* kAlignments[] = {"left", "center", "right", "justify"};
    std::string look;
    AppendAttribute(look, "fo:text-align", kAlignments[static_cast<std::size_t>(format.alignment)]);
    AppendAttribute(look, "fo:margin-left", Points(format.left_indent));
    AppendAttribute(look, "fo:margin-right", Points(format.right_indent));
    AppendAttribute(look, "fo:text-indent", Points(format.first_line_indent));
    AppendAttribute(look, "fo:margin-top", Points(format.space_before));
    AppendAttribute(look, "fo:margin-bottom", Points(format.space_after));
    if (format.right_to_left)
        AppendAttribute(look, "style:writing-mode", "rl-tb");
    return "<style:paragraph-properties" + look + "/>";
}

class OdtPen : public DocumentPen {
  public:
    void BeginParagraph(const ParagraphFormat& format, std::u16string_view label) override {
        in_list_ = !label.empty();
        if (in_list_)
            body_ += "<text:list text:style-name=\"" + ListFor(label) + "\"><text:list-item>";
        body_ += "<text:p text:style-name=\"" + StyleFor("paragraph", OdtLookOf(format)) + "\">";
        after_blank_ = true;
    }
    void EndParagraph() override {
        body_ += "</text:p>";
        if (in_list_)
            body_ += "</text:list-item></text:list>";
    }
    void Run(const CharFormat& format, std::u16string_view text) override {
        body_ += "<text:span text:style-name=\"" + StyleFor("text", OdtLookOf(format)) + "\">";
        std::u16string plain;
        const auto flush = [&] {
            AppendXml(ToUtf8(plain), body_);
            plain.clear();
        };
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i];
            const bool blank = unit == u' ';
            // A blank that a reader would take for one too many, or drop at an end.
            const bool kept = blank && (after_blank_ || i + 1 == text.size());
            if (unit == u'\t' || unit == kLineMark || kept) {
                flush();
                body_ += unit == u'\t' ? "<text:tab/>" : blank ? "<text:s/>" : "<text:line-break/>";
            } else if (IsShown(unit)) {
                plain += unit;
            }
            after_blank_ = blank;
        }
        flush();
        body_ += "</text:span>";
    }
    void BeginTable(std::size_t columns) override {
        body_ += "<table:table table:name=\"Table" + std::to_string(++tables_) +
                 "\"><table:table-column table:number-columns-repeated=\"" +
                 std::to_string(columns) + "\"/>";
        columns_ = columns;
    }
    void EndTable() override { body_ += "</table:table>"; }
    void BeginRow() override {
        body_ += "<table:table-row>";
        cells_ = 0;
    }
    // Each row has as many cells as its table.
    void EndRow() override {
        for (; cells_ < columns_; ++cells_)
            body_ += "<table:covered-table-cell/>";
        body_ += "</table:table-row>";
    }
    void BeginCell() override {
        body_ += "<table:table-cell table:style-name=\"Cell\">";
        ++cells_;
    }
    void EndCell() override { body_ += "</table:table-cell>"; }

    std::string Content() const {
        std::string content(kXml);
        content.append("<office:document-content").append(kNames);
        content.append("><office:automatic-styles>").append(kBorderedCell).append(styles_);
        content.append("</office:automatic-styles><office:body><office:text>").append(body_);
        return content + "</office:text></office:body></office:document-content>";
    }

  private:
    // A list for each label, which its only level shows: nothing counts.
    const std::string& ListFor(std::u16string_view label) {
        std::string& name = names_["list" + ToUtf8(label)];
        if (!name.empty())
            return name;
        name = "L" + std::to_string(names_.size());
        const bool bullet = label.size() == 1;
        styles_ += "<text:list-style style:name=\"" + name + "\"><text:list-level-style-" +
                   (bullet ? "bullet" : "number") + " text:level=\"1\"";
        if (!bullet)
            AppendAttribute(styles_, "style:num-format", "");
        AppendAttribute(styles_, bullet ? "text:bullet-char" : "style:num-prefix", ToUtf8(label));
        styles_ += "/></text:list-style>";
        return name;
    }
    const std::string& StyleFor(const char* family, const std::string& look) {
        std::string& name = names_[look];
        if (name.empty()) {
            name = (*family == 'p' ? "P" : "T") + std::to_string(names_.size());
            styles_ += "<style:style style:name=\"" + name + "\" style:family=\"" + family + "\">" +
                       look + "</style:style>";
        }
        return name;
    }

    std::string body_;
    std::string styles_;
    std::map<std::string, std::string> names_;
    bool after_blank_ = true;
    bool in_list_ = false;
    int tables_ = 0;
    std::size_t columns_ = 0;
    std::size_t cells_ = 0;
};

}  // namespace

std::optional<std::string> NewOdtDocument(const RichText& text) {
    OdtPen pen;
    LayOut(text, pen);
    const std::string content = pen.Content();
    std::string styles(kXml);
    styles.append("<office:document-styles").append(kNames).append(">").append(kPage);
    styles += "</office:document-styles>";
    const std::string manifest = std::string(kXml).append(kNewManifest);
    return WriteZip({{"mimetype", "application/vnd.oasis.opendocument.text"},
                     {"content.xml", content},
                     {"styles.xml", styles},
                     {"META-INF/manifest.xml", manifest}});
}

}  // namespace zorvane
