// The Compare Files viewer after a run: what is shown of the result.
#include <algorithm>
#include <utility>

#include "common/process_state.h"
#include "compare/compare_files_viewer.h"

namespace zorvane {

// ---- views and filters ----

// The other view is built when it is first shown: from the comparison that is there, or, where a
// text or an option was changed since, by a whole run.
void frmCompareFiles::cmdChangeViewFormat_Click() {
    if (!IsEnabled(ViewerCommand::ChangeView))
        return;
    const View left = view_;
    view_ = view_ == View::AllInOne ? View::SideBySide : View::AllInOne;
    const bool was_updating = std::exchange(mbUpdatingFilter_, true);
    window_.ShowFilter(ViewFilter::All);
    window_.ShowView(view_);
    mbUpdatingFilter_ = was_updating;
    if (view_ == View::AllInOne ? mbAIOViewFresh_ : mbSBSViewFresh_)
        return;
    Plan plan;
    plan.source = IsStale() ? RunSource::Texts : RunSource::Compared;
    plan.view = view_;
    plan.left = left;
    plan.show_first = true;
    plan.where = where_;
    StartCompare(std::move(plan));
}

void frmCompareFiles::BeginWith(View view) {
    if (shown_ || run_ != nullptr)
        return;
    view_ = view;
    window_.ShowView(view_);
}

void frmCompareFiles::ShowFilter(ViewFilter filter) {
    if (mbUpdatingFilter_)
        return;  // the window's own echo
    if (!IsEnabled(ViewerCommand::Filter))
        return;
    mbUpdatingFilter_ = true;
    window_.ShowFilter(filter);
    mbUpdatingFilter_ = false;
    window_.FocusEditor(ArrangementOf(view_, filter).focus);
    if (filter == ViewFilter::All) {
        UpdateStatusBar();
        return;
    }
    const std::int32_t count = filter == ViewFilter::Additions ? mlAdditions()
                               : filter == ViewFilter::Changes ? mlChanges()
                                                               : mlDeletions();
    window_.ShowStatus(StatusPanel::Main,
                       std::to_string(count) + ": " + Translate(FilterWords(filter)));
}

// ---- differences ----

void frmCompareFiles::MoveTo(std::int32_t number) {
    if (!IsEnabled(ViewerCommand::Navigate) || VXMacroDiff_.getDifferenceCount() == 0)
        return;
    mlCurrentDifference_ = number;
    ShowDifference(true);
    window_.FocusEditor(ShownEditor::Original);
}

void frmCompareFiles::tbShowDifferenceUnknown() {
    if (!IsEnabled(ViewerCommand::Navigate) || asking_ > 0)
        return;
    const Asking asking(*this);
    const std::int32_t count = list_.Count();
    if (count == 0) {
        window_.ShowMessage(Translate("No differences to go to"), Translate("Error"));
        return;
    }
    const std::int32_t number = window_.AskDifferenceNumber(mlCurrentDifference_, count);
    if (number >= 1 && number <= count && !asking.GivenUp())
        SelectListItem(number - 1);
}

void frmCompareFiles::SelectListItem(std::int32_t index) {
    if (!IsEnabled(ViewerCommand::Navigate) || mbUpdatingList_ || index < 0)
        return;
    mlCurrentDifference_ = index + 1;
    ShowDifference(true);
}

void frmCompareFiles::SelectRecord(const DifferenceRecord& record) {
    const auto [first_original, last_original] = record.paragraphs.original;
    const auto [first_modified, last_modified] = record.paragraphs.modified;
    editors_.rtbOriginal.document.SelectParagraphs(first_original, last_original, LastBreak::Keep);
    editors_.rtbModified.document.SelectParagraphs(first_modified, last_modified, LastBreak::Keep);
    window_.RevealSelection(ShownEditor::Original);
    window_.RevealSelection(ShownEditor::Modified);
    const auto only_scroll_to = [this](clsRTBDocument& document) {
        if (!options_.bSelectTextInDiffViewer.Data())
            document.RichTB().Select({document.RichTB().Selection().first, 1});
    };
    if (view_ == View::AllInOne) {
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        if (record.type == DifferenceType::Addition)
            merged.SelectAllTextBetween(first_original, first_original + 1, LastBreak::Keep);
        else
            merged.SelectParagraphs(first_original, last_original, LastBreak::Keep);
        only_scroll_to(merged);
        window_.RevealSelection(ShownEditor::AllInOneDiff);
        return;
    }
    clsRTBDocument& left = editors_.rtbOriginalDiffFinal.document;
    clsRTBDocument& right = editors_.rtbModifiedDiffFinal.document;
    left.SelectParagraphs(first_original, last_original, LastBreak::Keep);
    right.SelectParagraphs(first_modified, last_modified, LastBreak::Keep);
    only_scroll_to(left);
    only_scroll_to(right);
    window_.RevealSelection(ShownEditor::OriginalDiffFinal);
    window_.RevealSelection(ShownEditor::ModifiedDiffFinal);
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
    if (bSyncList) {
        mbUpdatingList_ = true;
        window_.SelectInDifferenceList(mlCurrentDifference_ - 1);
        mbUpdatingList_ = false;
    }
    if (const auto record = VXMacroDiff_.GetDifference(RecordIndex{mlCurrentDifference_ - 1})) {
        const ViewerTools::Moving moving(tools_);
        SelectRecord(*record);
    }
    window_.EnableNavigation(NavigationFor(mlCurrentDifference_, count));
    UpdateStatusBar();
    mlLastDifference_ = mlCurrentDifference_;
}

void frmCompareFiles::UpdateStatusBar() {
    const std::string text = list_.Status(mlCurrentDifference_ - 1);
    if (!text.empty())
        window_.ShowStatus(StatusPanel::Main, text);
}

// The lines are made when the list is unfolded, so there is nothing to fill and to wait for.
void frmCompareFiles::UpdateNavigationalDropDownListBox() {
    const Comparison& shown = early_ ? *early_->comparison : Compared();
    list_.Show(shown, [this](std::string_view english) { return process_.Translate(english); });
    tools_.TakeRows(shown);
    const bool was_updating = std::exchange(mbUpdatingList_, true);
    window_.SetDifferenceList(list_);
    mbUpdatingList_ = was_updating;
}

}  // namespace zorvane
