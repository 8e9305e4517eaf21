// Whole comparisons against what was looked at: `tests/data/comparisons` holds pairs of texts and
// for each pair, as text, what the engine tells of it under each set of options.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/engine/compare_texts.h"
#include "compare/engine/html_style.h"
#include "compare/engine/report_model.h"
#include "tests/support/comparison_notation.h"
#include "tests/support/told_files.h"

namespace zorvane::told_comparisons_test {
namespace {

struct Asked {
    const char* name;
    CompareOptions options;
};
const Asked kAsked[] = {
    {"words", {}},
    {"letters", {.by_character = true}},
    {"larger sections", {.larger_sections = true, .by_character = true}},
    {"nothing but what counts",
     {.ignore_case = true, .ignore_whitespace = true, .ignore_empty_lines = true}},
    {"faster, near, no moves", {.faster = true, .bracket = 3, .find_moves = false}},
    {"numbers filtered", {.expressions = "[0-9]+", .filter_sections = true, .by_character = true}},
    {"blanks ignored, larger",
     {.ignore_whitespace = true, .larger_sections = true, .by_character = true}},
    {"case and lines by number, one way off",
     {.ignore_case = true, .bracket = 1, .expressions = "^[0-9.]+@@ *;$", .by_character = true}},
    {"no empty lines, two ways off, whole records",
     {.ignore_empty_lines = true, .bracket = 2, .find_sections = false}},
};

std::string Numbers(const ParagraphRange& range) {
    return std::to_string(range.first.value) + "-" + std::to_string(range.last.value);
}

// Which words of a record differ, by their numbers, and their letters that changed.
std::string Letters(const Comparison& comparison, std::span<const SectionDetail> sections,
                    const PerSide<std::u16string>& texts) {
    if (!comparison.by_character || sections.empty())
        return {};
    std::string told = "   ";
    for (const SectionDetail& section : sections) {
        told += std::string(" ") + static_cast<char>(section.type);
        for (const Side side : kBothSides)
            told += (side == Side::Original ? "" : ":") +
                    std::to_string(section.places[side].first) + "-" +
                    std::to_string(section.places[side].last);
    }
    told += "\n";
    for (const SectionDetail& section : sections) {
        const auto part = [&](Side side) {
            const DetailPlace& place = section.places[side];
            return texts[side].substr(static_cast<std::size_t>(place.begin),
                                      static_cast<std::size_t>(place.Length()));
        };
        const auto letters = comparison.CharactersOf(section);
        if (!letters.empty())
            told += "    " + MarkedText(part(Side::Original), part(Side::Modified), letters) + "\n";
    }
    return told;
}

// Paragraphs that are shown against each other, in runs.
std::string PartnersTold(const Comparison& comparison) {
    std::string told;
    const std::vector<std::int32_t> partners = comparison.Partners();
    for (std::size_t begin = 0; begin < partners.size();) {
        std::size_t end = begin + 1;
        while (end < partners.size() && partners[begin] > 0 &&
               partners[end] - partners[begin] == static_cast<std::int32_t>(end - begin))
            ++end;
        if (partners[begin] > 0)
            told += std::to_string(begin + 1) + "-" + std::to_string(end) + "=" +
                    std::to_string(partners[begin]) + " ";
        begin = end;
    }
    return told;
}

std::string CountsTold(const Comparison& comparison) {
    std::string told;
    for (const DifferenceCounts* counts :
         {&comparison.section_counts, &comparison.character_counts})
        told += "; " + std::to_string(counts->changes) + " " + std::to_string(counts->additions) +
                " " + std::to_string(counts->deletions);
    return told;
}

std::string Told(const Comparison& comparison) {
    std::string told;
    for (std::size_t i = 0; i < comparison.records.size(); ++i) {
        const DifferenceRecord& record = comparison.records[i];
        const Move* move = comparison.MoveOf(i);
        PerSide<std::u16string> texts{comparison.Text(Side::Original, record),
                                      comparison.Text(Side::Modified, record)};
        told += std::string(1, static_cast<char>(record.type)) + " " +
                Numbers(record.paragraphs.original) + " " + Numbers(record.paragraphs.modified);
        const bool from = record.type == DifferenceType::Deletion;
        if (move != nullptr)
            told += " moved " + std::to_string(PartnerOf(*move, record.type).value);
        if (record.type == DifferenceType::Addition && move != nullptr)
            texts.original = comparison.Text(Side::Original, comparison.Record(move->deletion));
        const auto sections =
            move != nullptr && !from ? comparison.SectionsOf(*move) : comparison.SectionsOf(i);
        told += "\n  " +
                (sections.empty() ? WithPilcrows(from ? texts.original : texts.modified)
                                  : MarkedText(texts.original, texts.modified, sections)) +
                "\n" + Letters(comparison, sections, texts);
    }
    for (const Side side : kBothSides) {
        for (std::int32_t line = 1; line <= comparison.Paragraphs(side); ++line) {
            if (comparison.IsIgnored(side, line))
                told +=
                    std::string(side == Side::Original ? "o" : "m") + std::to_string(line) + " ";
        }
    }
    return told + PartnersTold(comparison) + "\n" + SummaryText(comparison) +
           CountsTold(comparison) + "\n";
}

std::string Body(const std::string& page) {
    return page.substr(page.find("<body"), page.find("<script") - page.find("<body"));
}

// A look that meets paragraphs of all kinds, words in bold and in italics.
DocumentLook LookOf(const LineText& lines) {
    DocumentLook look;
    for (std::int32_t number = 1; number <= lines.Count(); number += 2) {
        const auto turn = static_cast<std::uint8_t>(number / 2 % 4);
        look.paragraphs.push_back({.number = number,
                                   .heading = turn,
                                   .indent = static_cast<std::uint8_t>(number % 3),
                                   .hanging = turn == 2,
                                   .alignment = static_cast<LookAlignment>(turn % 3)});
        const auto start = static_cast<std::uint32_t>(lines.Start(number - 1));
        look.words.push_back({.begin = start + 4, .bold = turn < 2, .italic = turn % 2 == 1});
        look.words.push_back({.begin = start + 12});
    }
    return look;
}

std::string Reports(Comparison comparison) {
    ReportModel model{.comparison = comparison,
                      .title = "A <title>",
                      .names = {"old.txt", "new.txt"},
                      .dates = {"2001-02-03", "2001-02-04"},
                      .high_detail = true};
    std::string told = "== report, text\n" + WriteTextReport(model);
    told += "\n== report, comma-delimited\n" + WriteCsvReport(model);
    for (const UnchangedText unchanged : {UnchangedText::Folded, UnchangedText::None}) {
        model.unchanged = unchanged;
        for (const std::int32_t style : {1, 2})
            told += "\n== report, page " + std::to_string(style) + "\n" +
                    Body(WriteHtmlReport(model, style));
    }
    comparison.beside_sentence = "Beside the words: 2 links.";
    comparison.beside = {
        {"links",
         "link target",
         "changed",
         {ParagraphNumber{2}, ParagraphNumber{3}},
         "a,b",
         "\"c\" & d"},
        {"links", "link", "added", {ParagraphNumber{0}, ParagraphNumber{4}}, {}, "e"}};
    model.title.clear();
    model.dates = {};
    model.high_detail = false;
    model.look.similar_sub_paragraph_marks = true;
    told += "\n== beside, text\n" + WriteTextReport(model);
    told += "\n== beside, comma-delimited\n" + WriteCsvReport(model);
    const PerSide<DocumentLook> looks{LookOf(comparison.Lines(Side::Original)),
                                      LookOf(comparison.Lines(Side::Modified))};
    model.document_looks = {&looks.original, &looks.modified};
    model.unchanged = UnchangedText::All;
    for (const std::int32_t style : {1, 2})
        told += "\n== beside and looks, page " + std::to_string(style) + "\n" +
                Body(WriteHtmlReport(model, style));
    return told;
}

TEST(ToldComparisons, AreAsTheyWereLookedAt) {
    namespace fs = std::filesystem;
    int pairs = 0;
    for (const auto& entry : fs::directory_iterator(ZORVANE_TEST_DATA "/comparisons")) {
        const std::string path = entry.path().string();
        if (!path.ends_with(".original"))
            continue;
        ++pairs;
        const std::string name = path.substr(0, path.rfind('.'));
        const PerSide<std::string> texts{ToldBytes(path), ToldBytes(name + ".modified")};
        std::string told;
        std::string first;
        for (const Asked& asked : kAsked) {
            const Result<Comparison> result = CompareLineFiles(
                {std::string_view(texts.original), std::string_view(texts.modified)}, asked.options,
                nullptr);
            ASSERT_TRUE(result.ok());
            const std::string now = Told(result.value());
            told +=
                "== " + std::string(asked.name) + "\n" + (now == first ? "as the first\n" : now);
            first = first.empty() ? now : first;
            if (&asked == &kAsked[1] && name.ends_with("-reports"))
                told += Reports(result.value());
            if (&asked == &kAsked[3] && name.ends_with("-reports"))
                told += Body(WriteHtmlReport(
                    {.comparison = result.value(), .unchanged = UnchangedText::All}, 2));
        }
        ExpectTold(name + ".told", told);
    }
    EXPECT_GT(pairs, 0);
}

// The width of the numbers and the marks, of pages in the user's own look.
std::string StyleTold(const ReportLook& look, std::int32_t largest_number) {
    const std::string style = HtmlStyle(look, largest_number);
    const std::size_t width = style.find("--g:");
    return style.substr(width, style.find('}', width) - width) + "\n" +
           style.substr(style.find("ins.a{")) + "\n";
}

TEST(ToldComparisons, PagesHaveTheUsersMarks) {
    const MarkStyle bright{.ForeColor = 0x00FFFF, .bItalic = true};
    const MarkStyle boxed{.BackColor = 0x400000, .bUnderline = true, .bStrikeout = true};
    ReportLook similar{.addition = bright};
    similar.similar_sub_paragraph_marks = true;
    ExpectTold(
        ZORVANE_TEST_DATA "/comparisons/marks.look",
        StyleTold({}, 9) + StyleTold({}, 123456) + StyleTold(similar, 100) +
            StyleTold({.addition = boxed, .deletion = bright, .change_modified = boxed}, 99));
}

}  // namespace
}  // namespace zorvane::told_comparisons_test
