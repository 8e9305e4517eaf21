#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"

namespace zorvane {
namespace {

std::string ShownXml(std::string_view bytes) {
    return Shown([bytes](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadXml(bytes, sink, monitor);
    });
}

struct Row {
    const char* name;
    std::string_view bytes;
    std::string_view shown;
};

TEST(XmlReader, MakesAParagraphOfEachElementWithText) {
    for (const Row& row : {
             Row{"elements", "<a>\n <b>x</b>\n <c><d>y</d><e/></c>\n</a>", "x|y|"},
             Row{"mixed content is one paragraph", "<a><p>x <b>y</b>\n z<i> w</i></p><q>v</q></a>",
                 "x y z w|v|"},
             Row{"white space", "<a>  x\n\t y  </a>", "x y|"},
             Row{"nothing", "<a><b> </b></a>", ""},
             Row{"the root's own text", "<a>x</a>", "x|"},
             Row{"an empty root", "<a/>", ""},
             Row{"sections of characters and references",
                 "<a><![CDATA[<x>&amp;]]>&lt;&#233;&#x5D0;</a>", "<x>&amp;<\u00E9\u05D0|"},
             Row{"comments, instructions and attributes show nothing",
                 "<?xml version='1.0'?><!-- c --><?p i?><a b='c'>x<!-- d -->y</a>", "xy|"},
             Row{"attributes of the root of mixed text", "<a>x<b c='d'/>y</a><!-- end -->", "xy|"},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownXml(row.bytes), row.shown);
    }
}

TEST(XmlReader, DecodesAsTheDeclarationSays) {
    for (const Row& row : {
             Row{"latin", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "\u00E9|"},
             Row{"Cyrillic", "<?xml version=\"1.0\" encoding=\"windows-1251\"?><a>\xC0</a>",
                 "\u0410|"},
             Row{"none is UTF-8", "<a>\u00E9</a>", "\u00E9|"},
             Row{"a byte-order mark",
                 "\xEF\xBB\xBF<?xml version='1.0' encoding='latin1'?><a>\u00E9</a>", "\u00E9|"},
             Row{"UTF-16", std::string_view("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18), "\u00E9|"},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownXml(row.bytes), row.shown);
    }
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
}  // namespace zorvane
