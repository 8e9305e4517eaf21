#include "compare/print/pdf_painter.h"

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "compare/print/print_job.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

std::string Found(const std::string& text, const std::string& word) {
    const std::size_t at = text.find(word);
    return at == std::string::npos ? "" : text.substr(at, word.size());
}

class PdfFile : public testing::Test {
  protected:
    std::string Print(std::u16string_view text) {
        file_ = folder_.Path("out.pdf");
        Result<PdfPainter> painter = PdfPainter::Begin(file_, "A title");
        EXPECT_TRUE(painter.ok());
        const RichText rich = RichText::Plain(text);
        EXPECT_TRUE(PrintRTF({rich, {}, {"t", "d"}}, painter.value(), nullptr).ok());
        return folder_.Read("out.pdf");
    }

    TempFolder folder_;
    std::string file_;
};

// Every entry of the table of places leads to the object of its number.
TEST_F(PdfFile, IsWhole) {
    const std::string pdf = Print(u"one\ftwo\fthree");
    EXPECT_TRUE(pdf.starts_with("%PDF-1.4"));
    EXPECT_TRUE(pdf.ends_with("%%EOF\n"));
    EXPECT_EQ(Found(pdf, "/Count 3"), "/Count 3");
    const std::size_t start = pdf.rfind("startxref\n") + 10;
    std::size_t row = std::stoul(pdf.substr(start));
    ASSERT_EQ(pdf.substr(row, 7), "xref\n0 ");
    const std::size_t count = std::stoul(pdf.substr(row + 7));
    row = pdf.find('\n', row + 7) + 1;
    const auto object = [&](std::size_t number) {
        const std::size_t place = std::stoul(pdf.substr(row + 20 * number, 10));
        return pdf.substr(place, pdf.find("endobj", place) - place);
    };
    for (std::size_t number = 1; number < count; ++number)
        EXPECT_TRUE(object(number).starts_with(std::to_string(number) + " 0 obj"));
    std::vector<std::pair<std::string, std::string>> leads = {
        {"/Root ", "/Catalog"}, {"/Info ", "/Title "},     {"/Pages ", "/Type/Pages"},
        {"/Kids[", "/Page/"},   {"/Parent ", "/Count 3/"}, {"/Contents ", "stream"}};
    for (std::size_t font = 0; font < kPdfFontCount; ++font)
        leads.emplace_back("/F" + std::to_string(font) + " ",
                           "/BaseFont/" + std::string(PdfFontName(font)) + "/");
    for (const auto& [from, target] : leads) {
        SCOPED_TRACE(from);
        // A page's own text names fonts too, but leads to none.
        const std::size_t at = pdf.find(from, from.starts_with("/F") ? pdf.find("/Font<<") : 0);
        EXPECT_EQ(Found(object(std::stoul(pdf.substr(at + from.size()))), target), target);
    }
}

TEST(PdfFiles, StayAsTheyWereUntilTheJobIsDone) {
    TempFolder folder;
    const std::string file = folder.Write("old.pdf", "old");
    {
        Result<PdfPainter> painter = PdfPainter::Begin(file, "");
        ASSERT_TRUE(painter.ok());
        EXPECT_TRUE(painter.value().NewPage(1000, 1000).ok());
    }
    EXPECT_EQ(folder.Read("old.pdf"), "old");
    const Result<PdfPainter> none = PdfPainter::Begin(folder.Path("none/x.pdf"), "");
    ASSERT_FALSE(none.ok());
    EXPECT_NE(none.failure().reason.find("none/x.pdf"), std::string::npos);
    Result<PdfPainter> full = PdfPainter::Begin("/dev/full", "");
    if (full.ok()) {
        EXPECT_FALSE(PrintRTF({RichText::Plain(u"a")}, full.value(), nullptr).ok());
    }
}

}  // namespace
}  // namespace zorvane
