// The Compare Files viewer and files: saving and printing of its editors, and what happens to the
// compared files on the disk.
#include <utility>

#include "common/log_message.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "compare/compare_files_viewer.h"
#include "compare/viewer_printing.h"
#include "compare/viewer_saving.h"

namespace zorvane {

ShownDocument& frmCompareFiles::DocumentOf(EditorTarget target) {
    switch (target) {
        case EditorTarget::AllInOneDiff:
            return editors_.rtbAIODiff;
        case EditorTarget::OriginalDiffFinal:
            return editors_.rtbOriginalDiffFinal;
        case EditorTarget::ModifiedDiffFinal:
            return editors_.rtbModifiedDiffFinal;
        case EditorTarget::Original:
            return editors_.rtbOriginal;
        case EditorTarget::Modified:
            break;
    }
    return editors_.rtbModified;
}

// ---- saving ----

SaveOutcome frmCompareFiles::SaveActiveEditorAs() {
    return SaveEditor(mlActiveEditor_);
}

SaveOutcome frmCompareFiles::SaveEditor(EditorTarget target) {
    SaveOutcome outcome;
    if (!IsEnabled(ViewerCommand::Save))
        return outcome;
    window_.SetHourglass(true);
    window_.SetAbortVisible(true);
    PerSide<std::uint32_t> saved;  // how often each text was edited when it was written
    const auto work = [this, target, &outcome, &saved](ViewerRun& run) {
        RunControl& control = run.Control();
        NativeTrellisPage page(process_.platform, *conversions_,
                               [&control](std::int32_t) { return control.KeepGoing(); });
        outcome = SaveEditorAs({process_, telling_, window_, settings_, TextFileExtensions_, page,
                                [this, &saved](EditorTarget shown) -> const Editor& {
                                    saved = now_.texts;
                                    return DocumentOf(shown).editor;
                                },
                                [this, &run](std::string& file) { return SaveAllInOne(file, run); },
                                [this, &saved](Side side, const std::string& file) {
                                    SelectSavedFile(side, file, saved[side]);
                                },
                                SuggestedName(target, ShownFiles()),
                                ModeForTextOf(telling_, FilesOf(target)), &control},
                               target);
    };
    StartRun(RunOn::ThisThread, RunStep::Save, {work, [this] {
                                                    window_.SetHourglass(false);
                                                    window_.SetAbortVisible(false);
                                                    window_.ShowStatus(StatusPanel::Detail,
                                                                       Translate("Ready"));
                                                }});
    return outcome;
}

// What is shown is saved, so nothing is compared before.
ReportResult frmCompareFiles::SaveAllInOne(std::string& file, ViewerRun& run) {
    DocumentReportTexts texts = DocumentTexts();
    texts.all_in_one = editors_.rtbAIODiff.editor.Rich();
    texts.additions.reset();
    texts.deletions.reset();
    texts.changes.reset();
    ReportInput input =
        ReportInputFor({false, Launch::No, file, ReportType::Document, 0}, std::move(texts));
    input.questions = &run.Questions();
    return RunReport(std::move(input), run.Control()).result;
}

// What was typed while the text was converted is not in the file.
void frmCompareFiles::SelectSavedFile(Side side, const std::string& file, std::uint32_t edits) {
    recent_files_[side].AddUniqueItemToCollection(file);
    (side == Side::Original ? options_.sFileOriginal : options_.sFileModified).SetData(file);
    if (edits == now_.texts[side])
        DocumentOf(TargetOf(side)).editor.SetCleanPoint();
    file_watch_.Watch(side, file, file_watch_.StampOf(file));
}

// Another file may be chosen already, which is not loaded yet.
PerSide<std::string> frmCompareFiles::ShownFiles() const {
    PerSide<std::string> files;
    for (const Side side : kBothSides) {
        const std::string& watched = file_watch_.PathOf(side);
        files[side] = watched.empty() ? ChosenFile(side) : watched;
    }
    return files;
}

// The files that the text of an editor comes from.
PerSide<std::string> frmCompareFiles::FilesOf(EditorTarget target) const {
    PerSide<std::string> files = ShownFiles();
    if (target == EditorTarget::Original)
        files.modified.clear();
    if (target == EditorTarget::Modified)
        files.original.clear();
    return files;
}

// ---- printing ----

PrintEnd frmCompareFiles::PrintActiveEditor() {
    PrintEnd end = PrintEnd::Cancelled;
    if (!IsEnabled(ViewerCommand::Save))
        return end;
    window_.SetAbortVisible(true);
    const auto work = [this, &end](ViewerRun& run) {
        end =
            PrintEditor({process_, telling_, window_, settings_, &run.Control()},
                        DocumentOf(mlActiveEditor_).editor, TitleOf(mlActiveEditor_, ShownFiles()));
    };
    const auto tell = [this, &end] {
        window_.SetAbortVisible(false);
        window_.ShowStatus(StatusPanel::Detail,
                           Translate(end == PrintEnd::Stopped ? kPrintStopped : "Ready"));
    };
    StartRun(RunOn::ThisThread, RunStep::Print, {work, tell});
    return end;
}

// ---- what would be lost ----

bool frmCompareFiles::MayLoseEdits(LosingStep step, const PerSide<bool>& of) {
    std::vector<EditedText> texts;
    for (const Side side : kBothSides) {
        if (of[side])
            texts.push_back(
                {TitleOf(TargetOf(side), ShownFiles()),
                 [this, side] { return DocumentOf(TargetOf(side)).editor.IsModified(); },
                 [this, side] { return SaveBeforeLosing(side); }});
    }
    return UnsavedEdits(process_, window_).MayGoOn(step, texts);
}

// The sides whose edits a reload leaves alone; nothing when the user steps back.
std::optional<PerSide<bool>> frmCompareFiles::EditsToKeep() {
    const PerSide<bool> none{false, false};
    if (Silent())
        return none;
    PerSide<bool> edited = none;    // whose own file would be read again
    PerSide<bool> replaced = none;  // whose place the text of another file takes
    for (const Side side : kBothSides) {
        const std::string& file =
            side == Side::Original ? options_.sFileOriginal.Data() : options_.sFileModified.Data();
        if (!DocumentOf(TargetOf(side)).editor.IsModified() ||
            IsAsItWasLoaded(options_, load_memory_, side, file))
            continue;
        const bool own = load_memory_.loaded[side].Path == file;
        (own ? edited : replaced)[side] = true;
    }
    if ((replaced.original || replaced.modified) && !MayLoseEdits(LosingStep::Load, replaced))
        return std::nullopt;
    if (!edited.original && !edited.modified)
        return none;
    switch (UnsavedEdits(process_, window_).AskWhatToCompare(edited)) {
        case EditsOrFiles::Edits:
            return edited;
        case EditsOrFiles::Files:
            return none;
        case EditsOrFiles::Cancel:
            break;
    }
    return std::nullopt;
}

bool frmCompareFiles::SaveBeforeLosing(Side side) {
    if (!IsEnabled(ViewerCommand::Save)) {
        window_.ShowMessage(
            Translate("Nothing can be saved while a compare goes on. Abort it or wait for its end, "
                      "and try again."),
            Translate("Save"));
        return false;
    }
    return SaveEditor(TargetOf(side)).end == SaveEnd::Saved;
}

// ---- files on the disk ----

bool frmCompareFiles::TakesNews(const FileNotice& notice) {
    const bool unsaved = std::any_of(std::begin(kBothSides), std::end(kBothSides), [&](Side side) {
        return notice.sides[side] && DocumentOf(TargetOf(side)).editor.IsModified();
    });
    return window_.Choose(QuestionOf(process_, notice, unsaved)) == 0 &&
           notice.news == FileNews::Changed;
}

void frmCompareFiles::CheckFilesOnDisk() {
    // A question runs the window's events, and with them the timer that comes here.
    if (!IsEnabled(ViewerCommand::Refresh) || asking_ > 0)
        return;
    const Asking asking(*this);
    PerSide<std::string> again;
    for (const FileNotice& notice : file_watch_.Poll(process_.platform.clock->TickMilliseconds())) {
        if (window_.ShowFileNews(notice) || !TakesNews(notice))
            continue;
        for (const Side side : kBothSides) {
            if (notice.sides[side])
                again[side] = notice.path;
        }
    }
    if (!asking.GivenUp() && (!again.original.empty() || !again.modified.empty()))
        LoadAgain(again);
}

void frmCompareFiles::LoadAgain(const PerSide<std::string>& files) {
    Plan plan;
    plan.source = RunSource::LoadedAgain;
    plan.view = view_;
    plan.where = where_;
    plan.load_again = files;
    StartCompare(std::move(plan));
}

// In the pane itself, where the window can; else as boxes.
void frmCompareFiles::TellUnread(Side side) {
    if (Silent())
        return;
    const std::vector<std::string> reasons = telling_.TakeBoxes();
    if (window_.ShowUnreadable(side, reasons))
        return;
    for (const std::string& reason : reasons)
        LogMessage(telling_, reason, {}, true);
}

// Nothing was compared: the last result stays, and is stale by its text.
void frmCompareFiles::TakeLoadedAgain(Begun& begun, CompareOutcome& outcome) {
    const bool finished = outcome.end == RunEnd::Finished;
    if (outcome.end != RunEnd::Aborted)
        TakeLoad(begun, outcome);
    if (finished) {
        load_memory_ = std::move(outcome.memory);
        WatchLoaded(outcome);
        for (const Side side : kBothSides) {
            if (!outcome.loaded[side])
                continue;
            ShownDocument& shown = DocumentOf(TargetOf(side));
            shown.editor.SetRich(std::move(outcome.sources[side].text));
            shown.document.SetParagraphs(std::move(outcome.sources[side].paragraphs));
        }
    }
    window_.SetHourglass(false);
    Wait(false);
    window_.ShowStatus(StatusPanel::Time, "");
    window_.ShowStatus(StatusPanel::Main, Translate(finished ? "Diff View not fresh" : "Ready"));
    window_.SetAbortVisible(false);
    window_.EnableFilterButtons(true);
}

void frmCompareFiles::WatchLoaded(const CompareOutcome& outcome) {
    for (const Side side : kBothSides) {
        if (outcome.looked_at[side])
            file_watch_.Watch(side,
                              side == Side::Original ? outcome.options.sFileOriginal.Data()
                                                     : outcome.options.sFileModified.Data(),
                              outcome.stamps[side]);
    }
}

}  // namespace zorvane
