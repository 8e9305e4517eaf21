// Two documents of any elements of a word processor, most of them in both: a redline of them is
// written or refused, and what passed the check leaves nothing more to track against the Modified.
// The input is a list of steps, so that each gives well-formed XML.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bench/strict_sink.h"
#include "common/base/side.h"
#include "redline/odt_redline.h"
#include "redline/verify.h"
#include "redline/zip_writer.h"

namespace zorvane {
namespace {

struct Format {
    std::vector<std::string_view> elements;
    std::vector<std::string_view> attributes;
    std::array<std::string_view, 3> parts;
    std::array<std::string_view, 3> begins;  // of each part
    std::array<std::string_view, 3> ends;
    std::vector<ZipEntry> others;
};

const Format kWord{
    {"w:p",
     "w:r",
     "w:t",
     "w:pPr",
     "w:rPr",
     "w:tbl",
     "w:tr",
     "w:tc",
     "w:tblPr",
     "w:trPr",
     "w:tcPr",
     "w:gridSpan",
     "w:vMerge",
     "w:tblGrid",
     "w:gridCol",
     "w:sdt",
     "w:sdtContent",
     "w:hyperlink",
     "w:fldSimple",
     "w:fldChar",
     "w:instrText",
     "w:footnote",
     "w:footnoteReference",
     "w:pict",
     "w:txbxContent",
     "mc:AlternateContent",
     "mc:Choice",
     "mc:Fallback",
     "w:drawing",
     "a:blip",
     "m:oMath",
     "w:ins",
     "w:del",
     "w:delText",
     "w:moveFrom",
     "w:moveTo",
     "w:moveFromRangeStart",
     "w:moveFromRangeEnd",
     "w:bookmarkStart",
     "w:bookmarkEnd",
     "w:tab",
     "w:br",
     "w:sectPr",
     "w:headerReference",
     "w:pStyle",
     "w:rStyle",
     "w:numPr",
     "w:numId",
     "w:smartTag",
     "w:pPrChange",
     "w:customXml",
     "w:object",
     "w:commentReference",
     "w:b"},
    {"", "", "", "w:id=\"1\"", "w:id=\"2\"", "w:id=\"3\"", "w:val=\"1\"", "w:val=\"S\"",
     "w:val=\"restart\"", "w:fldCharType=\"begin\"", "w:fldCharType=\"separate\"",
     "w:fldCharType=\"end\"", "r:id=\"rh\"", "r:id=\"rl\"", "w:author=\"a\"", "w:type=\"default\""},
    {"word/document.xml", "word/footnotes.xml", "word/header1.xml"},
    {"<w:document "
     "xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body>",
     "<w:footnotes>", "<w:hdr>"},
    {"</w:body></w:document>", "</w:footnotes>", "</w:hdr>"},
    {{"[Content_Types].xml",
      "<Types><Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"rels\" ContentType=\"application/rels\"/></Types>"},
     {"_rels/.rels",
      "<R><Relationship Id=\"a\" Type=\"x/officeDocument\" Target=\"word/document.xml\"/></R>"},
     {"word/_rels/document.xml.rels",
      "<R><Relationship Id=\"rs\" Type=\"x/styles\" Target=\"styles.xml\"/>"
      "<Relationship Id=\"rn\" Type=\"x/numbering\" Target=\"numbering.xml\"/>"
      "<Relationship Id=\"rf\" Type=\"x/footnotes\" Target=\"footnotes.xml\"/>"
      "<Relationship Id=\"rh\" Type=\"x/header\" Target=\"header1.xml\"/>"
      "<Relationship Id=\"rl\" Type=\"x/hyperlink\" Target=\"h://x\" "
      "TargetMode=\"External\"/></R>"},
     {"word/styles.xml",
      "<w:styles><w:style w:styleId=\"S\"><w:basedOn w:val=\"S\"/></w:style>"
      "</w:styles>"},
     {"word/numbering.xml",
      "<w:numbering><w:abstractNum w:abstractNumId=\"0\"/><w:num w:numId=\"1\">"
      "<w:abstractNumId w:val=\"0\"/></w:num></w:numbering>"}}};

const Format kOpenText{
    {"text:p",
     "text:h",
     "text:span",
     "text:a",
     "text:list",
     "text:list-item",
     "text:s",
     "text:tab",
     "text:line-break",
     "table:table",
     "table:table-column",
     "table:table-row",
     "table:table-cell",
     "table:covered-table-cell",
     "table:table-header-rows",
     "text:note",
     "text:note-citation",
     "text:note-body",
     "draw:frame",
     "draw:text-box",
     "draw:image",
     "draw:object",
     "text:tracked-changes",
     "text:changed-region",
     "text:deletion",
     "text:insertion",
     "text:change",
     "text:change-start",
     "text:change-end",
     "text:section",
     "office:annotation",
     "text:bookmark",
     "text:bookmark-start",
     "text:table-of-content",
     "text:index-body",
     "text:soft-page-break",
     "text:page-number",
     "text:numbered-paragraph"},
    {"", "", "", "text:style-name=\"P1\"", "text:style-name=\"T1\"", "xml:id=\"c1\"",
     "xml:id=\"c2\"", "text:change-id=\"c1\"", "text:change-id=\"c2\"", "text:c=\"3\"",
     "xlink:href=\"Pictures/p.png\"", "xlink:href=\"h://x\"", "table:number-columns-repeated=\"2\"",
     "table:number-columns-spanned=\"2\"", "table:number-rows-spanned=\"2\"",
     "table:style-name=\"R1\""},
    {"content.xml", "styles.xml", "Pictures/p.png"},
    {"<office:document-content><office:automatic-styles><style:style style:name=\"P1\" "
     "style:family=\"paragraph\"/></office:automatic-styles><office:body><office:text>",
     "<office:document-styles><office:styles/><office:master-styles><style:master-page "
     "style:name=\"Standard\"><style:header>",
     "<p>"},
    {"</office:text></office:body></office:document-content>",
     "</style:header></style:master-page></office:master-styles></office:document-styles>", "</p>"},
    {{"mimetype", "application/vnd.oasis.opendocument.text"},
     {"META-INF/manifest.xml", "<manifest:manifest/>"}}};

// Three parts of one document.
class Document {
  public:
    explicit Document(const Format& format) : format_(format) {}

    void Open(std::size_t element, std::size_t attribute) {
        const std::string_view name = format_.elements[element % format_.elements.size()];
        const std::string_view told = format_.attributes[attribute % format_.attributes.size()];
        Text().append("<").append(name).append(told.empty() ? "" : " ").append(told).append(">");
        open_[part_].push_back(name);
    }
    void Close() {
        if (open_[part_].empty())
            return;
        Text().append("</").append(open_[part_].back()).append(">");
        open_[part_].pop_back();
    }
    void Say(std::size_t word) {
        constexpr std::array<std::string_view, 6> kWords{"oak ", "elm", " ash ",
                                                         "7",    " ",   "fir 12"};
        Text().append(kWords[word % kWords.size()]);
    }
    void Enter(std::size_t part) { part_ = part; }

    std::string Package() {
        std::vector<ZipEntry> entries = format_.others;
        for (part_ = 0; part_ < parts_.size(); ++part_) {
            while (!open_[part_].empty())
                Close();
            Text() = std::string(format_.begins[part_]) + Text() + std::string(format_.ends[part_]);
            entries.push_back({std::string(format_.parts[part_]), Text()});
        }
        return WriteZip(entries).value_or("");
    }

  private:
    std::string& Text() { return parts_[part_]; }

    const Format& format_;
    std::array<std::string, 3> parts_;
    std::array<std::vector<std::string_view>, 3> open_;
    std::size_t part_ = 0;
};

// Two bytes: what is done on which sides, and with what.
void Take(Document& document, unsigned step, unsigned what) {
    constexpr unsigned kParts = 253;
    switch (step % 4) {
        case 2:
            return document.Close();
        case 3:
            return what >= kParts ? document.Enter(what - kParts) : document.Say(what);
        default:
            return document.Open(what, step / 16);
    }
}

}  // namespace
}  // namespace zorvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    const bool open_text = size > 0 && data[0] % 2 == 1;
    const auto write = open_text ? WriteOdtRedline : WriteDocxRedline;
    RedlineRequest request;
    request.track_formatting = !open_text && size > 0 && data[0] % 4 == 2;
    const Format& format = open_text ? kOpenText : kWord;
    PerSide<Document> documents{Document(format), Document(format)};
    for (std::size_t at = 1; at + 1 < size; at += 2) {
        const unsigned sides = data[at] / 4 % 4;
        if (sides != 1)
            Take(documents.original, data[at], data[at + 1]);
        if (sides != 2)
            Take(documents.modified, data[at], data[at + 1]);
    }
    const PerSide<std::string> packages{documents.original.Package(), documents.modified.Package()};
    WrittenRedline written;
    if (!write({packages.original, packages.modified}, request, nullptr, written).ok())
        return 0;
    const auto passes = [&](std::string_view original, const WrittenRedline& redline) {
        return VerifyRedline({{original, packages.modified},
                              redline.bytes,
                              request.track_formatting,
                              redline.headers_left_out,
                              nullptr,
                              open_text})
            .ok();
    };
    if (!passes(packages.original, written))
        return 0;
    WrittenRedline again;
    Demand(write({written.bytes, packages.modified}, {}, nullptr, again).ok());
    Demand(again.counts.insertions == 0 && again.counts.deletions == 0);
    return 0;
}
