#include "redline/resolve.h"

#include <sstream>

#include <gtest/gtest.h>

#include "redline/odt_resolve.h"

namespace zorvane::resolve_test {
namespace {

std::string Content(const pugi::xml_node& parent) {
    std::ostringstream out;
    for (const pugi::xml_node& node : parent.children())
        node.print(out, "", pugi::format_raw);
    return out.str();
}

std::string Resolved(const std::string& body, Resolution resolution) {
    XmlPart part;
    EXPECT_TRUE(XmlPart::Parse("<w:body>" + body + "</w:body>", part).ok());
    Resolve(part.Root(), resolution);
    return Content(part.Root());
}

struct ResolveRow {
    const char* name;
    const char* body;
    const char* accepted;
    const char* rejected;
};

constexpr ResolveRow kRows[] = {
    {"content",
     "<w:p><w:ins><w:r><w:t>a</w:t></w:r></w:ins><w:del><w:r><w:delText>b</w:delText></w:r></w:del>"
     "</w:p>",
     "<w:p><w:r><w:t>a</w:t></w:r></w:p>", "<w:p><w:r><w:t>b</w:t></w:r></w:p>"},
    {"a deletion inside an insertion",
     "<w:p><w:ins><w:del><w:r><w:delText>b</w:delText></w:r></w:del></w:ins></w:p>", "<w:p/>",
     "<w:p/>"},
    {"a move",
     "<w:p><w:moveFromRangeStart/><w:moveFrom><w:r><w:t>a</w:t></w:r></w:moveFrom>"
     "<w:moveFromRangeEnd/><w:moveTo><w:r><w:t>b</w:t></w:r></w:moveTo></w:p>",
     "<w:p><w:r><w:t>b</w:t></w:r></w:p>", "<w:p><w:r><w:t>a</w:t></w:r></w:p>"},
    {"an end that was inserted, one that was deleted",
     "<w:p><w:pPr><w:x/><w:rPr><w:ins/></w:rPr></w:pPr><w:r/></w:p>"
     "<w:p><w:pPr><w:y/><w:rPr><w:del/></w:rPr></w:pPr><w:s/></w:p><w:p><w:t/></w:p>",
     "<w:p><w:pPr><w:x/><w:rPr/></w:pPr><w:r/></w:p><w:p><w:s/><w:t/></w:p>",
     "<w:p><w:pPr><w:y/><w:rPr/></w:pPr><w:r/><w:s/></w:p><w:p><w:t/></w:p>"},
    {"former properties",
     "<w:p><w:pPr><w:new/><w:rPr/><w:pPrChange><w:pPr><w:old/></w:pPr></w:pPrChange></w:pPr></w:p>",
     "<w:p><w:pPr><w:new/><w:rPr/></w:pPr></w:p>", "<w:p><w:pPr><w:old/><w:rPr/></w:pPr></w:p>"},
    {"rows, and the table whose last one goes",
     "<w:tbl><w:tr><w:trPr><w:ins/></w:trPr></w:tr></w:tbl><w:tbl><w:tr><w:trPr><w:del/></w:trPr>"
     "</w:tr></w:tbl>",
     "<w:tbl><w:tr><w:trPr/></w:tr></w:tbl>", "<w:tbl><w:tr><w:trPr/></w:tr></w:tbl>"},
    {"what a drawing calls so", "<w:r><a:path><a:moveTo><a:pt/></a:moveTo></a:path></w:r>",
     "<w:r><a:path><a:moveTo><a:pt/></a:moveTo></a:path></w:r>",
     "<w:r><a:path><a:moveTo><a:pt/></a:moveTo></a:path></w:r>"},
};

TEST(Resolve, TakesAllChangesOneWayOrTheOther) {
    for (const ResolveRow& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Resolved(row.body, Resolution::Accept), row.accepted);
        EXPECT_EQ(Resolved(row.body, Resolution::Reject), row.rejected);
    }
}

TEST(Resolve, CountsEndsWithNothingToJoin) {
    for (const char* behind : {"", "<w:tbl><w:tr/></w:tbl><w:p/>"}) {
        XmlPart part;
        ASSERT_TRUE(XmlPart::Parse("<w:body><w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr></w:p>" +
                                       std::string(behind) + "</w:body>",
                                   part)
                        .ok());
        EXPECT_EQ(Resolve(part.Root(), Resolution::Accept).without_partner, 1) << behind;
    }
}

TEST(Resolve, PutsBackNothingWhereADeletionHasNoContentOrNoParagraph) {
    XmlPart part;
    ASSERT_TRUE(
        XmlPart::Parse("<b><o><c:tracked-changes><r id='1'><deletion/></r><r id='2'>"
                       "<deletion><p>d</p></deletion></r></c:tracked-changes><p>a"
                       "<change change-id='1'/>b</p><change change-id='2'/><p>c</p></o></b>",
                       part)
            .ok());
    EXPECT_EQ(ResolveOdt(part.Root().first_child(), Resolution::Reject, {}), 2);
    EXPECT_EQ(Content(part.Root()), "<o><p>ab</p><p>c</p></o>");
}

}  // namespace
}  // namespace zorvane::resolve_test
