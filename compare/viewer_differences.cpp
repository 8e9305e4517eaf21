// The Compare Files viewer after a run: what is shown of the result, and its reports.
#include <algorithm>
#include <chrono>
#include <utility>

#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "compare/difference_list.h"
#include "options/marking_styles.h"
#include "reports/rich_report.h"

namespace zorvane {

using namespace std::chrono_literals;

// ---- views and filters ----

void frmCompareFiles::cmdChangeViewFormat_Click() {
    const TellingRun run(telling_);
    if (!process_.gbCommandLineRunning) {
        window_.ShowPleaseWait(true);
        process_.platform.clock->Sleep(10ms);
    }
    mbCompareBusy_ = true;
    state_.view = state_.view == View::AllInOne ? View::SideBySide : View::AllInOne;
    window_.ShowFilter(ViewFilter::All);
    window_.ShowView(state_.view);
    const bool fresh =
        state_.view == View::AllInOne ? state_.mbAIOViewFresh : state_.mbSBSViewFresh;
    if (!fresh) {
        mlStartTick_ = process_.platform.clock->TickMilliseconds();
        RunCompare(true);
    }
    window_.ShowPleaseWait(false);
    mbCompareBusy_ = false;
}

void frmCompareFiles::ShowFilter(ViewFilter filter) {
    window_.ShowFilter(filter);
    const auto show = [this](std::int32_t count, const char* words) {
        window_.ShowStatus(StatusPanel::Main, std::to_string(count) + ": " + Translate(words));
    };
    switch (filter) {
        case ViewFilter::All:
            UpdateStatusBar();
            return;
        case ViewFilter::Additions:
            show(mlAdditions(), "Number of additions");
            return;
        case ViewFilter::Changes:
            show(mlChanges(), "Number of changes");
            return;
        case ViewFilter::Deletions:
            show(mlDeletions(), "Number of deletions");
            return;
    }
}

// ---- differences ----

void frmCompareFiles::MoveTo(std::int32_t number) {
    if (mbCompareBusy_ || VXMacroDiff_.getDifferenceCount() == 0)
        return;
    mlCurrentDifference_ = number;
    ShowDifference(true);
}

void frmCompareFiles::SelectListItem(std::int32_t index) {
    if (mbCompareBusy_ || mbUpdatingList_ || index < 0)
        return;
    mlCurrentDifference_ = index + 1;
    ShowDifference(true);
}

void frmCompareFiles::SelectRecord(const DifferenceRecord& record) {
    const ParagraphNumber first_original{record.first_original};
    const ParagraphNumber last_original{record.last_original};
    const ParagraphNumber first_modified{record.first_modified};
    const ParagraphNumber last_modified{record.last_modified};
    editors_.rtbOriginal.document.SelectParagraphs(first_original, last_original, LastBreak::Keep);
    editors_.rtbModified.document.SelectParagraphs(first_modified, last_modified, LastBreak::Keep);
    const auto only_scroll_to = [this](clsRTBDocument& document) {
        if (!options_.bSelectTextInDiffViewer.Data())
            document.RichTB().Select({document.RichTB().Selection().first, 1});
    };
    if (state_.view == View::AllInOne) {
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        if (record.type == DifferenceType::Addition)
            merged.SelectAllTextBetween(first_original, first_original + 1, LastBreak::Keep);
        else
            merged.SelectParagraphs(first_original, last_original, LastBreak::Keep);
        only_scroll_to(merged);
        return;
    }
    clsRTBDocument& left = editors_.rtbOriginalDiffFinal.document;
    clsRTBDocument& right = editors_.rtbModifiedDiffFinal.document;
    left.SelectParagraphs(first_original, last_original, LastBreak::Keep);
    right.SelectParagraphs(first_modified, last_modified, LastBreak::Keep);
    only_scroll_to(left);
    only_scroll_to(right);
}

void frmCompareFiles::ShowDifference(bool bSyncList) {
    const std::int32_t count = VXMacroDiff_.getDifferenceCount();
    mlCurrentDifference_ = std::min(mlCurrentDifference_, count);
    if (mlCurrentDifference_ < 1) {
        if (count == 0) {
            window_.EnableNavigation({});
            return;
        }
        mlCurrentDifference_ = 1;
    }
    const bool was_busy = std::exchange(mbCompareBusy_, true);
    if (bSyncList) {
        mbUpdatingList_ = true;
        window_.SelectInDifferenceList(mlCurrentDifference_ - 1);
        mbUpdatingList_ = false;
    }
    if (const auto record = VXMacroDiff_.GetDifference(RecordIndex{mlCurrentDifference_ - 1}))
        SelectRecord(*record);
    window_.EnableNavigation(NavigationFor(mlCurrentDifference_, count));
    UpdateStatusBar();
    mlLastDifference_ = mlCurrentDifference_;
    mbCompareBusy_ = was_busy;
}

void frmCompareFiles::UpdateStatusBar() {
    const RecordIndex index{mlCurrentDifference_ - 1};
    if (const auto record = VXMacroDiff_.GetDifference(index))
        window_.ShowStatus(StatusPanel::Main, DifferenceStatus(monitor_, index, *record));
}

// ---- reports ----

ReportResult frmCompareFiles::CreateReport(std::string& file, ReportType type, std::int32_t style) {
    if (mbCompareBusy_)
        return TellReportResult(*this, ReportResult::Busy);
    return zorvane::CreateReport(*this, file, type, style);
}

ReportResult frmCompareFiles::CreateReportGUI(Launch launch, const std::string& file) {
    if (mbCompareBusy_)
        return TellReportResult(*this, ReportResult::Busy);
    return zorvane::CreateReportGUI(*this, launch, file);
}

Status frmCompareFiles::SaveDocumentReport(const std::string& file) {
    RichReportPieces pieces{
        settings_.bReportDOC_ShowAllInOneDifferenceViewer ? &editors_.rtbAIODiff.editor : nullptr,
        settings_.bReportDOC_Additions ? &editors_.rtbAdditions : nullptr,
        settings_.bReportDOC_ShowDeletions ? &editors_.rtbDeletions : nullptr,
        settings_.bReportDOC_ShowChanges ? &editors_.rtbChanges : nullptr, &Compared()};
    RichReportHead head;
    if (report_names_) {
        head = {CommandLineTitle(),
                *report_names_,
                StyleFor(options_, Mark::Addition),
                StyleFor(options_, Mark::Deletion),
                StyleFor(options_, Mark::ChangeOriginal),
                StyleFor(options_, Mark::ChangeModified)};
        pieces.head = &head;
    }
    return SaveRichReport(pieces, editors_.rtbScratch.editor, file);
}

void frmCompareFiles::BuildAllInOneView() {
    if (state_.view == View::AllInOne || state_.mbAIOViewFresh)
        return;
    cmdChangeViewFormat_Click();
    cmdChangeViewFormat_Click();
}

void frmCompareFiles::ShowReportStatus(const std::string& text) {
    window_.ShowStatus(StatusPanel::Detail, text);
    window_.PumpEvents();
}

void frmCompareFiles::ShowReportMessage(const std::string& text, const std::string& title) {
    window_.ShowMessage(text, title);
}

std::string frmCompareFiles::CommandLineTitle() const {
    return request_.sReportTitle;
}

}  // namespace zorvane
