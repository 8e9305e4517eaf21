// OpenDocument texts for redlines, and a redline of two of them.
#pragma once

#include <string>

#include "redline/odt_redline.h"
#include "tests/redline/redline_pair.h"

namespace zorvane {

struct OdtFile {
    std::string body;
    std::string header{};
    std::string styles{};   ///< automatic ones of the text
    std::string picture{};  ///< bytes of Pictures/p.png
    std::string signatures{};
};

inline std::string MakeOdtFile(const OdtFile& file) {
    const std::string names =
        " xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
        " xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\""
        " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
        " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
        " xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\""
        " xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\""
        " xmlns:loext=\"urn:org:documentfoundation:names:experimental:office:xmlns:loext:1.0\""
        " xmlns:xlink=\"http://www.w3.org/1999/xlink\"";
    const std::string header =
        file.header.empty() ? "" : "<style:header>" + file.header + "</style:header>";
    ZipParts parts{
        {"mimetype", "application/vnd.oasis.opendocument.text"},
        {"content.xml", "<office:document-content" + names + "><office:automatic-styles>" +
                            file.styles + "</office:automatic-styles><office:body><office:text>" +
                            file.body + "</office:text></office:body></office:document-content>"},
        {"styles.xml", "<office:document-styles" + names +
                           "><office:styles/><office:master-styles><style:master-page "
                           "style:name=\"Standard\">" +
                           header +
                           "</style:master-page></office:master-styles>"
                           "</office:document-styles>"},
        {"META-INF/manifest.xml",
         "<manifest:manifest xmlns:manifest=\"m\"><manifest:file-entry "
         "manifest:full-path=\"Pictures/p.png\" manifest:media-type=\"image/png\"/>"
         "</manifest:manifest>"}};
    if (!file.picture.empty())
        parts.emplace_back("Pictures/p.png", file.picture);
    if (!file.signatures.empty())
        parts.emplace_back("META-INF/documentsignatures.xml", file.signatures);
    return MakeZip(parts);
}

// ---- content ----

inline std::string OdtParagraph(const std::string& content, const std::string& style = "P1") {
    return "<text:p text:style-name=\"" + style + "\">" + content + "</text:p>";
}
inline std::string OdtSpan(const std::string& text, const std::string& style) {
    return "<text:span text:style-name=\"" + style + "\">" + text + "</text:span>";
}
inline std::string OdtNote(const std::string& text) {
    return "<text:note text:note-class=\"footnote\"><text:note-citation>1</text:note-citation>"
           "<text:note-body>" +
           OdtParagraph(text) + "</text:note-body></text:note>";
}
inline std::string OdtRow(std::initializer_list<std::string> cells) {
    std::string row = "<table:table-row>";
    for (const std::string& cell : cells)
        row += "<table:table-cell>" + OdtParagraph(cell) + "</table:table-cell>";
    return row + "</table:table-row>";
}
inline std::string OdtTable(const std::string& rows, std::size_t columns = 2) {
    return "<table:table><table:table-column table:number-columns-repeated=\"" +
           std::to_string(columns) + "\"/>" + rows + "</table:table>";
}
inline std::string OdtStyle(const std::string& name, const std::string& family,
                            const std::string& look) {
    return "<style:style style:name=\"" + name + "\" style:family=\"" + family +
           "\"><style:text-properties " + look + "/></style:style>";
}

// ---- the redline ----

inline WrittenRedline OdtRedlineOf(const std::string& original, const std::string& modified,
                                   const RedlineRequest& request = {}) {
    WrittenRedline written;
    const ReadEnd end = WriteOdtRedline({original, modified}, request, nullptr, written);
    EXPECT_TRUE(end.ok()) << end.detail;
    return written;
}

inline std::string OdtLawBreach(const std::string& original, const std::string& modified,
                                const WrittenRedline& written) {
    RedlineToCheck check{{original, modified}, written.bytes};
    check.headers_left_out = written.headers_left_out;
    check.open_document = true;
    const Result<Verified> verified = VerifyRedline(check);
    return verified.ok() ? std::string() : verified.failure().reason;
}

}  // namespace zorvane
