#include "load/readers/pdf/pdf_content.h"

#include <gtest/gtest.h>

namespace zorvane::pdf_content_test {
namespace {

using namespace std::string_view_literals;

/// "/A 3x1[bytes] ": names, and inline pictures with their size and their bytes.
std::string Drawn(std::string_view content) {
    std::string shown;
    PdfContent reader(content);
    PdfDrawing drawing;
    while (reader.Next(drawing)) {
        if (!drawing.name.empty())
            shown += "/" + drawing.name + " ";
        else
            shown += std::string(drawing.width) + "x" + std::string(drawing.height) + "[" +
                     std::string(drawing.bytes) + "] ";
    }
    return shown;
}

TEST(PdfContent, FindsWhatIsDrawn) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"", ""},
        {"q /A Do Q\n/B Do", "/A /B "},
        {"/A\0Do\t/B\fDo"sv, "/A /B "},
        {"/A Do/B Do[]/C Do", "/A /B /C "},
        {"/F 9 Tf /A gs 1 0 0 1 0 0 cm /B Do", "/B "},
        {"/A#20#42 Do /#4 Do /#zz Do /A# Do", "/A B /#4 /#zz /A# "},
        {"/A Dot /A do Do", "/A "},
        {"(/A Do) Tj (a\\) /B Do) Tj (a(b)c /C Do) Tj /D Do", "/D "},
        {"[(a) -20 (b /A Do)] TJ <</K /L>> DP /A Do", "/A "},
        {"<2F4120446F> Tj /A Do <2F", "/A "},
        {"% /A Do\n/B Do % /C Do\r/D Do % /E Do", "/B /D "},
        {"(never closed /A Do", ""},
        {"(\\", ""},
        {"BI /W 3 /H 1 ID abc EI /A Do", "3x1[ /W 3 /H 1 ID abc EI] /A "},
        {"BI /Height 2 /Width 4 /BPC 8 ID\n/B Do\nEI\n/A Do",
         "4x2[ /Height 2 /Width 4 /BPC 8 ID\n/B Do\nEI] /A "},
        {"BI /W /H 1 ID EIEI xEI EIx EI", "x1[ /W /H 1 ID EIEI xEI EIx EI] "},
        {"BI /CS [/I /RGB 0 (ID)] /W 1 /H 1 ID x EI",
         "1x1[ /CS [/I /RGB 0 (ID)] /W 1 /H 1 ID x EI] "},
        {"BI /W 1 /H 1 ID never ended", "1x1[ /W 1 /H 1 ID never ended] "},
        {"BI", "x[] "},
    };
    for (const auto& [content, drawn] : rows)
        EXPECT_EQ(Drawn(content), drawn) << content;
}

TEST(PdfContent, EndsWhereverItIsCutOff) {
    const std::string_view whole =
        "q (a(b)\\)) Tj <2F> Tj <</K [/L 1]>> DP BI /W 3 /H 1 ID abc EI %c\n/A#20 Do Q";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const std::string cut(whole.substr(0, length));  // a copy, so that no byte lies behind it
        EXPECT_LE(Drawn(cut).size(), whole.size());
    }
}

}  // namespace
}  // namespace zorvane::pdf_content_test
