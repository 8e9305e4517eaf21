// Whole documents on paper, against what was looked at.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "compare/print/pdf_painter.h"
#include "compare/print/print_job.h"
#include "tests/support/page_notes.h"
#include "tests/support/temp_folder.h"
#include "tests/support/told_files.h"

namespace zorvane::told_print_test {
namespace {

const std::filesystem::path kFolder = ZORVANE_TEST_DATA "/rtf";

std::string Rounded(double number) {
    return std::to_string(std::lround(number)) + " ";
}

std::string Told(const PageNotes& notes) {
    std::string told;
    for (const PageNotes::Page& page : notes.pages) {
        told += "-- page\n";
        for (const PageNotes::Text& text : page.texts)
            told += Rounded(text.x) + Rounded(text.y) + Rounded(text.width) +
                    std::string(text.font.name.view()) + " " + Rounded(text.font.points) +
                    (text.font.bold ? "b" : "") + (text.font.italic ? "i" : "") +
                    (text.right_to_left ? "<" : "") + "#" + std::to_string(text.color.value) +
                    " \"" + text.text + "\"\n";
        for (const Stroke& stroke : page.strokes)
            told += "line " + Rounded(stroke.from.x) + Rounded(stroke.from.y) +
                    Rounded(stroke.to.x) + Rounded(stroke.to.y) + Rounded(stroke.width) +
                    std::to_string(static_cast<int>(stroke.style)) + " #" +
                    std::to_string(stroke.color.value) + "\n";
        for (const PageBox& box : page.boxes)
            told += "box " + Rounded(box.left) + Rounded(box.top) + Rounded(box.width) +
                    Rounded(box.height) + "\n";
    }
    return told;
}

constexpr PageSetup kNarrow{4000, 2950, 300, 200, 250, 150};

// A text whose paragraph signs are ends of pages.
RichText Paged(const std::string& name) {
    RichText text = ReadRtf(ToldBytes(kFolder / (name + ".rtf")));
    std::replace(text.text.begin(), text.text.end(), u'\u00A7', u'\f');
    return text;
}

// On a narrow page without room in its margins, and on a wider one.
TEST(ToldPrint, WholeDocumentsStandAsTheyWereLookedAt) {
    for (const char* name : {"words", "looks-old", "pages"}) {
        const RichText text = Paged(name);
        std::string told;
        for (const PageSetup& setup : {kNarrow, PageSetup{9000, 9000, 720, 800, 720, 900}}) {
            PageNotes notes;
            ASSERT_TRUE(
                PrintRTF({text, setup, {"A title of the print", "2001-02-03"}}, notes, nullptr)
                    .ok());
            told += "== " + Rounded(setup.width) + "wide\n" + Told(notes);
        }
        ExpectTold(kFolder / (std::string(name) + ".print"), told);
    }
}

TEST(ToldPrint, APageThatFailsIsTheLast) {
    const RichText text = Paged("pages");
    PageNotes whole;
    ASSERT_TRUE(PrintRTF({text, kNarrow}, whole, nullptr).ok());
    while (!whole.pages.empty()) {
        PageNotes notes;
        notes.fails_at_page = static_cast<int>(whole.pages.size());
        const Result<std::int32_t> pages = PrintRTF({text, kNarrow}, notes, nullptr);
        ASSERT_FALSE(pages.ok());
        EXPECT_EQ(pages.failure().reason, "printer: out of paper");
        EXPECT_FALSE(notes.finished);
        whole.pages.pop_back();
        EXPECT_EQ(Told(notes), Told(whole));
    }
}

TEST(ToldPrint, PdfFilesAreAsTheyWereLookedAt) {
    const TempFolder folder;
    for (const char* name : {"pages", "letters"}) {
        const RichText text = Paged(name);
        Result<PdfPainter> painter = PdfPainter::Begin(folder.Path("out.pdf"), "A title \u03B1");
        ASSERT_TRUE(painter.ok());
        const PrintJob job{text, {9000, 12000, 720, 800, 720, 900}, {"(A) b", "d", "page", "of"}};
        ASSERT_TRUE(PrintRTF(job, painter.value(), nullptr).ok());
        ExpectTold(kFolder / (std::string(name) + ".pdf"),
                   folder.Read("out.pdf") + painter.value().Remark() + "\n");
    }
}

}  // namespace
}  // namespace zorvane::told_print_test
