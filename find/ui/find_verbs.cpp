// What a Find Text In Files viewer tells its window and asks it.
#include <cmath>

#include <QLineEdit>
#include <QVBoxLayout>

#include "common/ui/file_dialogs.h"
#include "common/ui/measures.h"
#include "common/ui/question.h"
#include "common/ui/style_sheet.h"
#include "find/ui/find_page.h"

namespace zorvane {
namespace {

constexpr int kHits = 1;
constexpr int kMain = 2;
constexpr int kCounts = 3;
constexpr int kTime = 4;
constexpr double kHidden = 1.0;
constexpr int kBesideFrom = 1400;

}  // namespace

// ---- entries ----

FindEntries FindPage::Entries() {
    return contents_ == nullptr ? FindEntries() : boxes_->Entries();
}

void FindPage::SetEntries(const FindEntries& entries) {
    if (contents_ != nullptr)
        boxes_->SetEntries(entries);
}

void FindPage::SetHistories(const FindHistories& histories) {
    if (contents_ != nullptr)
        boxes_->SetHistories(histories);
}

void FindPage::FocusEntry(FindError wrong) {
    FileBox& box = wrong == FindError::Folder     ? boxes_->Folder()
                   : wrong == FindError::FileType ? boxes_->Types()
                                                  : boxes_->SearchFor();
    box.setFocus(Qt::OtherFocusReason);
    box.lineEdit()->end(false);
}

// ---- a search ----

void FindPage::ShowStatus(FindPanel panel, const std::string& text) {
    if (contents_ == nullptr)
        return;
    switch (panel) {
        case FindPanel::Hits:
            status_->SetPanel(kHits, ToQt(text));
            break;
        case FindPanel::Main:
            status_->SetPanel(kMain, ToQt(text));
            break;
        case FindPanel::Time:
            status_->SetPanel(kTime, ToQt(text));
            break;
    }
}

void FindPage::EnableAbort(bool enabled) {
    if (contents_ == nullptr)
        return;
    boxes_->SetRunning(viewer_->CanAbort());
    if (enabled) {
        searching_ = true;
        ShowNothingFound();
        ShowProtected();
        announcer_->Begin(text_("Search In Process..."));
    } else if (std::exchange(searching_, false)) {
        ShowCounts();
        ShowNothingFound();
        ShowProtected();
        announcer_->End(text_("%1 hits").arg(viewer_->Engine().HitCount()));
    }
    host_.commands_changed();
}

void FindPage::WritingChanged() {
    if (contents_ == nullptr)
        return;
    boxes_->SetRunning(viewer_->CanAbort());
    host_.commands_changed();
}

void FindPage::ShowCounts() {
    const FindCounts counts = viewer_->Engine().Counts();
    QString words;
    if (counts.files > 0)
        words = text_("Files: %1").arg(counts.files);
    if (counts.binary > 0)
        words += QStringLiteral("  ·  ") + text_("Binary files passed over: %1").arg(counts.binary);
    status_->SetPanel(kCounts, words);
}

void FindPage::SetHourglass(bool on) {
    if (contents_ != nullptr)
        hit_grid_->setCursor(on ? Qt::BusyCursor : Qt::ArrowCursor);
}

// Errors may come by the thousand between two ticks.
void FindPage::GridChanged(FindGrid grid) {
    if (contents_ == nullptr)
        return;
    switch (grid) {
        case FindGrid::Files:
            hits_->TakeRows();
            SetColumns();
            if (!hit_grid_->currentIndex().isValid() && hits_->rowCount() > 0)
                host_.commands_changed();
            break;
        case FindGrid::ErrorMessages:
            if (viewer_->fgErrorMessages().empty())
                errors_->TakeRows();
            else
                errors_late_ = true;
            break;
        case FindGrid::FileWithHit:
            pane_->ShowLines();
            break;
    }
}

// All rows of a grid are of one height; lines wrap by themselves.
void FindPage::SizeRows(FindGrid) {}

// A way out where a switch that is off may be why nothing was found.
void FindPage::ShowNothingFound() {
    delete std::exchange(nothing_, nullptr);
    const FindCounts counts = viewer_->Engine().Counts();
    if (!viewer_->Completed() || viewer_->Engine().HitCount() > 0)
        return;
    const FindEntries entries = boxes_->Entries();
    nothing_ = new QWidget(hit_grid_);
    auto* rows = new QVBoxLayout(nothing_);
    QString told = text_("Nothing found in %1 files.").arg(counts.files);
    if (counts.failed > 0)
        told += u' ' + text_("Not read: %1").arg(counts.failed);
    QLabel* words = MakeLabel(told, look::kHint, nothing_);
    words->setAlignment(Qt::AlignCenter);
    rows->addWidget(words);
    auto* ways = new QHBoxLayout;
    ways->addStretch(1);
    const auto offer = [&](const char* caption, std::size_t number) {
        auto* button = new Button(text_(caption), ButtonLook::Plain, QString(), nothing_);
        connect(button, &QPushButton::clicked, this, [this, number] {
            boxes_->Switch(number).toggle();
            // The button goes with what it stands on.
            QMetaObject::invokeMethod(
                this, [this] { Find(); }, Qt::QueuedConnection);
        });
        ways->addWidget(button);
    };
    constexpr std::size_t kCase = 0;
    constexpr std::size_t kSubfolders = 3;
    constexpr std::size_t kOffice = 4;
    if (!entries.cbLookInSubfolders)
        offer("Look In Subfolders", kSubfolders);
    if (entries.cbCaseSensitive)
        offer("Match Any Case", kCase);
    if (!entries.cbSupportOfficeDocs)
        offer("Support Office Docs", kOffice);
    ways->addStretch(1);
    rows->addLayout(ways);
    nothing_->show();
    PlaceNothingFound();
}

// The way in, once it is known how many there are.
void FindPage::ShowProtected() {
    passwords_->Show(searching_ ? 0 : viewer_->ProtectedDocuments(), viewer_->GavePassword());
}

void FindPage::PlaceNothingFound() {
    if (nothing_ == nullptr)
        return;
    const QRect room = hit_grid_->viewport()->geometry();
    const QSize size = nothing_->sizeHint().boundedTo(room.size());
    nothing_->setGeometry(QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                                              {room.width(), size.height()}, room));
}

// ---- hits ----

void FindPage::SetCaption(const std::string& caption) {
    caption_ = ToQt(caption);
    host_.caption_changed();
}

void FindPage::ShownHitChanged() {
    if (contents_ != nullptr)
        pane_->ShowHead();
}

void FindPage::ShowInContextGrid(const std::string& text) {
    if (contents_ != nullptr)
        pane_->ShowMessage(ToQt(text));
}

// ---- room ----

void FindPage::SettingsChanged() {
    if (contents_ == nullptr)
        return;
    ShowFonts();
    search_options_->ShowValues();
    report_options_->ShowValues();
}

// From this width on hits and lines stand beside each other.
void FindPage::Form_Resize() {
    if (contents_ == nullptr)
        return;
    constexpr int kWhole = 100'000;
    const auto shares = [](double ratio) {
        const auto first = static_cast<int>(std::lround(kWhole * ratio));
        return QList<int>{first, kWhole - first};
    };
    placing_ = true;
    const bool errors = viewer_->mdDividerPrimaryRatio != kHidden;
    error_pane_->setVisible(errors);
    secondary_->setOrientation(width() >= kBesideFrom ? Qt::Horizontal : Qt::Vertical);
    if (errors)
        primary_->setSizes(shares(viewer_->mdDividerPrimaryRatio));
    secondary_->setSizes(shares(viewer_->mdDividerSecondaryRatio));
    placing_ = false;
    PlaceNothingFound();
}

void FindPage::TakeDividers() {
    if (placing_)
        return;
    const auto take = [](const Splitter& splitter, double& ratio) {
        const QList<int> sizes = splitter.sizes();
        if (sizes[0] > 0 && sizes[1] > 0)
            ratio = static_cast<double>(sizes[0]) / (sizes[0] + sizes[1]);
    };
    if (!error_pane_->isHidden())
        take(*primary_, viewer_->mdDividerPrimaryRatio);
    take(*secondary_, viewer_->mdDividerSecondaryRatio);
    PlaceNothingFound();
}

void FindPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (viewer_ != nullptr)
        Form_Resize();
}

// ---- questions ----

void FindPage::ShowMessage(const std::string& text) {
    Tell(text_("Find Text In Files"), ToQt(text), text_("OK"), this);
}

std::string FindPage::PickFile(const std::string& title, const std::string& start) {
    FileRequest request{.title = ToQt(title),
                        .filter = text_("All files") + QStringLiteral("|*.*"),
                        .start = ToQt(start)};
    return FromQt(zorvane::PickFile(request, text_, this));
}

std::string FindPage::PickReportFile(const std::string& title, const std::string& start) {
    return AskForReport(title, start, text_("Tab delimited"));
}

std::string FindPage::BrowseForFolder(const std::string& start) {
    return AskForFolder(start);
}

void FindPage::CompareFiles(const PerSide<std::string>& files) {
    host_.compare_files(files);
}

// ---- the end ----

void FindPage::Activate() {
    host_.bring_to_front(*this);
}

void FindPage::CloseDialogs() {
    ReleaseParts();
}

}  // namespace zorvane
