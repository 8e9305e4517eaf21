// Whole documents on paper, against what was looked at.
#include <cmath>

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "compare/print/print_job.h"
#include "tests/support/page_notes.h"
#include "tests/support/told_files.h"

namespace zorvane::told_print_test {
namespace {

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

// On a narrow page without room in its margins, and on a wider one.
TEST(ToldPrint, WholeDocumentsStandAsTheyWereLookedAt) {
    const std::filesystem::path folder = ZORVANE_TEST_DATA "/rtf";
    for (const char* name : {"words", "looks-old"}) {
        const RichText text = ReadRtf(ToldBytes(folder / (std::string(name) + ".rtf")));
        std::string told;
        for (const PageSetup& setup : {PageSetup{4000, 3000, 300, 200, 250, 150},
                                       PageSetup{9000, 9000, 720, 800, 720, 900}}) {
            PageNotes notes;
            ASSERT_TRUE(
                PrintRTF({text, setup, {"A title of the print", "2001-02-03"}}, notes, nullptr)
                    .ok());
            told += "== " + Rounded(setup.width) + "wide\n" + Told(notes);
        }
        ExpectTold(folder / (std::string(name) + ".print"), told);
    }
}

}  // namespace
}  // namespace zorvane::told_print_test
