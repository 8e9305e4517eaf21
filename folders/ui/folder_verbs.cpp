// What a Compare Folders viewer tells its window and asks it.
#include <QApplication>
#include <QLineEdit>

#include "common/ui/progress_card.h"
#include "common/ui/question.h"
#include "folders/ui/compare_folders_page.h"

namespace zorvane {
namespace {

constexpr int kCounts = 1;
constexpr int kMain = 2;
constexpr int kTime = 3;

}  // namespace

void CompareFoldersPage::ShowStatus(FoldersPanel panel, const std::string& text) {
    if (contents_ == nullptr)
        return;
    switch (panel) {
        case FoldersPanel::Counts:
            status_->SetPanel(kCounts, ToQt(text));
            break;
        case FoldersPanel::Main:
            status_->SetPanel(kMain, ToQt(text));
            break;
        case FoldersPanel::Time:
            status_->SetPanel(kTime, ToQt(text));
            break;
    }
}

// Rows that come as they are found need no card over them.
void CompareFoldersPage::RunChanged() {
    if (contents_ == nullptr)
        return;
    const bool running = viewer_->Busy();
    bar_->SetRunning(viewer_->CanAbort());
    if (running && !was_running_) {
        fresh_ = false;
        announcer_->Begin(text_("Comparing Folders"));
        if (viewer_->cbDontStreamResults)
            progress_->Begin(text_("Comparing Folders"));
    }
    if (!running && was_running_) {
        progress_->End();
        announcer_->End(status_->Panel(kMain) + QStringLiteral(". ") + status_->Panel(kCounts));
    }
    was_running_ = running;
    ShowEmpty();
    host_.caption_changed();
    host_.commands_changed();
}

void CompareFoldersPage::WritingChanged() {
    if (contents_ == nullptr)
        return;
    bar_->SetRunning(viewer_->CanAbort());
    host_.commands_changed();
}

void CompareFoldersPage::ShowEmpty() {
    const bool shown = viewer_->CanReport() && !viewer_->Busy() && !table_->MakesOrder() &&
                       table_->rowCount() == 0;
    const FolderFilter filter = table_->Order().Filter();
    empty_->setText(filter == FolderFilter::All
                        ? text_("Nothing to compare here. File types: %1")
                              .arg(ToQt(viewer_->Options().sExtension.Data()))
                        : text_("No files of this kind"));
    empty_->setVisible(shown);
}

void CompareFoldersPage::RowsCleared() {
    if (contents_ == nullptr)
        return;
    table_->Clear();
    grid_->ShowSettings();
    empty_->hide();
}

void CompareFoldersPage::RowsAdded() {
    if (contents_ != nullptr)
        table_->TakeRows();
}

void CompareFoldersPage::RowsChanged(std::int32_t first, std::int32_t count) {
    if (contents_ != nullptr)
        table_->RecordsChanged(first, count);
}

void CompareFoldersPage::ErrorsChanged() {
    if (contents_ != nullptr)
        errors_->ShowErrors(viewer_->ErrorMessages());
}

void CompareFoldersPage::OptionsChanged() {
    if (contents_ == nullptr)
        return;
    boxes_->ShowTexts();
    compare_options_->ShowValues();
    report_options_->ShowValues();
    legend_->setVisible(viewer_->Settings().ShowLegend);
    host_.commands_changed();
}

void CompareFoldersPage::RefreshCaption() {
    if (contents_ != nullptr)
        host_.caption_changed();
}

void CompareFoldersPage::SetHourglass(bool on) {
    if (contents_ != nullptr)
        grid_->setCursor(on ? Qt::BusyCursor : Qt::ArrowCursor);
}

void CompareFoldersPage::FocusFolder(Side side) {
    boxes_->Box(side).setFocus();
    boxes_->Box(side).lineEdit()->selectAll();
}

void CompareFoldersPage::FlashFrame() {
    if (window()->isMinimized())
        QApplication::alert(window());
}

void CompareFoldersPage::Activate() {
    host_.bring_to_front(*this);
}

// ---- questions ----

void CompareFoldersPage::ShowMessage(const std::string& text, const std::string& title) {
    Tell(ToQt(title), ToQt(text), text_("OK"), this);
}

// All that is asked here replaces or deletes files.
bool CompareFoldersPage::AskYesNo(const std::string& text, const std::string& title) {
    return Ask({.title = ToQt(title),
                .text = ToQt(text),
                .choices = {text_("No"), text_("Yes")},
                .usual = 1,
                .escape = 0,
                .deletes = true},
               this) == 1;
}

bool CompareFoldersPage::ShowNotice(const std::string& text, const std::string& title) {
    return Notify({.title = ToQt(title),
                   .text = ToQt(text),
                   .choices = {text_("Continue")},
                   .check = text_("Never show this message again")},
                  this);
}

std::string CompareFoldersPage::BrowseForFolder(const std::string& start) {
    return AskForFolder(start);
}

std::string CompareFoldersPage::PickReportFile(const std::string& title, const std::string& start) {
    return AskForReport(title, start, text_("Comma delimited"));
}

void CompareFoldersPage::CompareFiles(const PerSide<std::string>& files, bool new_window) {
    host_.compare_files(files, new_window);
}

// ---- the end ----

void CompareFoldersPage::CloseDialogs() {
    ReleaseParts();
}

}  // namespace zorvane
