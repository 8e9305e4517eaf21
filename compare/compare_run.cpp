#include "compare/compare_run.h"

#include "common/base/text_encoding.h"
#include "compare/document_markers.h"
#include "compare/engine/compare_texts.h"

namespace zorvane {
namespace {

struct FooterRow {
    MemoryEditor ViewerEditors::*editor;
    std::int32_t LevelCounters::*count;
    const char* frame;
    const char* title;
    const char* none;
    const char* some;
};
constexpr FooterRow kFooters[] = {
    {&ViewerEditors::rtbDeletions, &LevelCounters::deletions, "-------", "Deletions Summary",
     "No deletions found", "deletions found"},
    {&ViewerEditors::rtbAdditions, &LevelCounters::additions, "+++++++", "Additions Summary",
     "No additions found", "additions found"},
    {&ViewerEditors::rtbChanges, &LevelCounters::changes, "^^^^^^^", "Change Summary",
     "No changes found", "changes found"},
};

// One run; each step is a call, in the order of the steps.
class CompareRun {
  public:
    CompareRun(PassContext& context, RunState& state, CompareFilesWindow& window,
               const RunCalls& calls, bool command_line)
        : context_(context),
          editors_(context.editors),
          state_(state),
          window_(window),
          calls_(calls),
          command_line_(command_line) {}

    RunEnd Run() {
        if (state_.show_views) {
            CopyTexts();
            BuildParagraphs();
        }
        if (!context_.monitor.KeepGoing())
            return RunEnd::Aborted;
        if (const Status compared = calls_.run_document_engine(); !compared.ok())
            return compared.failure().reason == kCompareStopped ? RunEnd::Aborted : RunEnd::Failed;
        if (!context_.monitor.KeepGoing())
            return RunEnd::Aborted;
        if (state_.show_views)
            calls_.update_difference_list();
        if (!context_.monitor.KeepGoing())
            return RunEnd::Aborted;
        EmptySummaries();
        CountAll();
        if (!state_.show_views) {
            BeFresh();
            return RunEnd::Finished;
        }
        const bool finished = state_.view == View::AllInOne ? BuildAllInOne() : BuildSideBySide();
        if (!finished)
            return RunEnd::Aborted;
        editors_.rtbOriginalDiff.editor.Clear();
        editors_.rtbModifiedDiff.editor.Clear();
        BeFresh();
        return RunEnd::Finished;
    }

  private:
    void BeFresh() {
        state_.mbRebuildOriginalParagraphs = false;
        state_.mbRebuildModifiedParagraphs = false;
    }

    void CopyTexts() {
        if (state_.mbRemoveFormatting) {
            for (DocumentEditor* entry :
                 {&editors_.rtbOriginal, &editors_.rtbModified, &editors_.rtbOriginalDiffFinal,
                  &editors_.rtbModifiedDiffFinal, &editors_.rtbAIODiff, &editors_.rtbOriginalDiff,
                  &editors_.rtbModifiedDiff})
                entry->document.ChangeFontAll(state_.msFontName, state_.msngFontSize);
        }
        if (state_.view == View::AllInOne)
            return;  // only the side-by-side form works in them
        Copy(editors_.rtbModified, editors_.rtbModifiedDiff);
        Copy(editors_.rtbOriginal, editors_.rtbOriginalDiff);
    }

    void Copy(const DocumentEditor& from, DocumentEditor& to) {
        if (state_.mbRemoveFormatting)
            to.editor.SetText(from.editor.Text());
        else
            to.editor.SetRich(from.editor.Rich());
    }

    void BuildParagraphs() {
        if (state_.mbRebuildOriginalParagraphs)
            editors_.rtbOriginal.document.ParagraphCollectionCreate();
        if (state_.mbRebuildModifiedParagraphs)
            editors_.rtbModified.document.ParagraphCollectionCreate();
        if (state_.view == View::AllInOne)
            return;
        editors_.rtbOriginalDiff.document.ParagraphCollectionCreate();
        editors_.rtbModifiedDiff.document.ParagraphCollectionCreate();
    }

    void CountAll() {
        const auto level = [](const DetailCounts& counts) {
            return LevelCounters{counts.changes, counts.additions, counts.deletions};
        };
        const Comparison& comparison = context_.comparison;
        context_.counters = {level(comparison.record_counts), level(comparison.section_counts),
                             level(comparison.character_counts)};
    }

    void EmptySummaries() {
        editors_.rtbDeletions.Clear();
        editors_.rtbAdditions.Clear();
        editors_.rtbChanges.Clear();
    }

    bool BuildAllInOne() {
        Copy(editors_.rtbOriginal, editors_.rtbAIODiff);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        merged.ParagraphCollectionCreate();
        if (!context_.monitor.KeepGoing())
            return false;
        const std::int32_t paragraphs = merged.ParagraphCount();
        const WalkEnd end = UpdateChangesToRTFFileAIO(context_);
        if (end == WalkEnd::Aborted || !context_.monitor.KeepGoing())
            return false;
        if (command_line_ || paragraphs <= kParagraphsBeforeAsking || UserWantsAdjustment())
            merged.ParagraphCollectionAdjust();
        state_.mbAIOViewFresh = true;
        return true;
    }

    bool UserWantsAdjustment() {
        RunMonitor& monitor = context_.monitor;
        return window_.AskYesNo(
            monitor.Translate("Your document has more than 50,000 paragraphs.  The comparison has "
                              "been completed, but to") +
                "\n" +
                monitor.Translate("handle navigation within the document one more scan is "
                                  "required. It could take a long time.") +
                "\n\n" + monitor.Translate("Continue?"),
            monitor.Translate("Compare"));
    }

    bool BuildSideBySide() {
        if (UpdateChangesToRTFFile_SBS(context_) == WalkEnd::Aborted)
            return false;
        // The working copies hold nothing between runs, so their text moves.
        editors_.rtbOriginalDiffFinal.editor.SetRich(editors_.rtbOriginalDiff.editor.TakeRich());
        editors_.rtbModifiedDiffFinal.editor.SetRich(editors_.rtbModifiedDiff.editor.TakeRich());
        editors_.rtbOriginalDiffFinal.document.ParagraphCollectionCreate();
        if (!context_.monitor.KeepGoing())
            return false;
        editors_.rtbModifiedDiffFinal.document.ParagraphCollectionCreate();
        state_.mbSBSViewFresh = true;
        return true;
    }

    PassContext& context_;
    ViewerEditors& editors_;
    RunState& state_;
    CompareFilesWindow& window_;
    const RunCalls& calls_;
    bool command_line_;
};

}  // namespace

RunEnd RunCompareSteps(PassContext& context, RunState& state, CompareFilesWindow& window,
                       const RunCalls& calls, bool command_line) {
    return CompareRun(context, state, window, calls, command_line).Run();
}

void PutSummaryFooters(PassContext& context) {
    RunMonitor& monitor = context.monitor;
    for (const FooterRow& row : kFooters) {
        const std::int32_t count = context.counters.document.*row.count;
        const std::string frame = row.frame;
        std::string text =
            monitor.Translate(frame + " ") + monitor.Translate(row.title) + monitor.Translate(". ");
        text += count == 0 ? monitor.Translate(row.none)
                           : std::to_string(count) + " " + monitor.Translate(row.some);
        text += monitor.Translate(" " + frame) + "\n";
        (context.editors.*row.editor).Replace({CharPos{0}, 0}, ToUtf16(text));
    }
}

}  // namespace zorvane
