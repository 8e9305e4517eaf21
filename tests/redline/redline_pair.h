// Word-processor packages for redlines, and a redline of two of them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "load/readers/container/package.h"
#include "redline/docx_redline.h"
#include "redline/verify.h"
#include "tests/support/word_file.h"

namespace zorvane {

struct PairFile {
    std::string body;
    std::string styles{};
    std::string numbering{};
    std::string footnotes{};  ///< empty: no such part
    std::string header{};     ///< likewise; the first section shows it
    std::string picture{};    ///< bytes of the part that relationship "rp" leads to
    std::string link = "http://example.org/";  ///< what relationship "rl" leads to
    std::string diagram{};  ///< the drawing of the one whose data relationship "rm" leads to
    bool is_signed = false;
};

inline const std::string kRelationKind =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
inline const std::string kRelationships =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";

inline std::string RelationTo(const std::string& target, const std::string& id,
                              const std::string& type, const char* mode = "") {
    return "<Relationship Id=\"" + id + "\" Type=\"" + type + "\" Target=\"" + target + "\"" +
           mode + "/>";
}

/// A signature as an office suite puts it into the package.
inline void Sign(ZipParts& parts) {
    const std::string kind =
        "http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/";
    for (auto& [name, content] : parts) {
        if (name == "[Content_Types].xml")
            content.insert(content.rfind("</"),
                           "<Override PartName=\"/_xmlsignatures/sig1.xml\" "
                           "ContentType=\"application/signature\"/>");
        else if (name == "_rels/.rels")
            content.insert(content.rfind("</"),
                           RelationTo("_xmlsignatures/origin.xml", "r2", kind + "origin"));
    }
    parts.emplace_back("_xmlsignatures/origin.xml", "<origin/>");
    parts.emplace_back(
        "_xmlsignatures/_rels/origin.xml.rels",
        kRelationships + RelationTo("sig1.xml", "r1", kind + "signature") + "</Relationships>");
    parts.emplace_back("_xmlsignatures/sig1.xml", "<Signature/>");
}

inline std::string MakePairFile(const PairFile& file) {
    const auto relation = [](const std::string& id, const std::string& kind,
                             const std::string& target, const char* mode = "") {
        return RelationTo(target, id, kRelationKind + kind, mode);
    };
    std::string relations = relation("rs", "styles", "styles.xml") +
                            relation("rn", "numbering", "numbering.xml") +
                            relation("rl", "hyperlink", file.link, " TargetMode=\"External\"");
    ZipParts parts{
        {"[Content_Types].xml",
         "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
         "Extension=\"xml\" ContentType=\"application/xml\"/><Default "
         "Extension=\"rels\" ContentType=\"application/rels\"/><Default Extension=\"png\" "
         "ContentType=\"image/png\"/></Types>"},
        {"_rels/.rels", kRelationships + relation("r1", "officeDocument", "word/document.xml") +
                            "</Relationships>"},
        {"word/styles.xml", WordPart("styles", file.styles)},
        {"word/numbering.xml", WordPart("numbering", file.numbering)},
        {"docProps/app.xml", "<Properties/>"}};
    std::string section = "<w:sectPr/>";
    if (!file.header.empty()) {
        relations += relation("rh", "header", "header1.xml");
        section = "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rh\"/></w:sectPr>";
        parts.emplace_back("word/header1.xml", WordPart("hdr", file.header));
    }
    if (!file.footnotes.empty()) {
        relations += relation("rf", "footnotes", "footnotes.xml");
        parts.emplace_back("word/footnotes.xml", WordPart("footnotes", file.footnotes));
    }
    if (!file.picture.empty()) {
        relations += relation("rp", "image", "media/image1.png");
        parts.emplace_back("word/media/image1.png", file.picture);
    }
    if (!file.diagram.empty()) {
        relations += relation("rm", "diagramData", "diagrams/data1.xml") +
                     relation("rd", "diagramDrawing", "diagrams/drawing1.xml");
        parts.emplace_back("word/diagrams/data1.xml",
                           "<dgm:dataModel><dsp:dataModelExt relId=\"rd\"/></dgm:dataModel>");
        parts.emplace_back("word/diagrams/drawing1.xml", file.diagram);
    }
    parts.emplace_back("word/_rels/document.xml.rels",
                       kRelationships + relations + "</Relationships>");
    parts.emplace_back("word/document.xml",
                       WordPart("document", "<w:body>" + file.body + section + "</w:body>"));
    if (file.is_signed)
        Sign(parts);
    return MakeZip(parts);
}

// ---- content ----

inline std::string TextRun(const std::string& text, const std::string& look = {}) {
    return "<w:r>" + (look.empty() ? "" : "<w:rPr>" + look + "</w:rPr>") +
           "<w:t xml:space=\"preserve\">" + text + "</w:t></w:r>";
}
/// `content`: runs, or plain text.
inline std::string Paragraph(const std::string& content, const std::string& look = {}) {
    return "<w:p>" + (look.empty() ? "" : "<w:pPr>" + look + "</w:pPr>") +
           (content.empty() || content.front() == '<' ? content : TextRun(content)) + "</w:p>";
}
inline std::string Cell(const std::string& text) {
    return "<w:tc><w:tcPr/>" + Paragraph(text) + "</w:tc>";
}
inline std::string Row(std::initializer_list<std::string> cells) {
    std::string row = "<w:tr>";
    for (const std::string& cell : cells)
        row += Cell(cell);
    return row + "</w:tr>";
}
inline std::string Table(const std::string& rows) {
    return "<w:tbl><w:tblPr/><w:tblGrid><w:gridCol w:w=\"100\"/><w:gridCol w:w=\"100\"/>"
           "</w:tblGrid>" +
           rows + "</w:tbl>";
}
inline std::string Note(const std::string& id, const std::string& text) {
    return "<w:footnote w:id=\"" + id + "\">" + Paragraph(text) + "</w:footnote>";
}
inline std::string NoteReference(const std::string& id) {
    return "<w:r><w:footnoteReference w:id=\"" + id + "\"/></w:r>";
}

// ---- the redline ----

inline WrittenRedline RedlineOf(const std::string& original, const std::string& modified,
                                const RedlineRequest& request = {}) {
    WrittenRedline written;
    const ReadEnd end = WriteDocxRedline({original, modified}, request, nullptr, written);
    EXPECT_TRUE(end.ok()) << end.detail;
    return written;
}

/// Why the redline does not give both documents back; empty when it does.
inline std::string LawBreach(const std::string& original, const std::string& modified,
                             std::string_view redline, std::int32_t headers_left_out = 0,
                             bool all_looks = false) {
    const Result<Verified> verified =
        VerifyRedline({{original, modified}, redline, all_looks, headers_left_out});
    return verified.ok() ? std::string() : verified.failure().reason;
}

inline std::string PartOf(std::string_view package, std::string_view name) {
    const std::unique_ptr<Package> opened = Package::Open(package);
    return opened ? opened->Read(name).value_or("") : "";
}

/// The package with the first `what` of that part replaced.
inline std::string WithPart(const std::string& bytes, const std::string& part,
                            const std::string& what, const std::string& by) {
    ZipParts parts;
    const std::unique_ptr<Package> package = Package::Open(bytes);
    for (const std::string& name : package->Names()) {
        std::string content = package->Read(name).value_or("");
        const std::size_t place = name == part ? content.find(what) : std::string::npos;
        if (place != std::string::npos)
            content.replace(place, what.size(), by);
        EXPECT_TRUE(name != part || place != std::string::npos) << "nothing to break";
        parts.emplace_back(name, content);
    }
    return MakeZip(parts);
}

}  // namespace zorvane
