// What a person does in a Find window.
#include <QClipboard>
#include <QGuiApplication>

#include "common/file_utilities.h"
#include "common/platform/native_path.h"
#include "find/ui/find_page.h"

namespace zorvane {

// What goes on is ended and begun anew: who presses Enter means what stands there now.
void FindPage::Find() {
    if (viewer_ == nullptr)
        return;
    caption_.clear();
    viewer_->UpdateEngineFromGUI();
    host_.caption_changed();
}

// ---- hits ----

std::int32_t FindPage::CurrentHit() const {
    return hit_grid_->currentIndex().isValid() ? hit_grid_->currentIndex().row() : -1;
}

std::vector<std::int32_t> FindPage::ChosenHits() const {
    std::vector<std::int32_t> hits;
    for (const QItemSelectionRange& range : hit_grid_->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            hits.push_back(row);
    std::sort(hits.begin(), hits.end());
    return hits;
}

void FindPage::ShowCurrent() {
    viewer_->ShowHit(CurrentHit() + 1);
}

void FindPage::GoToHit(bool forward) {
    const int count = hits_->rowCount();
    const std::int32_t now = CurrentHit();
    const std::int32_t next = now < 0 ? (forward ? 0 : count - 1) : now + (forward ? 1 : -1);
    if (next < 0 || next >= count) {
        status_->SetPanel(2, text_(forward ? "This is the last hit" : "This is the first hit"));
        return;
    }
    hit_grid_->setCurrentIndex(hits_->index(next, HitRows::File));
    ShowCurrent();
}

void FindPage::CompareChosen() {
    Compare(ChosenHits(), viewer_->HitAt(CurrentHit()));
}

void FindPage::CompareShown() {
    const ShownHit& shown = viewer_->Shown();
    Compare(shown.index < 0 ? std::vector<std::int32_t>() : std::vector{shown.index}, shown);
}

void FindPage::Compare(const std::vector<std::int32_t>& hits, const ShownHit& alone) {
    if (viewer_->CompareFilesOf(hits))
        return;
    if (hits.size() == 2 || !viewer_->Marked().Hits().empty())
        status_->SetPanel(2, text_("Both hits are in the same file"));
    else
        viewer_->CompareWithAnother(alone);
}

void FindPage::OpenCurrent() {
    viewer_->OpenFileOf(viewer_->HitAt(CurrentHit()));
}

void FindPage::MarkCurrent() {
    viewer_->ToggleMark(CurrentHit());
    host_.commands_changed();
}

void FindPage::Copy() {
    if (pane_->View().hasFocus()) {
        pane_->View().Copy();
        return;
    }
    QStringList rows;
    for (const std::int32_t hit : ChosenHits()) {
        const ShownHit shown = viewer_->HitAt(hit);
        rows.append(QStringList{ToQt(shown.file), QString::number(shown.line),
                                QString::number(shown.column), ToQt(shown.item)}
                        .join(u'\t'));
    }
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(rows.join(u'\n'));
}

void FindPage::SelectAll() {
    if (pane_->View().hasFocus())
        pane_->View().SelectAll();
    else
        hit_grid_->selectAll();
}

// ---- entries and options ----

void FindPage::OpenSigns() {
    picker_->OpenBelow(boxes_->SearchFor());
}

void FindPage::ToggleDocument() {
    viewer_->SetShowDocument(!pane_->ShowsDocument());
    pane_->ShowFace();
}

// A file stands for the folder it lies in.
void FindPage::Drop(const QStringList& paths) {
    if (paths.size() != 1) {
        status_->SetPanel(2, text_("Drop one folder."));
        return;
    }
    const std::string dropped = FromQt(paths.front());
    FindEntries entries = boxes_->Entries();
    entries.cbDirectory = bDirectoryExists(dropped) ? dropped : std::string(ParentOf(dropped));
    boxes_->SetEntries(entries);
    FocusEntry(FindError::SearchString);
}

void FindPage::DropAt(QPointF, const QStringList& paths) {
    Drop(paths);
}

void FindPage::TakeFont(const std::string& family, double points) {
    viewer_->Settings().FontName = family;
    viewer_->Settings().FontSize = points;
    ShowFonts();
}

void FindPage::SetZoom(double zoom) {
    pane_->SetZoom(zoom);
}

}  // namespace zorvane
