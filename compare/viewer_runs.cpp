// The Compare Files viewer's runs: how one begins, what the window sees of it, and the one place
// where its result becomes the viewer's.
#include <utility>

#include "common/process_state.h"
#include "common/string_utilities.h"
#include "compare/compare_files_viewer.h"

namespace zorvane {

// ---- how a run begins ----

void frmCompareFiles::Refresh() {
    RefreshFrom(KeptDifference::No, options_.bReloadOnRefresh.Data(), true);
}

void frmCompareFiles::RefreshDisplay(bool bReloadFiles, bool bGoToFirstDifference) {
    RefreshFrom(KeptDifference::Yes, bReloadFiles, bGoToFirstDifference);
}

void frmCompareFiles::RefreshFrom(KeptDifference kept, bool bReloadFiles,
                                  bool bGoToFirstDifference) {
    if (!IsEnabled(ViewerCommand::Refresh) || asking_ > 0)
        return;
    const Asking asking(*this);
    if (!Silent() && !bReloadFiles && editors_.rtbOriginal.editor.Length() == 0 &&
        editors_.rtbModified.editor.Length() == 0)
        window_.ShowMessage(
            Translate("Original and Modified editors are empty. Enter text into the editors by "
                      "typing or pasting in content. If you instead want to load selected "
                      "files for comparison click the 'Compare Options' tab and change the "
                      "'Refresh Options'."),
            Translate("Compare"));
    Plan plan;
    if (bReloadFiles) {
        const std::optional<PerSide<bool>> keep = EditsToKeep();
        if (!keep)
            return;
        plan.keep = *keep;
    }
    if (asking.GivenUp())
        return;
    plan.source = bReloadFiles && !(plan.keep.original && plan.keep.modified)
                      ? RunSource::ReloadedFiles
                      : RunSource::Texts;
    plan.show_first = bGoToFirstDifference;
    plan.kept = kept;
    plan.view = view_;
    plan.where = where_;
    StartCompare(std::move(plan));
}

void frmCompareFiles::RunCompare(bool bGoToFirstDifference) {
    Plan plan;
    plan.show_first = bGoToFirstDifference;
    plan.view = view_;
    plan.where = where_;
    StartCompare(std::move(plan));
}

void frmCompareFiles::RefreshDisplayCommandLine(std::int32_t format, BuildViews views,
                                                bool& failed) {
    failed = !IsEnabled(ViewerCommand::Refresh);
    if (failed)
        return;
    view_ = format == 1 ? View::AllInOne : View::SideBySide;
    views_ = views;
    window_.ShowView(view_);
    Plan plan;
    plan.source = RunSource::Files;
    plan.view = view_;
    plan.views = views_;
    plan.show_first = !request_.bExitWhenDone;
    plan.where = where_;
    last_run_ = RunEnd::Finished;
    StartCompare(std::move(plan));
    failed = last_run_ == RunEnd::Failed;
}

// What was compared is at hand as a value; what was edited since is copied.
SharedText frmCompareFiles::TextOf(Side side) {
    const bool unchanged = shown_ && shown_->texts[side] == now_.texts[side];
    if (unchanged && compared_texts_[side] != nullptr)
        return compared_texts_[side];
    const ShownDocument& entry =
        side == Side::Original ? editors_.rtbOriginal : editors_.rtbModified;
    return std::make_shared<const RichText>(entry.editor.Rich());
}

CompareInput frmCompareFiles::InputFor(const Plan& plan) {
    CompareInput input(process_, telling_);
    input.options = options_;
    input.settings = settings_;
    input.TextFileExtensions = TextFileExtensions_;
    input.memory = load_memory_;
    input.source = plan.source;
    input.keep = plan.keep;
    if (plan.source == RunSource::LoadedAgain) {
        for (const Side side : kBothSides) {
            input.load_again[side] = !plan.load_again[side].empty();
            if (input.load_again[side])
                (side == Side::Original ? input.options.sFileOriginal : input.options.sFileModified)
                    .SetData(plan.load_again[side]);
        }
    } else {
        input.texts = {TextOf(Side::Original), TextOf(Side::Modified)};
    }
    input.compared = plan.source == RunSource::Compared ? &Compared() : nullptr;
    input.view = plan.view;
    input.views = plan.views;
    input.find_moves = find_moves_;
    input.count_numbering = count_numbering_;
    input.presented = report_names_.has_value();
    input.default_format = ViewerFormat();
    input.service = conversions_;
    return input;
}

void frmCompareFiles::Wait(bool shown) {
    if (!Silent())
        window_.ShowPleaseWait(shown);
}

void frmCompareFiles::StartCompare(Plan plan) {
    if (!IsEnabled(ViewerCommand::Refresh))
        return;
    const auto input = std::make_shared<CompareInput>(InputFor(plan));
    const auto outcome = std::make_shared<CompareOutcome>();
    const auto begun = std::make_shared<Begun>();
    begun->revisions = now_;
    editors_.rtbOriginal.follower.BeginRun();
    editors_.rtbModified.follower.BeginRun();
    begun->kept_difference = plan.kept == KeptDifference::Yes ? mlCurrentDifference_ : -1;
    begun->options = input->options;
    begun->settings = settings_;
    Wait(true);
    window_.EnableFilterButtons(false);
    window_.SetHourglass(true);
    window_.SetAbortVisible(true);
    window_.ShowStatus(StatusPanel::Time, "---");
    const bool reloads =
        plan.source == RunSource::ReloadedFiles || plan.source == RunSource::LoadedAgain;
    const RunStep first = reloads                           ? RunStep::ReloadFiles
                          : plan.source == RunSource::Files ? RunStep::LoadFiles
                                                            : RunStep::PrepareCompare;
    const RunOn where = plan.where;
    begun->plan = std::move(plan);
    StartRun(where, first,
             {[input, outcome, where](ViewerRun& run) {
                  input->questions = &run.Questions();
                  if (where == RunOn::Worker) {
                      input->show_early = [&run](EarlyOutcome early) {
                          run.PublishEarly(std::move(early));
                      };
                      input->in_sight = [&run] { return run.Control().InSight(); };
                  }
                  *outcome = RunCompareJob(std::move(*input), run.Control());
              },
              [this, begun, outcome] { HandOver(*begun, *outcome); }});
}

void frmCompareFiles::StartRun(RunOn where, RunStep first, ViewerRun::Steps steps) {
    const auto run = std::make_shared<ViewerRun>(where, telling_, window_);
    run_ = run;
    run_->first = first;
    run_->Control().Progress(first, 0);
    run_->Control().Look(in_sight_);
    window_.SetEditable(IsEnabled(ViewerCommand::Edit));
    ShowProgress();
    if (where == RunOn::ThisThread)
        run_->Control().CallWhileRunning(
            [this] {
                ShowProgress();
                window_.PumpEvents();
            },
            pump_interval_);
    run->Start(std::move(steps));
    if (where == RunOn::ThisThread)
        EndRun();
}

// ---- what the window sees of it ----

void frmCompareFiles::ShowProgress() {
    RunTexts texts = run_->Control().Texts(process_);
    if (texts.main != run_->shown.main)
        window_.ShowStatus(StatusPanel::Main, texts.main);
    if (texts.detail != run_->shown.detail)
        window_.ShowStatus(StatusPanel::Detail, texts.detail);
    run_->shown = std::move(texts);
}

bool frmCompareFiles::Poll() {
    if (run_ == nullptr)
        return false;
    // A question may end with the closing of the viewer, which lets go of the run.
    const std::shared_ptr<ViewerRun> polled = run_;
    polled->AnswerQuestions();
    if (run_ != polled)
        return true;
    ShowProgress();
    if (polled->Ended()) {
        EndRun();
        return true;
    }
    std::optional<EarlyOutcome> early = polled->TakeEarly();
    if (early && !polled->Control().Stopped())
        ShowEarly(std::move(*early));
    return false;
}

void frmCompareFiles::EndRun() {
    if (run_ == nullptr)
        return;
    ShowProgress();  // what the last pass put there stays
    const std::function<void()> hand_over = run_->Finish();
    // The messages of the run are told when it goes, behind its result.
    const std::shared_ptr<ViewerRun> ended = std::move(run_);
    if (closing_)
        return;
    window_.SetEditable(true);
    hand_over();
}

// ---- its result ----

void frmCompareFiles::HandOver(Begun& begun, CompareOutcome& outcome) {
    if (begun.plan.source == RunSource::LoadedAgain) {
        TakeLoadedAgain(begun, outcome);
        return;
    }
    last_run_ = outcome.end;
    if (!outcome.detail.empty())
        window_.ShowStatus(StatusPanel::Detail, outcome.detail);
    if (outcome.end != RunEnd::Aborted)
        TakeLoad(begun, outcome);
    if (outcome.end != RunEnd::Finished) {
        PutBackEarly();
        ShowAgain(begun.plan.left);
    }
    // Who shows it lets go when the list is told again.
    const std::optional<EarlyOutcome> shown_till_then = std::exchange(early_, std::nullopt);
    if (outcome.end == RunEnd::Finished) {
        TakeTexts(begun, outcome);
        TakeView(outcome);
    }
    window_.SetHourglass(false);
    Wait(false);
    if (outcome.end == RunEnd::Finished)
        ShowResult(begun, outcome);
    else
        window_.ShowStatus(StatusPanel::Main,
                           Translate(outcome.end == RunEnd::Aborted ? "Compare Aborted" : "Ready"));
    window_.SetAbortVisible(false);
    window_.EnableFilterButtons(true);
    if (outcome.end == RunEnd::Failed && outcome.unread)
        TellUnread(*outcome.unread);
    if (begun.plan.then)
        begun.plan.then(outcome.end);
}

// What a load changed of options and settings, unless the user changed the same meanwhile.
void frmCompareFiles::TakeLoad(const Begun& begun, CompareOutcome& outcome) {
    const auto take = [](auto& now, const auto& before, const auto& after) {
        if (now.Data() == before.Data() && after.Data() != before.Data())
            now.SetData(after.Data());
    };
    take(options_.sFileOriginal, begun.options.sFileOriginal, outcome.options.sFileOriginal);
    take(options_.sFileModified, begun.options.sFileModified, outcome.options.sFileModified);
    take(options_.bRemoveFormatting, begun.options.bRemoveFormatting,
         outcome.options.bRemoveFormatting);
    take(options_.bExcelQuickTextExtraction, begun.options.bExcelQuickTextExtraction,
         outcome.options.bExcelQuickTextExtraction);
    take(options_.lLoadDelay, begun.options.lLoadDelay, outcome.options.lLoadDelay);
    for (bool CompareFilesSettings::*flag :
         {&CompareFilesSettings::bWarnedAboutPPTAlready,
          &CompareFilesSettings::bWarnedAboutHTMLAlready,
          &CompareFilesSettings::bWarnedAboutXLSWordWrapAlready,
          &CompareFilesSettings::bWarnedAboutLargeWordDocAlready,
          &CompareFilesSettings::bWarnedAboutSwitchingPDFConversionMethods,
          &CompareFilesSettings::mnuWordWrap}) {
        if (outcome.settings.*flag != begun.settings.*flag)
            settings_.*flag = outcome.settings.*flag;
    }
    for (const Side side : kBothSides) {
        if (outcome.tried[side])
            recent_files_[side].AddUniqueItemToCollection(
                side == Side::Original ? outcome.options.sFileOriginal.Data()
                                       : outcome.options.sFileModified.Data());
    }
    if (outcome.load_failed)
        load_memory_.bForceReload = outcome.memory.bForceReload;
}

void frmCompareFiles::TakeText(Side side, Begun& begun, CompareOutcome& outcome) {
    ShownDocument& entry = side == Side::Original ? editors_.rtbOriginal : editors_.rtbModified;
    const bool edited = begun.revisions.texts[side] != now_.texts[side];
    const bool loaded = outcome.loaded[side];
    if (loaded && outcome.views_built)
        entry.editor.SetRich(std::move(outcome.sources[side].text));
    if (!loaded && outcome.viewer_font) {
        const ProgrammeEdit not_the_users(entry.editor);
        entry.document.ChangeFontAll(settings_.sFontName, settings_.dFontSize);
    }
    if (loaded || !edited)
        begun.revisions.texts[side] = now_.texts[side];  // what was just put there is no edit
    if (!outcome.views_built)
        return;
    if (loaded)
        entry.document.SetParagraphs(std::move(outcome.sources[side].paragraphs));
    else
        entry.follower.TakeParagraphs(std::move(outcome.sources[side].paragraphs));
}

// An edit or a change of options since the beginning of the run leaves the result stale.
void frmCompareFiles::TakeTexts(Begun& begun, CompareOutcome& outcome) {
    load_memory_ = std::move(outcome.memory);
    WatchLoaded(outcome);
    for (const Side side : kBothSides)
        TakeText(side, begun, outcome);
    shown_ = begun.revisions;
    if (!outcome.comparison)
        return;
    compared_texts_ = outcome.texts;
    VXMacroDiff_.Show(std::move(*outcome.comparison));
    VXMacroDiff_.putDocumentLooks(std::move(outcome.looks));
    mbSBSViewFresh_ = false;
    mbAIOViewFresh_ = false;
}

void frmCompareFiles::TakeView(CompareOutcome& outcome) {
    counters_ = outcome.counters;
    if (!outcome.views_built)
        return;
    const auto put = [](ShownDocument& entry, ResultText& marked) {
        entry.editor.SetRich(std::move(marked.text));
        entry.document.SetParagraphs(std::move(marked.paragraphs));
    };
    if (outcome.view == View::AllInOne) {
        put(editors_.rtbAIODiff, outcome.all_in_one);
        mbAIOViewFresh_ = true;
    } else {
        put(editors_.rtbOriginalDiffFinal, outcome.side_by_side.original);
        put(editors_.rtbModifiedDiffFinal, outcome.side_by_side.modified);
        mbSBSViewFresh_ = true;
    }
    editors_.rtbDeletions.SetRich(std::move(outcome.deletions));
    editors_.rtbAdditions.SetRich(std::move(outcome.additions));
    editors_.rtbChanges.SetRich(std::move(outcome.changes));
    UpdateNavigationalDropDownListBox();
}

void frmCompareFiles::ShowResult(const Begun& begun, const CompareOutcome& outcome) {
    if (VXMacroDiff_.getDifferenceCount() == 0)
        window_.ShowStatus(StatusPanel::Main,
                           Translate("Compare Completed. No differences detected."));
    window_.ShowStatus(StatusPanel::Time,
                       sTimeSpan((outcome.elapsed + 500) / 1000, TimeSpanStyle::Colons));
    if (begun.plan.show_first) {
        mlCurrentDifference_ = begun.kept_difference;
        ShowDifference(true);
    }
    window_.EnableFilter(ViewFilter::Deletions, mlDeletions() > 0);
    window_.EnableFilter(ViewFilter::Additions, mlAdditions() > 0);
    window_.EnableFilter(ViewFilter::Changes, mlChanges() > 0);
    mbUpdatingFilter_ = true;
    window_.ShowFilter(ViewFilter::All);
    mbUpdatingFilter_ = false;
    if (IsStale())
        window_.ShowStatus(StatusPanel::Main, Translate("Diff View not fresh"));
    if (options_.bBeepWhenDone.Data())
        process_.platform.sound->Beep();
    window_.FlashFrame();
}

}  // namespace zorvane
