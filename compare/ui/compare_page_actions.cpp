// What a person does in a Compare Files window.
#include <QApplication>
#include <QKeyEvent>
#include <QStackedWidget>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/platform/file_stamp.h"
#include "common/ui/qt_text.h"
#include "compare/ui/compare_files_page.h"
#include "compare/view/copy_over.h"

namespace zorvane {
namespace {

constexpr int kLeastZoom = 25;
constexpr int kMostZoom = 500;

bool HasText(frmCompareFiles& viewer, Side side) {
    ViewerEditors& texts = viewer.Editors();
    return (side == Side::Original ? texts.rtbOriginal : texts.rtbModified).editor.Length() > 0;
}

}  // namespace

// ---- files ----

QString CompareFilesPage::Caption() const {
    if (viewer_ == nullptr)
        return {};
    const QString original = FileNameOf(ToQt(viewer_->ChosenFile(Side::Original)));
    const QString modified = FileNameOf(ToQt(viewer_->ChosenFile(Side::Modified)));
    if (original.isEmpty() && modified.isEmpty())
        return text_("Compare Files");
    if (original.isEmpty() || modified.isEmpty())
        return original + modified;
    return original + QStringLiteral(" vs. ") + modified;
}

bool CompareFilesPage::ShowsStart() const {
    return rooms_ != nullptr && rooms_->currentWidget() == start_;
}

bool CompareFilesPage::NamesFiles() const {
    return !viewer_->ChosenFile(Side::Original).empty() ||
           !viewer_->ChosenFile(Side::Modified).empty();
}

void CompareFilesPage::ShowRoom() {
    const bool empty = viewer_->ShownComparison() == nullptr && !viewer_->Busy() &&
                       !HasText(*viewer_, Side::Original) && !HasText(*viewer_, Side::Modified);
    rooms_->setCurrentIndex(empty && !started_ ? 0 : 1);
}

void CompareFilesPage::ShowFiles() {
    for (const Side side : kBothSides) {
        QStringList recent;
        const std::vector<std::string>& items = viewer_->RecentFiles(side).Items();
        for (auto item = items.rbegin(); item != items.rend(); ++item)
            recent.append(ToQt(*item));
        files_->Box(side).SetRecent(recent);
        files_->Box(side).SetPath(ToQt(viewer_->ChosenFile(side)));
        start_->SetRecent(side, recent);
        start_->SetChosen(side, ToQt(viewer_->ChosenFile(side)));
    }
    NameSides();
    host_.caption_changed();
    host_.commands_changed();
}

void CompareFilesPage::TakeFile(Side side, const QString& path) {
    TakePath(side, FromQt(path));
}

void CompareFilesPage::TakePath(Side side, const std::string& path) {
    viewer_->SelectFile(side, path);
    ShowFiles();
}

void CompareFilesPage::ChooseFile(Side side) {
    const std::string path = BrowseFor(side);
    if (!path.empty())
        TakeFile(side, ToQt(path));
}

void CompareFilesPage::DropFiles(Side side, const QStringList& paths) {
    if (paths.size() == 1) {
        TakeFile(side, paths.front());
        return;
    }
    if (paths.size() != 2) {
        ShowStatus(StatusPanel::Main, FromQt(text_("Drop one or two documents.")));
        return;
    }
    const PerSide<std::string> files{FromQt(paths[0]), FromQt(paths[1])};
    if (bDirectoryExists(files.original) && bDirectoryExists(files.modified)) {
        host_.compare_folders(files);
        return;
    }
    const auto changed = [](const std::string& file) {
        const std::optional<FileStamp> stamp = FileStampOf(file);
        return stamp ? stamp->modified : 0;
    };
    const bool in_order = changed(files.original) <= changed(files.modified);
    TakeFile(Side::Original, paths[in_order ? 0 : 1]);
    TakeFile(Side::Modified, paths[in_order ? 1 : 0]);
    Compare();
    ShowStatus(StatusPanel::Main, FromQt(text_("The older file is Original. F9 swaps.")));
}

void CompareFilesPage::GiveText(Side side, const QString& words) {
    ViewerEditors& texts = viewer_->Editors();
    RichDocument& document =
        (side == Side::Original ? texts.rtbOriginal : texts.rtbModified).editor;
    document.Replace({CharPos{0}, document.Length()}, std::u16string_view(FromQt16(words)));
    started_ = true;
    ShowRoom();
    editors_->View(side).setFocus();
}

void CompareFilesPage::SwapSides() {
    viewer_->SwapSides();
    ShowFiles();
}

// ---- the compare ----

std::string_view CompareFilesPage::WhyNotCompare() const {
    if (!viewer_->IsEnabled(ViewerCommand::Refresh))
        return "A run goes on";
    const bool files = !viewer_->ChosenFile(Side::Original).empty() &&
                       !viewer_->ChosenFile(Side::Modified).empty();
    const bool texts = HasText(*viewer_, Side::Original) && HasText(*viewer_, Side::Modified);
    return files || texts ? std::string_view() : "Choose both documents first";
}

// Typed or pasted texts have no file to be loaded from.
void CompareFilesPage::Compare() {
    if (!WhyNotCompare().empty())
        return;
    const bool files = !viewer_->ChosenFile(Side::Original).empty() &&
                       !viewer_->ChosenFile(Side::Modified).empty();
    if (files)
        viewer_->Refresh();
    else
        viewer_->RunCompare(true);
}

void CompareFilesPage::OptionChanged() {
    viewer_->OptionsChanged();
    ShowIgnored();
    ApplyColors();
    host_.commands_changed();
}

// The files stay what they are.
void CompareFilesPage::RestoreDefaults() {
    clsCompareFileOptions& options = viewer_->Options();
    clsCompareFileOptions fresh = DefaultCompareFileOptions();
    fresh.sSectionName = options.sSectionName;
    fresh.sFileOriginal.SetData(options.sFileOriginal.Data());
    fresh.sFileModified.SetData(options.sFileModified.Data());
    options = fresh;
    compare_options_->Binding().Show();
    OptionChanged();
}

// At once, without loading again.
void CompareFilesPage::CountKind(clsVarBoolean& ignored) {
    ignored.SetData(!ignored.Data());
    compare_options_->Binding().Show();
    OptionChanged();
    CompareAgain();
}

void CompareFilesPage::CountNumbering() {
    bool& numbering = viewer_->Settings().view.CountNumbering;
    numbering = !numbering;
    viewer_->CountNumbering(numbering);
    CompareAgain();
}

void CompareFilesPage::CountAllKinds() {
    viewer_->Options().bIgnoreCase.SetData(false);
    viewer_->Options().bIgnoreWhitespace.SetData(false);
    viewer_->Settings().view.CountNumbering = true;
    viewer_->CountNumbering(true);
    compare_options_->Binding().Show();
    OptionChanged();
    CompareAgain();
}

// What the editors hold, without loading.
void CompareFilesPage::CompareAgain() {
    ShowIgnored();
    host_.commands_changed();
    if (viewer_->ShownComparison() != nullptr)
        viewer_->RunCompare(false);
}

void CompareFilesPage::CountMoves() {
    bool& moves = viewer_->Settings().view.CountMoves;
    moves = !moves;
    viewer_->LookForMoves(moves);
    CompareAgain();
}

void CompareFilesPage::CountFormatting() {
    bool& formats = viewer_->Settings().view.CountFormatting;
    formats = !formats;
    ShowCounts();
}

void CompareFilesPage::CopyOver(std::int32_t record, Side from) {
    if (!viewer_->IsEnabled(ViewerCommand::Edit) || viewer_->Busy())
        return;
    ViewerEditors& texts = viewer_->Editors();
    const CopyTexts both{{&texts.rtbOriginal.editor, &texts.rtbModified.editor},
                         {&editors_->View(Side::Original).Page().Index(),
                          &editors_->View(Side::Modified).Page().Index()}};
    if (!zorvane::CopyOver(viewer_->Tools().EditorRows(), both, record, from)) {
        ShowStatus(StatusPanel::Main, FromQt(text_("This difference was edited. Compare again.")));
        return;
    }
    Tick();
    if (record + 1 < viewer_->Differences().Count())
        viewer_->SelectListItem(record + 1);
    ShowStatus(StatusPanel::Main, FromQt(text_("Diff View not fresh")));
}

void CompareFilesPage::CompareSelected() {
    const auto selected = [this](Side side) {
        const RichDocument& document = editors_->View(side).Document();
        return document.Rich(document.Selection());
    };
    host_.compare_texts(selected(Side::Original), selected(Side::Modified));
}

void CompareFilesPage::SetLayout(PaneLayout layout) {
    started_ = true;
    viewer_->Settings().view.Layout = layout;
    editors_wanted_ = layout == PaneLayout::EditorsAndResult;  // by hand, whatever the room
    // Where the room is short the documents would leave the result a line or two.
    constexpr int kRoomForBoth = 640;
    constexpr double kFairShare = 0.42;
    if (editors_wanted_ && !editors_->isVisible() && splitter_->height() < kRoomForBoth)
        editors_share_ = kFairShare;
    ShowRoom();
    ApplyLook();
    ShareHeight();
}

void CompareFilesPage::SetZoom(int percent) {
    viewer_->Settings().view.ZoomPercent = std::clamp(percent, kLeastZoom, kMostZoom);
    ApplyLook();
}

void CompareFilesPage::SetFolded(bool folded) {
    viewer_->Settings().view.FoldUnchanged = folded;
    folded_ = folded;
    pane_->SetFolded(folded);
    host_.commands_changed();
}

void CompareFilesPage::SetAligned(bool aligned) {
    viewer_->Settings().view.KeepParagraphsOpposite = aligned;
    ApplyLook();
}

void CompareFilesPage::SetWrap(bool wrap) {
    viewer_->Settings().mnuWordWrap = wrap;
    ApplyLook();
}

void CompareFilesPage::SetPanel(bool open) {
    viewer_->Settings().view.PanelOpen = open;
    room_->SetPanelShown(open);
    host_.commands_changed();
}

void CompareFilesPage::SetOptionsUnfolded(bool unfolded) {
    viewer_->Settings().view.OptionsUnfolded = unfolded;
    compare_options_->Binding().Show();
    view_options_->Binding().Show();
    options_->SetUnfolded(unfolded);
    ApplyPlan();
    host_.commands_changed();
}

// ---- the focus ----

void CompareFilesPage::FocusList() {
    bar_->List().setFocus(Qt::ShortcutFocusReason);
    bar_->List().showPopup();
}

void CompareFilesPage::MoveFocus(bool forward) {
    // In the order of the eye; each part is entered where it is used first.
    std::vector<QWidget*> panes;
    for (QWidget* pane :
         {static_cast<QWidget*>(&bar_->List()), static_cast<QWidget*>(&options_->Tabs()),
          static_cast<QWidget*>(&files_->Box(Side::Original)),
          static_cast<QWidget*>(&editors_->View(Side::Original)),
          static_cast<QWidget*>(&editors_->View(Side::Modified)), head_->FirstStop(),
          static_cast<QWidget*>(&pane_->View(Side::Original)),
          static_cast<QWidget*>(&pane_->View(Side::Modified)),
          static_cast<QWidget*>(&pane_->MergedView()), panel_->FirstStop()}) {
        if (pane->isVisible() && pane->isEnabled())
            panes.push_back(pane);
    }
    if (panes.empty())
        return;
    const auto count = static_cast<std::ptrdiff_t>(panes.size());
    const auto found = std::find_if(panes.begin(), panes.end(), [](const QWidget* pane) {
        return pane->hasFocus() || pane->isAncestorOf(QApplication::focusWidget());
    });
    const auto at = found == panes.end() ? -1 : found - panes.begin();
    const auto next = (at + (forward ? 1 : count - 1) + count) % count;
    panes[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
}

// Esc, the first that applies: close what finds, stop a run, fold the options, back to the text.
void CompareFilesPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || viewer_ == nullptr) {
        QWidget::keyPressEvent(event);
    } else if (find_ != nullptr && find_->isVisible()) {
        find_->reject();
    } else if (viewer_->Busy()) {
        viewer_->Abort();
    } else if (options_->IsUnfolded()) {
        SetOptionsUnfolded(false);
    } else {
        FocusedView()->setFocus();
    }
}

}  // namespace zorvane
