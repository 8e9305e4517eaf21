#include "load/readers/beside/formula_text.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvane::formula_text_test {
namespace {

struct Row {
    const char* name;
    std::string_view xml;
    std::string_view text;
};

TEST(FormulaText, WritesTheStructureAsOneLine) {
    const Row rows[] = {
        {"a power", "<m:oMath><m:sSup><m:sSupPr/><m:e>x</m:e><m:sup>2</m:sup></m:sSup></m:oMath>",
         "x^2"},
        {"an index", "<m:oMath><m:sSub><m:e>x</m:e><m:sub>2</m:sub></m:sSub></m:oMath>", "x_2"},
        {"a fraction", "<m:oMath><m:f><m:num>a+b</m:num><m:den>2</m:den></m:f></m:oMath>",
         "(a+b)/2"},
        {"both limits",
         "<m:oMath><m:nary><m:naryPr><m:chr m:val=\"S\"/></m:naryPr><m:sub><m:r>"
         "i=1</m:r></m:sub><m:sup><m:r>n</m:r></m:sup><m:e>i</m:e></m:nary>"
         "</m:oMath>",
         "S_(i=1)^n i"},
        {"no limits", "<m:oMath><m:nary><m:sub/><m:sup/><m:e>x</m:e></m:nary></m:oMath>",
         "\xE2\x88\xAB x"},
        {"roots",
         "<m:oMath><m:rad><m:deg/><m:e>x</m:e></m:rad><m:rad><m:deg>3</m:deg><m:e>y"
         "</m:e></m:rad></m:oMath>",
         "\xE2\x88\x9A(x)[3]\xE2\x88\x9A(y)"},
        {"brackets",
         "<m:oMath><m:d><m:dPr><m:begChr m:val=\"[\"/></m:dPr><m:e>a</m:e><m:e>b"
         "</m:e></m:d></m:oMath>",
         "[a|b)"},
        {"a matrix",
         "<m:oMath><m:m><m:mr><m:e>a</m:e><m:e>b</m:e></m:mr><m:mr><m:e>c</m:e><m:e>d"
         "</m:e></m:mr></m:m></m:oMath>",
         "[a, b; c, d]"},
        {"MathML",
         "<math><semantics><mrow><msup><mi>x</mi><mn>2</mn></msup><mo> + </mo><msubsup>"
         "<mi>a</mi><mi>i</mi><mn>10</mn></msubsup></mrow><annotation>x</annotation>"
         "</semantics></math>",
         "x^2+a_i^(10)"},
        {"MathML's fractions and roots",
         "<math><mfrac><mn>1</mn><msqrt><mi>x</mi><mi>y</mi></msqrt></mfrac><mroot><mi>z</mi>"
         "<mn>3</mn></mroot></math>",
         "1/(\xE2\x88\x9A(xy))[3]\xE2\x88\x9A(z)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        pugi::xml_document document;
        ASSERT_TRUE(document.load_buffer(row.xml.data(), row.xml.size(),
                                         pugi::parse_default | pugi::parse_ws_pcdata));
        EXPECT_EQ(FormulaStructure(document.document_element()), row.text);
    }
}

TEST(FormulaText, IsBounded) {
    std::string deep;
    for (int i = 0; i < 5000; ++i)
        deep += "<m:e>";
    pugi::xml_document document;
    document.load_string(("<m:oMath>" + deep).c_str());
    EXPECT_LE(FormulaStructure(document.document_element()).size(), 10U);
    std::string wide = "<math>";
    for (int i = 0; i < 200000; ++i)
        wide += "<mi>x</mi>";
    ASSERT_TRUE(document.load_string((wide + "</math>").c_str()));
    EXPECT_LE(FormulaStructure(document.document_element()).size(), 70000U);
}

}  // namespace
}  // namespace zorvane::formula_text_test
