// Whole comparisons against what was looked at: `tests/data/comparisons` holds pairs of texts and
// for each pair, as text, what the engine tells of it under each set of options.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/engine/compare_texts.h"
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
};

std::string Numbers(const ParagraphRange& range) {
    return std::to_string(range.first.value) + "-" + std::to_string(range.last.value);
}

// The letters that changed in the words of a record.
std::string Letters(const Comparison& comparison, std::span<const SectionDetail> sections,
                    const PerSide<std::u16string>& texts) {
    std::string told;
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
    return told + SummaryText(comparison) + "\n";
}

std::string Reports(const Comparison& comparison) {
    ReportModel model{.comparison = comparison,
                      .title = "A <title>",
                      .names = {"old.txt", "new.txt"},
                      .dates = {"2001-02-03", "2001-02-04"},
                      .high_detail = true};
    std::string told = "== report, text\n" + WriteTextReport(model);
    told += "\n== report, comma-delimited\n" + WriteCsvReport(model);
    for (const UnchangedText unchanged : {UnchangedText::Folded, UnchangedText::None}) {
        model.unchanged = unchanged;
        for (const std::int32_t style : {1, 2}) {
            const std::string page = WriteHtmlReport(model, style);
            told += "\n== report, page " + std::to_string(style) + "\n" +
                    page.substr(page.find("<body"), page.find("<script") - page.find("<body"));
        }
    }
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
        for (const Asked& asked : kAsked) {
            const Result<Comparison> result = CompareLineFiles(
                {std::string_view(texts.original), std::string_view(texts.modified)}, asked.options,
                nullptr);
            ASSERT_TRUE(result.ok());
            told += "== " + std::string(asked.name) + "\n" + Told(result.value());
            if (&asked == &kAsked[1] && name.ends_with("-reports"))
                told += Reports(result.value());
        }
        ExpectTold(name + ".told", told);
    }
    EXPECT_GT(pairs, 0);
}

}  // namespace
}  // namespace zorvane::told_comparisons_test
