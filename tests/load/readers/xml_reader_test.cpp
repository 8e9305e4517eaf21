#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"

namespace zorvane::xml_reader_test {
namespace {

std::string ShownXml(std::string_view bytes) {
    return Shown([bytes](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadXml(bytes, sink, monitor);
    });
}

void Check(std::initializer_list<TextRow> rows) {
    CheckRows(ShownXml, rows);
}

TEST(XmlReader, MakesAParagraphOfEachElementWithText) {
    Check({
        {"elements", "<a>\n <b>x</b>\n <c><d>y</d><e/></c>\n</a>", "x|y|"},
        {"mixed content is one paragraph", "<a><p>x <b>y</b>\n z<i> w</i></p><q>v</q></a>",
         "x y z w|v|"},
        {"white space", "<a>  x\n\t y  </a>", "x y|"},
        {"nothing", "<a><b> </b></a>", ""},
        {"the root's own text", "<a>x</a>", "x|"},
        {"an empty root", "<a/>", ""},
        {"sections of characters and references", "<a><![CDATA[<x>&amp;]]>&lt;&#233;&#x5D0;</a>",
         "<x>&amp;<\u00E9\u05D0|"},
        {"comments, instructions and attributes show nothing",
         "<?xml version='1.0'?><!-- c --><?p i?><a b='c'>x<!-- d -->y</a>", "xy|"},
        {"attributes of the root of mixed text", "<a>x<b c='d'/>y</a><!-- end -->", "xy|"},
    });
}

TEST(XmlReader, DecodesAsTheDeclarationSays) {
    Check({
        {"latin", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "\u00E9|"},
        {"Cyrillic", "<?xml version=\"1.0\" encoding=\"windows-1251\"?><a>\xC0</a>", "\u0410|"},
        {"none is UTF-8", "<a>\u00E9</a>", "\u00E9|"},
        {"a byte-order mark", "\xEF\xBB\xBF<?xml version='1.0' encoding='latin1'?><a>\u00E9</a>",
         "\u00E9|"},
        {"UTF-16", std::string_view("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18), "\u00E9|"},
    });
}

TEST(XmlReader, TellsTheLineOfAFault) {
    EXPECT_EQ(ShownXml("<?xml version='1.0'?>\n<a>\n<b></a>"),
              "error 3: broken XML in line 3: Start-end tags mismatch");
    EXPECT_EQ(ShownXml("text").substr(0, 8), "error 3:");
    EXPECT_EQ(ShownXml("").substr(0, 8), "error 3:");
}

TEST(XmlReader, ExpandsAndFetchesNothingOfADocumentsOwn) {
    EXPECT_EQ(ShownXml("<!DOCTYPE a [<!ENTITY x 'lol'><!ENTITY y SYSTEM 'file:///etc/passwd'>"
                       "<!ENTITY z '&x;&x;&x;'>]><a>&x;&y;&z;</a>"),
              "&x;&y;&z;|");
}

TEST(XmlReader, ReadsAnyDepth) {
    std::string deep;
    constexpr int kDepth = 200'000;
    for (int i = 0; i < kDepth; ++i)
        deep += "<a>";
    deep += "x";
    for (int i = 0; i < kDepth; ++i)
        deep += "</a>";
    EXPECT_EQ(ShownXml(deep), "x|");
}

}  // namespace
}  // namespace zorvane::xml_reader_test
