#include "load/readers/content_kind.h"

#include <gtest/gtest.h>

#include "tests/support/zip_file.h"

namespace zorvane::content_kind_test {
namespace {

using namespace std::literals;

struct KindRow {
    const char* name;
    std::string bytes;
    const char* file;
    ContentKind kind;
};

std::string Typed(std::string_view type) {
    return MakeZip({{"[Content_Types].xml",
                     "<Types>application/vnd." + std::string(type) + ".main+xml</Types>"}});
}

std::string Mime(std::string_view type) {
    return MakeZip({{"mimetype", type}, {"content.xml", "<a/>"}});
}

TEST(ContentKind, IsToldByTheBytesBeforeTheName) {
    const KindRow rows[] = {
        {"empty", "", "a.docx", ContentKind::Text},
        {"text", "just text", "a.doc", ContentKind::Text},
        {"RTF", "{\\rtf1 x}", "a.doc", ContentKind::Rtf},
        {"PDF behind a mark", "\xEF\xBB\xBF%PDF-1.4", "a.txt", ContentKind::Pdf},
        {"a page", "<!DOCTYPE html><p>", "a.doc", ContentKind::Html},
        {"a page behind a declaration", "<?xml version='1.0'?>\n<html xmlns='x'>", "a.xml",
         ContentKind::Html},
        {"XML by its declaration", "<?xml version='1.0'?><a/>", "a.doc", ContentKind::Xml},
        {"XML by its name", "<a/>", "a.xml", ContentKind::Xml},
        {"a page's piece by its name", "no tags", "a.htm", ContentKind::Html},
        {"a page in UTF-16", "\xFF\xFE<\0h\0t\0m\0l\0>\0"s, "a.doc", ContentKind::Html},
        {"UTF-16 text",
         "\xFF\xFE"
         "a\0b\0"s,
         "a.doc", ContentKind::Text},
        {"Markdown", "# x", "a.md", ContentKind::Markdown},
        {"mail", "Subject: x\n\ny", "a.eml", ContentKind::Message},
        {"mail with a picture's bytes", "Subject: x\n\n\0\1\2\3"s, "a.EML", ContentKind::Message},
        {"mail in UTF-16", "S\0:\0 \0x\0"s, "a.eml", ContentKind::Message},
        {"a page with a stray NUL", std::string(40, 'a') + '\0', "a.html", ContentKind::Html},
        {"text with a stray NUL", std::string(31, 'a') + '\0', "a.asc", ContentKind::Text},
        {"bytes under a page's name", "GIF\0\1\2"s, "a.html", ContentKind::OtherBinary},
        {"bytes", std::string(30, 'a') + '\0', "a.wpd", ContentKind::OtherBinary},
        {"DOCX", Typed("openxmlformats-officedocument.wordprocessingml.document"), "a.xlsx",
         ContentKind::WordPackage},
        {"DOCM", Typed("ms-word.document.macroEnabled"), "a", ContentKind::WordPackage},
        {"PPTX", Typed("openxmlformats-officedocument.presentationml.slideshow"), "a",
         ContentKind::SlidePackage},
        {"XLSX", Typed("openxmlformats-officedocument.spreadsheetml.sheet"), "a",
         ContentKind::SheetPackage},
        {"XLSB", Typed("ms-excel.sheet.binary.macroEnabled"), "a", ContentKind::SheetPackage},
        {"ODT", Mime("application/vnd.oasis.opendocument.text"), "a", ContentKind::OpenText},
        {"OTT", Mime("application/vnd.oasis.opendocument.text-template"), "a",
         ContentKind::OpenText},
        {"ODS", Mime("application/vnd.oasis.opendocument.spreadsheet"), "a",
         ContentKind::OpenSheet},
        {"ODP", Mime("application/vnd.oasis.opendocument.presentation"), "a",
         ContentKind::OpenSlides},
        {"EPUB", Mime("application/epub+zip"), "a", ContentKind::Epub},
        {"any ZIP file", MakeZip({{"a.txt", "x"}}), "a.docx", ContentKind::OtherPackage},
        {"a ZIP file cut off", "PK\x03\x04xxxx", "a.docx", ContentKind::BrokenPackage},
        {"a broken compound file", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "a.doc",
         ContentKind::OtherCompound},
    };
    for (const KindRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::unique_ptr<Package> package;
        EXPECT_EQ(KindOfContent(row.bytes, row.file, package), row.kind);
    }
}

}  // namespace
}  // namespace zorvane::content_kind_test
