// The Compare Files viewer and files: saving and printing of its editors, and what happens to the
// compared files on the disk.
#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "compare/viewer_printing.h"
#include "compare/viewer_saving.h"

namespace zorvane {

namespace {

EditorTarget TargetOf(Side side) {
    return side == Side::Original ? EditorTarget::Original : EditorTarget::Modified;
}

}  // namespace

SaveOutcome frmCompareFiles::SaveActiveEditorAs() {
    return SaveEditor(mlActiveEditor_);
}

SaveOutcome frmCompareFiles::SaveEditor(EditorTarget target) {
    if (mbCompareBusy_)
        return {};
    window_.SetHourglass(true);
    SaveOutcome outcome = SaveEditorAs(
        {process_, telling_, window_, settings_, TextFileExtensions_, loader_.Page(),
         [this](EditorTarget shown) -> const Editor& { return DocumentOf(shown).RichTB(); },
         [this](std::string& file) { return CreateReport(file, ReportType::Document, 0); },
         [this](Side side, const std::string& file) { SelectSavedFile(side, file); }},
        target);
    window_.SetHourglass(false);
    return outcome;
}

void frmCompareFiles::SelectSavedFile(Side side, const std::string& file) {
    recent_files_[side].AddUniqueItemToCollection(file);
    (side == Side::Original ? options_.sFileOriginal : options_.sFileModified).SetData(file);
    edited_[side] = false;
    file_watch_.Watch(side, file, file_watch_.StampOf(file));
}

PrintEnd frmCompareFiles::PrintActiveEditor() {
    struct Watcher : CompareWatcher {
        explicit Watcher(frmCompareFiles& own) : viewer(own) {}
        bool KeepGoing(double part) override {
            viewer.window_.ShowStatus(StatusPanel::Detail, viewer.Translate("Printing") + ": " +
                                                               PercentText(part * 100) + "%");
            return viewer.monitor_.KeepGoing();
        }
        frmCompareFiles& viewer;
    };
    if (mbCompareBusy_)
        return PrintEnd::Cancelled;
    mbAbortRequested_ = false;
    mbCompareBusy_ = true;
    Watcher watcher(*this);
    const PrintEnd end =
        PrintEditor({process_, telling_, window_, settings_, &watcher},
                    DocumentOf(mlActiveEditor_).RichTB(), TitleOf(mlActiveEditor_));
    mbCompareBusy_ = false;
    window_.ShowStatus(StatusPanel::Detail,
                       Translate(end == PrintEnd::Stopped ? kPrintStopped : "Ready"));
    return end;
}

// A side's file says more than what its editor is called.
std::string frmCompareFiles::TitleOf(EditorTarget target) const {
    const std::string& original = options_.sFileOriginal.Data();
    const std::string& modified = options_.sFileModified.Data();
    if (target == EditorTarget::Original && !original.empty())
        return original;
    if (target == EditorTarget::Modified && !modified.empty())
        return modified;
    return EditorTitle(target);
}

bool frmCompareFiles::MayLoseEdits(LosingStep step) {
    std::vector<EditedText> texts;
    for (const Side side : kBothSides)
        texts.push_back(
            {TitleOf(TargetOf(side)), [this, side] { return edited_[side]; },
             [this, side] { return SaveEditor(TargetOf(side)).end == SaveEnd::Saved; }});
    return UnsavedEdits(process_, window_).MayGoOn(step, texts);
}

void frmCompareFiles::CheckFilesOnDisk() {
    // A question runs the window's events, and with them the timer that comes here.
    if (mbCompareBusy_ || asking_about_files_)
        return;
    asking_about_files_ = true;
    for (const FileNotice& notice : file_watch_.Poll(process_.platform.clock->TickMilliseconds())) {
        const bool unsaved = (notice.sides.original && edited_.original) ||
                             (notice.sides.modified && edited_.modified);
        const bool load = window_.Choose(QuestionOf(process_, notice, unsaved)) == 0;
        for (const Side side : kBothSides) {
            if (load && notice.news == FileNews::Changed && notice.sides[side])
                LoadAgain(side, notice.path);
        }
    }
    asking_about_files_ = false;
}

void frmCompareFiles::LoadAgain(Side side, std::string file) {
    const std::optional<FileStamp> stamp = file_watch_.StampOf(file);
    if (!loader_.LoadSide(side, file, Reload::Forced))
        return;
    MarkStale(side);
    edited_[side] = false;
    file_watch_.Watch(side, file, stamp);
    window_.ShowStatus(StatusPanel::Main, Translate("Diff View not fresh"));
}

}  // namespace zorvane
