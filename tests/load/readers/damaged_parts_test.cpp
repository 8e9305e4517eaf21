// A document that is read although a part of it is broken says so, on either side.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/word_readers.h"
#include "tests/support/pdf_file.h"
#include "tests/support/shown_beside.h"
#include "tests/support/word_file.h"

namespace zorvane::damaged_parts_test {
namespace {

using Items = std::vector<BesideItem>;

constexpr std::string_view kHeading = "<w:p><w:pPr/><w:r><w:t>words</w:t></w:r></w:p>";

Items WordItems(const std::string& bytes) {
    const auto package = Package::Open(bytes);
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadWordPackage(*package, sink, monitor);
    });
}

Items BrokenStyles() {
    return WordItems(
        MakeWordFile({.body = std::string(kHeading), .styles = "<w:style></w:wrong>"}));
}

// One bit of the numbering is wrong, which only the sum over its bytes tells.
Items WrongSum() {
    std::string bytes = MakeWordFile({.body = std::string(kHeading),
                                      .numbering = "<w:num w:numId=\"7\"/><w:num w:numId=\"8\"/>"});
    const std::size_t local = bytes.find("word/numbering.xml");
    bytes[local + std::string_view("word/numbering.xml").size() + 40] ^= 1;
    return WordItems(bytes);
}

Items MissingHeader() {
    return WordItems(MakeZip(
        {{"_rels/.rels",
          "<Relationships><Relationship Id=\"r1\" Type=\"http://x/officeDocument\" "
          "Target=\"word/document.xml\"/></Relationships>"},
         {"word/_rels/document.xml.rels",
          "<Relationships><Relationship Id=\"rh\" Type=\"http://x/header\" "
          "Target=\"header1.xml\"/></Relationships>"},
         {"word/document.xml",
          WordPart("document", "<w:body>" + std::string(kHeading) +
                                   "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rh\"/>"
                                   "</w:sectPr></w:body>")}}));
}

Items BrokenPage() {
    const std::string page = test_pdf::Line(72, 700, "words") + "[ (cut off ";
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadPdfRich(test_pdf::MakePdf(page), {}, {}, {}, sink, monitor);
    });
}

Items CutRtf() {
    Items items;
    ReadRtf("{\\rtf1 words\\par {\\b more", items);
    return items;
}

TEST(DamagedParts, AreToldOfEachSideForItself) {
    struct Row {
        const char* name;
        std::function<Items()> read;
        std::string place;
    };
    const Row rows[] = {
        {"XML that does not close", BrokenStyles, "word/styles.xml"},
        {"bytes that do not check", WrongSum, "word/numbering.xml"},
        {"a part that is named and not there", MissingHeader, "word/header1.xml"},
        {"a page whose content is cut off", BrokenPage, "page 1"},
        {"an open group at the end", CutRtf, "end"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Items items = row.read();
        EXPECT_EQ(BesideSentence(CompareBeside(items, items, {})),
                  "Beside the words: 1 damaged part of the Original (" + row.place +
                      "), 1 damaged part of the Modified (" + row.place + ").");
    }
}

TEST(DamagedParts, AreNotSeenInWholeDocuments) {
    Items whole;
    ReadRtf("{\\rtf1 words\\par {\\b more}}\r\n", whole);
    EXPECT_EQ(ShownItems(whole), "");
    EXPECT_EQ(ShownItems(WordItems(MakeWordFile({.body = std::string(kHeading)}))), "");
}

}  // namespace
}  // namespace zorvane::damaged_parts_test
