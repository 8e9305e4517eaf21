// Whole RTF documents against what was looked at: `tests/data/rtf` holds them, and beside each, as
// text, what is read from it and what is written again.
#include <filesystem>
#include <numeric>

#include "compare/document/beside_compare.h"
#include "compare/document/document_look_of.h"
#include "compare/document/format_compare.h"
#include "compare/document/heading_places.h"
#include "compare/document/rtf_page.h"
#include "compare/document/rtf_reader.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/told_files.h"

namespace zorvane::told_rtf_test {
namespace {

const std::filesystem::path kFolder = ZORVANE_TEST_DATA "/rtf";

std::string InLines(std::string text) {
    for (char& character : text)
        character = character == '|' ? '\n' : character;
    return text + "\n";
}

std::string LookTold(const DocumentLook& look) {
    std::string told;
    for (const WordsLook& words : look.words)
        told +=
            std::to_string(words.begin) + (words.bold ? "b" : "") + (words.italic ? "i" : "") + " ";
    for (const ParagraphLook& paragraph : look.paragraphs)
        told += "\nparagraph " + std::to_string(paragraph.number) + ": heading " +
                std::to_string(paragraph.heading) + ", indent " + std::to_string(paragraph.indent) +
                (paragraph.hanging ? " hanging, " : ", ") +
                "LCR"[static_cast<std::size_t>(paragraph.alignment)];
    return told + "\n";
}

TEST(ToldRtf, IsReadAndWrittenAsItWasLookedAt) {
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        if (entry.path().extension() != ".rtf")
            continue;
        std::vector<BesideItem> beside;
        const RichText read = ReadRtf(ToldBytes(entry.path()), beside);
        std::string told = "== text\n" + InLines(Notation(read)) + "== paragraphs\n" +
                           InLines(ParagraphLooks(read)) + "== fonts\n" + InLines(FontLooks(read)) +
                           "== beside\n";
        for (const BesideItem& item : beside)
            told += std::string(NameOf(item.kind).option) + " " + std::to_string(item.paragraph) +
                    " " + item.text + " " + item.digest.substr(0, 4) + "\n";
        told += "== look\n" + LookTold(LookOf(read)) + "headings";
        for (const CharPos place : HeadingPlaces(read))
            told += " " + std::to_string(place.value);
        for (const TableForm tables : {TableForm::Cells, TableForm::Tabs}) {
            const RtfParts page = WriteRtfPage(read, tables);
            told += "\n== page\n" + page.head + page.body;
        }
        ExpectTold(entry.path().string() + ".told", told);
    }
}

std::string Told(const std::vector<BesideDifference>& differences) {
    std::string told;
    for (const BesideDifference& difference : differences)
        told += std::string(NameOf(difference.kind).option) + " " +
                std::string(VerbOf(difference.kind, difference.change)) + " " +
                std::to_string(difference.paragraphs.original.value) + ">" +
                std::to_string(difference.paragraphs.modified.value) + "\n  " +
                difference.old_text + "\n  " + difference.new_text + "\n";
    return told + BesideSentence(differences) + "\n";
}

TEST(ToldRtf, DiffersBesideTheWordsAsItWasLookedAt) {
    for (const char* pair : {"things", "looks"}) {
        const auto read = [&](const char* side, std::vector<BesideItem>& beside) {
            return ReadRtf(ToldBytes(kFolder / (std::string(pair) + side + ".rtf")), beside);
        };
        PerSide<std::vector<BesideItem>> beside;
        const RichText original = read("-old", beside.original);
        const RichText modified = read("-new", beside.modified);
        ParagraphPartners partners(16);
        std::iota(partners.begin(), partners.end(), 1);
        std::string told = Told(CompareBeside(beside.original, beside.modified, partners));
        for (const FormatDepth depth : {FormatDepth::Marks, FormatDepth::Full})
            told += "== formats\n" + Told(CompareFormatting(original, modified, partners, depth));
        ExpectTold(kFolder / (std::string(pair) + ".told"), told);
    }
}

}  // namespace
}  // namespace zorvane::told_rtf_test
