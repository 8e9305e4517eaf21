// The row of a Compare Folders window in which its folders and file types are named.
#pragma once

#include <functional>

#include <QFrame>

#include "common/base/side.h"
#include "common/ui/command_table.h"
#include "common/ui/file_box.h"
#include "folders/compare_folders_viewer.h"

class QHBoxLayout;

namespace zorvane {

class FolderBoxes : public QFrame {
    Q_OBJECT
  public:
    FolderBoxes(CommandSet& commands, frmCompareDir& viewer, const UiText& text, QWidget* parent);

    /// Texts and recent lists as the viewer has them.
    void ShowTexts();
    void ShowWords();
    /// What stands in the boxes is what the viewer compares.
    void TakeTexts();
    /// The Modified side begins where its column in the grid does, so far as there is room.
    void AlignTo(int column_left);
    FileBox& Box(Side side) { return *boxes_[side]; }
    FileBox& Types() { return *types_; }

    /// Enter, a choice from a list, a drop.
    std::function<void(Side side, const QString& path)> folder_chosen;
    std::function<void(Side side, const QStringList& paths)> dropped;
    std::function<void()> run_wanted;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    FileBox* MakeBox(CommandSet& commands, const UiText& text, Side side);
    QHBoxLayout* MakeSide(CommandSet& commands, const UiText& text, Side side);
    void MakeTypes(const UiText& text, QHBoxLayout& line);
    void EndByEnter(Side side);
    void ShareRoom();

    frmCompareDir& viewer_;
    PerSide<FileBox*> boxes_{};
    FileBox* types_ = nullptr;
    QWidget* types_words_ = nullptr;
    QHBoxLayout* halves_ = nullptr;
    int column_left_ = 0;
};

}  // namespace zorvane
