// Whole runs against what was looked at: for pairs of `tests/data/comparisons`, as text, what the
// editors show marked, and what the window says of each difference.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "compare/difference_list.h"
#include "compare/kind_counts.h"
#include "compare/view/overview.h"
#include "compare/view/spoken_difference.h"
#include "tests/support/told_files.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::told_runs_test {
namespace {

using ToldRuns = ViewerTest;
using Set = void (*)(clsCompareFileOptions& options);

struct Asked {
    const char* name;
    Set set;
};
const Asked kAsked[] = {
    {"words", [](clsCompareFileOptions&) {}},
    {"letters, larger, other marks",
     [](clsCompareFileOptions& options) {
         options.bCompareByCharacter.SetData(true);
         options.bShowChangesInLargerSections.SetData(true);
         options.bShowSubParagraphChangesSimilarly.SetData(true);
         options.bViewAdditionItalic.SetData(true);
         options.lViewDeletionBackColor.SetData(0x00FFFF);
     }},
    {"blanks, case and numbers ignored, a line off",
     [](clsCompareFileOptions& options) {
         options.sIgnoreRegularExpression.SetData("[0-9]+");
         options.bIgnoreRegExOnBothPasses.SetData(true);
         options.bUseLineBracket.SetData(true);
         options.bIgnoreCase.SetData(true);
         options.bIgnoreWhitespace.SetData(true);
         options.bIgnoreEmptyLines.SetData(true);
     }},
};

std::string Lines(std::string text) {
    std::replace(text.begin(), text.end(), '|', '\n');
    return text + "\n";
}

const char* NameOf(RowKind kind) {
    constexpr const char* kNames[] = {"equal", "ignored", "changed", "one-sided", "edited"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::string RowsTold(const Comparison& comparison) {
    ParagraphRows rows;
    rows.Assign(comparison);
    std::string told = "rows";
    for (std::int32_t row = 0; row < rows.Rows();) {
        const ParagraphRow run = rows.RunAt(row);
        told += std::string(" ") + NameOf(run.kind) + " " + std::to_string(run.rows.first) + "+" +
                std::to_string(run.rows.count) + " " +
                std::to_string(run.paragraphs.original.first.value) + "+" +
                std::to_string(run.paragraphs.original.count) + " " +
                std::to_string(run.paragraphs.modified.first.value) + "+" +
                std::to_string(run.paragraphs.modified.count);
        row = run.rows.end();
    }
    told += "\noverview";
    for (const OverviewMark& mark : MakeOverview(rows, comparison, 0.02)) {
        told +=
            " " + std::to_string(static_cast<int>(mark.kind)) + "." + std::to_string(mark.record);
        for (const Side side : kBothSides)
            told += " " + std::to_string(std::lround(mark.shares[side].begin * 1000)) + "-" +
                    std::to_string(std::lround(mark.shares[side].end * 1000));
    }
    told += "\nfolds";
    for (const RowSpan& fold : FoldableRows(rows, {.headings = {3}}))
        told += " " + std::to_string(fold.first) + "+" + std::to_string(fold.count);
    return told + "\n";
}

std::string DifferencesTold(const Comparison& comparison) {
    const auto english = [](std::string_view text) { return std::string(text); };
    DifferenceList list;
    list.Show(comparison, english);
    std::string told;
    for (std::int32_t i = 0; i < list.Count(); ++i)
        told += list.Line(i) + "\n  " + list.Status(i) + "\n  " +
                SpokenDifference(comparison, i, english, {.with_place = true}) + "\n";
    const KindCounts kinds = CountKinds(comparison);
    return told + "case " + std::to_string(kinds.letter_case) + ", blanks " +
           std::to_string(kinds.blanks) + ", numbering " + std::to_string(kinds.numbering) +
           ", moves " + std::to_string(kinds.moves) + "\n" + RowsTold(comparison);
}

// What a walk through all differences selects in the editors, and what the window says on the way.
std::string WalkTold(frmCompareFiles& viewer, const RecordingWindow& window) {
    std::string told;
    const auto tell = [&](const std::string& moved) {
        told += moved + ": " + window.status.at(StatusPanel::Main) + ";";
        ViewerEditors& editors = viewer.Editors();
        for (const RichDocument* shown :
             {&editors.rtbOriginal.editor, &editors.rtbModified.editor,
              &editors.rtbOriginalDiffFinal.editor, &editors.rtbModifiedDiffFinal.editor,
              &editors.rtbAIODiff.editor})
            told += " " + std::to_string(shown->Selection().first.value) + "+" +
                    std::to_string(shown->Selection().length);
        const NavigationButtons& buttons = window.navigation;
        told += std::string(buttons.first ? " first" : "") + (buttons.previous ? " previous" : "") +
                (buttons.next ? " next" : "") + (buttons.last ? " last" : "") + "\n";
    };
    viewer.ShowDifferenceLast();
    tell("last");
    viewer.ShowDifferencePrevious();
    tell("previous");
    viewer.ShowDifferenceFirst();
    for (std::int32_t at = 1; at <= viewer.Compared().record_counts.All(); ++at) {
        tell(std::to_string(viewer.mlCurrentDifference()));
        viewer.ShowDifferenceNext();
    }
    viewer.SelectListItem(1);
    tell("second of the list");
    viewer.cmdChangeViewFormat_Click();
    tell("the other view, " + std::to_string(static_cast<int>(window.view)));
    for (const ViewFilter filter :
         {ViewFilter::Additions, ViewFilter::Deletions, ViewFilter::Changes, ViewFilter::All}) {
        viewer.ShowFilter(filter);
        tell("focus on " + std::to_string(static_cast<int>(window.focus)));
    }
    viewer.cmdChangeViewFormat_Click();
    return told;
}

TEST_F(ToldRuns, AreAsTheyWereLookedAt) {
    const std::filesystem::path folder = ZORVANE_TEST_DATA "/comparisons";
    for (const char* pair :
         {"rules-reports", "minutes-reports", "letters", "scripts", "numbers", "verses"}) {
        SCOPED_TRACE(pair);
        const PerSide<std::string> texts{ToldBytes(folder / (std::string(pair) + ".original")),
                                         ToldBytes(folder / (std::string(pair) + ".modified"))};
        std::string told;
        for (const Asked& asked : kAsked) {
            viewer.Options() = DefaultCompareFileOptions();
            asked.set(viewer.Options());
            ASSERT_TRUE(Compare(texts.original, texts.modified, View::AllInOne));
            told += std::string("== ") + asked.name + "\n" + Lines(AllInOne());
            for (const RichDocument* summary :
                 {&viewer.Editors().rtbAdditions, &viewer.Editors().rtbDeletions,
                  &viewer.Editors().rtbChanges})
                told += "-- summary\n" + Lines(Notation(summary->Rich()));
            told += "-- walk\n" + WalkTold(viewer, window);
            ASSERT_TRUE(Compare(texts.original, texts.modified, View::SideBySide));
            told += "-- original\n" + Lines(Left()) + "-- modified\n" + Lines(Right()) + "--\n" +
                    DifferencesTold(viewer.Compared());
        }
        ExpectTold(folder / (std::string(pair) + ".run"), told);
    }
}

}  // namespace
}  // namespace zorvane::told_runs_test
