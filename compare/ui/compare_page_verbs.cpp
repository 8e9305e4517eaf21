// What a Compare Files viewer tells its window and asks it.
#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStackedWidget>

#include "common/ui/file_dialogs.h"
#include "common/ui/progress_card.h"
#include "common/ui/question.h"
#include "compare/ui/compare_files_page.h"

namespace zorvane {

// ---- questions ----

bool CompareFilesPage::AskYesNo(const std::string& text, const std::string& title) {
    return Ask({.title = ToQt(title),
                .text = ToQt(text),
                .choices = {text_("No"), text_("Yes")},
                .usual = 1},
               this) == 1;
}

void CompareFilesPage::ShowMessage(const std::string& text, const std::string& title) {
    // A file that is not there is told of in its pane, when the run has ended.
    if (viewer_ != nullptr && viewer_->Busy() &&
        text.starts_with(FromQt(text_("File does not exist")))) {
        missing_.push_back(text);
        return;
    }
    Tell(ToQt(title), ToQt(text), text_("OK"), this);
}

std::string CompareFilesPage::BrowseFor(Side side) {
    return FromQt(QFileDialog::getOpenFileName(
        this, text_(side == Side::Original ? "Open Original" : "Open Modified"),
        FolderToBrowse(side)));
}

// Where the side's document lies, or else the other's, or what was opened last.
QString CompareFilesPage::FolderToBrowse(Side side) const {
    std::vector<std::string> near{viewer_->ChosenFile(side), viewer_->ChosenFile(OtherSide(side))};
    for (const Side each : {side, OtherSide(side)}) {
        const std::vector<std::string>& recent = viewer_->RecentFiles(each).Items();
        near.insert(near.end(), recent.rbegin(), recent.rend());
    }
    for (const std::string& path : near) {
        const QFileInfo file(ToQt(path));
        if (file.isAbsolute() && file.absoluteDir().exists())
            return file.absolutePath();
    }
    return DocumentsFolder();
}

// Pages of a preview are made inside a paint, which must not begin again.
void CompareFilesPage::PumpEvents() {
    if (paper_ == nullptr)
        QCoreApplication::processEvents();
}

void CompareFilesPage::SetHourglass(bool on) {
    hourglasses_ += on ? 1 : -1;
    if (rooms_ != nullptr)
        result_->setCursor(hourglasses_ > 0 ? Qt::BusyCursor : Qt::ArrowCursor);
}

bool CompareFilesPage::ShowNotice(const std::string& text, const std::string& title) {
    return Notify({.title = ToQt(title),
                   .text = ToQt(text),
                   .choices = {text_("Continue")},
                   .check = text_("Never show this message again")},
                  this);
}

std::int32_t CompareFilesPage::AskDifferenceNumber(std::int32_t current, std::int32_t count) {
    GoToDialog dialog(text_, current, count, this);
    theme_.Dress(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.Number() : -1;
}

// The viewer has asked about edits; nothing else is open.
bool CompareFilesPage::ConfirmClose() {
    return true;
}

// The viewer goes, and with it the documents that the views read.
void CompareFilesPage::CloseDialogs() {
    if (viewer_ == nullptr)
        return;
    WriteSettings();
    passwords_.TakeBack(*viewer_);
    ReleaseViews();
}

// ---- runs ----

void CompareFilesPage::ShowStatus(StatusPanel panel, const std::string& text) {
    if (rooms_ == nullptr)
        return;
    // Before the first result nothing is old.
    if (panel == StatusPanel::Main && viewer_->ShownComparison() == nullptr && !viewer_->Busy() &&
        ToQt(text) == text_("Diff View not fresh"))
        return;
    status_->SetPanel(static_cast<int>(panel), ToQt(text));
}

void CompareFilesPage::SetAbortVisible(bool visible) {
    if (rooms_ == nullptr)
        return;
    // A button that is greyed for the run would lose it to whatever comes next.
    const auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (visible && bar_->isAncestorOf(button) && FocusedView()->isVisible())
        FocusedView()->setFocus();
    bar_->SetAbortVisible(visible);
    host_.commands_changed();
}

// Commands ask the viewer; what is typed goes to the views alone.
void CompareFilesPage::SetEditable(bool editable) {
    if (rooms_ == nullptr)
        return;
    for (const Side side : kBothSides)
        editors_->View(side).SetReadOnly(!editable);
}

void CompareFilesPage::ShowPleaseWait(bool shown) {
    if (rooms_ == nullptr)
        return;
    waiting_ = shown;
    if (shown) {
        const bool words = last_focus_ != nullptr && last_focus_->isVisible();
        const bool other = !isAncestorOf(QApplication::focusWidget()) ||
                           qobject_cast<QPushButton*>(QApplication::focusWidget()) != nullptr;
        focus_after_ = !other ? QApplication::focusWidget() : words ? last_focus_ : nullptr;
        started_ = true;
        missing_.clear();
        ShowStatus(StatusPanel::Detail, FromQt(text_("Ready")));  // no longer of the run before
        ForgetNews();
        ShowRoom();
        progress_->Begin(text_("Comparing the documents"));
        SayRun(true);
    } else {
        progress_->End();
        SayRun(false);
        // A load may have changed options, where its user agreed.
        compare_options_->Binding().Show();
        if (editors_->View(Side::Original).Wrap() != viewer_->Settings().mnuWordWrap)
            ApplyLook();
        ShowStatus(StatusPanel::Main, "");  // no longer how far it is
        ShowFiles();
        ShowRoom();
        RestoreFocus();
    }
    host_.commands_changed();
}

// A button that was greyed for the run has lost it; nothing else has.
void CompareFilesPage::RestoreFocus() {
    if (!isActiveWindow() || !isVisible())
        return;
    QWidget* wanted = focus_after_;
    if (wanted == nullptr || !wanted->isVisible() || !wanted->isEnabled())
        wanted = FocusedView();
    if (wanted->isVisible())
        wanted->setFocus();
}

void CompareFilesPage::Tick() {
    if (viewer_ == nullptr)
        return;
    if (viewer_->Busy() && waiting_) {
        progress_->SetProgress(viewer_->RunPercent(),
                               status_->Panel(static_cast<int>(StatusPanel::Main)));
        SayProgress();
    }
    viewer_->CheckFilesOnDisk();
    if (viewer_ == nullptr)
        return;
    const bool stale =
        viewer_->ShownComparison() != nullptr && !viewer_->Busy() && viewer_->IsStale();
    if (stale == told_stale_)
        return;
    told_stale_ = stale;
    bar_->SetStale(stale);
    if (stale)
        ShowStatus(StatusPanel::Main, FromQt(text_("Diff View not fresh")));
    host_.commands_changed();
}

void CompareFilesPage::FlashFrame() {
    QApplication::alert(window());
}

void CompareFilesPage::Activate() {
    ReadSettings();
    host_.bring_to_front(*this);
}

void CompareFilesPage::SelectInDifferenceList(std::int32_t index) {
    if (rooms_ == nullptr)
        return;
    bar_->List().SetCurrent(index);
    bar_->SetPlace(index + 1, viewer_->Differences().Count());
    SayDifference(index);
    // The paragraphs that are selected now would be read whole on top of that.
    ForViews([](RichTextView& view) { view.SetSelectionsTold(false); });
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (rooms_ != nullptr)
                ForViews([](RichTextView& view) { view.SetSelectionsTold(true); });
        },
        Qt::QueuedConnection);
}

void CompareFilesPage::EnableNavigation(const NavigationButtons&) {
    host_.commands_changed();
}

void CompareFilesPage::EnableFilterButtons(bool enabled) {
    if (rooms_ != nullptr)
        head_->SetFiltersEnabled(enabled);
}

void CompareFilesPage::EnableFilter(ViewFilter filter, bool enabled) {
    if (rooms_ != nullptr)
        head_->SetFilterEnabled(filter, enabled);
}

void CompareFilesPage::ShowView(zorvane::View view) {
    if (rooms_ == nullptr)
        return;
    const bool one = view == zorvane::View::AllInOne;
    if (one != pane_->AllInOne())
        pane_->SetAllInOne(one);
    head_->SetAllInOne(one);
    bar_->SetViewCaption(text_(ViewButtonCaption(view)));
    HookScrolls();
    host_.commands_changed();
}

void CompareFilesPage::ShowFilter(ViewFilter filter) {
    if (rooms_ == nullptr)
        return;
    filter_ = filter;
    head_->SetFilter(filter);
    QWidget* shown = verdict_->Shown() == nullptr ? static_cast<QWidget*>(pane_) : verdict_;
    if (filter == ViewFilter::Additions)
        shown = summaries_[0];
    else if (filter == ViewFilter::Deletions)
        shown = summaries_[1];
    else if (filter == ViewFilter::Changes)
        shown = summaries_[2];
    result_->setCurrentWidget(shown);
    host_.commands_changed();
}

// ---- views ----

RichTextView* CompareFilesPage::ViewOf(ShownEditor editor) const {
    switch (editor) {
        case ShownEditor::Original:
            return &editors_->View(Side::Original);
        case ShownEditor::Modified:
            return &editors_->View(Side::Modified);
        case ShownEditor::OriginalDiffFinal:
            return &pane_->View(Side::Original);
        case ShownEditor::ModifiedDiffFinal:
            return &pane_->View(Side::Modified);
        case ShownEditor::AllInOneDiff:
            return &pane_->MergedView();
        case ShownEditor::Additions:
            return summaries_[0];
        case ShownEditor::Deletions:
            return summaries_[1];
        case ShownEditor::Changes:
            break;
    }
    return summaries_[2];
}

void CompareFilesPage::FocusEditor(ShownEditor editor) {
    if (rooms_ == nullptr)
        return;
    RichTextView* view = ViewOf(editor);
    if (view->isVisible())
        view->setFocus();
}

// Paragraphs of an edited text are found by the rows, which moved with the edits.
void CompareFilesPage::SelectByRows(Side side) {
    const ParagraphRows& rows = viewer_->Tools().EditorRows();
    const RowSpan span = rows.RowsOfRecord(viewer_->mlCurrentDifference() - 1);
    if (span.count == 0)
        return;
    const ParagraphNumber first = rows.Row(span.first).paragraphs[side].first;
    const ParagraphNumber end = rows.Row(span.end() - 1).paragraphs[side].end();
    RichTextView& view = editors_->View(side);
    const BlockIndex& index = view.Page().Index();
    const CharPos begin = index.OfParagraph(first).first;
    const bool to_end = end.value > index.ParagraphCount();
    const CharPos stop = to_end ? CharPos{view.Document().Length()} : index.OfParagraph(end).first;
    view.Document().Select(TextRange::Between(begin, std::max(begin, stop)));
}

void CompareFilesPage::ShowPlaceInEditor(Side side, ParagraphNumber paragraph) {
    RichTextView& view = editors_->View(side);
    const Block block = view.Page().Index().OfParagraph(paragraph);
    view.ShowRow(view.Page().Rows().RowOfBlock(block.number));
}

void CompareFilesPage::RevealSelection(ShownEditor editor) {
    if (rooms_ == nullptr)
        return;
    if (editor == ShownEditor::Original || editor == ShownEditor::Modified) {
        const Side side = editor == ShownEditor::Original ? Side::Original : Side::Modified;
        if (viewer_->IsStale())
            SelectByRows(side);
        walked_to_[side] = editors_->View(side).Document().Selection();
        RichTextView& view = editors_->View(side);
        ShowPlaceInEditor(side,
                          view.Page().Index().OfChar(view.Document().Selection().first).paragraph);
        if (side == Side::Modified && !viewer_->Busy())
            editors_->LevelSelections();
        return;
    }
    // The result is shown without the selection of the marked texts; its difference is the place.
    pane_->SetCurrent(viewer_->mlCurrentDifference() - 1);
}

void CompareFilesPage::CheckScrollLock(bool, bool) {
    host_.commands_changed();
}

void CompareFilesPage::CheckAlignParagraphs(bool) {
    host_.commands_changed();
}

void CompareFilesPage::ShowFindReplace(frmCompareFilesFindReplace& find) {
    if (find_ == nullptr) {
        find_ = std::make_unique<FindReplaceDialog>(find, text_, this);
        theme_.Dress(*find_);
        find_->found = [this] { MarkHits(); };
    }
}

}  // namespace zorvane
