// Whole reports against what was looked at, for pairs of `tests/data/comparisons`.
#include <filesystem>

#include "reports/json_report.h"
#include "reports/terminal_report.h"
#include "tests/support/compared_pair.h"
#include "tests/support/told_files.h"

namespace zorvane {
namespace {

TEST(ToldReports, AreAsTheyWereLookedAt) {
    const std::filesystem::path folder = ZORVANE_TEST_DATA "/comparisons";
    for (const char* pair : {"rules-reports", "minutes-reports", "one-nothing-left", "one-end"}) {
        const std::filesystem::path file = folder / pair;
        const PerSide<std::string> texts{ToldBytes(file.string() + ".original"),
                                         ToldBytes(file.string() + ".modified")};
        std::string told;
        for (const bool letters : {true, false}) {
            Result<Comparison> compared = CompareLineFiles(
                {std::string_view(texts.original), std::string_view(texts.modified)},
                {.by_character = letters}, nullptr);
            ASSERT_TRUE(compared.ok());
            Comparison comparison = std::move(compared).value();
            if (letters) {
                comparison.beside_sentence = "Beside the words: 2 links.";
                comparison.beside = {
                    {"links",
                     "link target",
                     "changed",
                     {ParagraphNumber{2}, ParagraphNumber{3}},
                     "a\"b",
                     "c\x1B"},
                    {"links", "link", "added", {ParagraphNumber{0}, ParagraphNumber{4}}, {}, "e"}};
            }
            const ReportModel model{.comparison = comparison, .names = {"old\x07", "n\"ew"}};
            if (letters)
                told += "== JSON\n" + WriteJsonReport(model);
            for (const std::int32_t context : {0, 2})
                told += "== terminal, " + std::to_string(context) + " around\n" +
                        WriteTerminalReport(model, {context == 0, context});
            told += "== counts\n" + WriteStat(model);
        }
        ExpectTold(file.string() + ".report", told);
    }
}

}  // namespace
}  // namespace zorvane
