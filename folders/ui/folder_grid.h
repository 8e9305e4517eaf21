// The grid of a Compare Folders window: columns that drag, one delegate, and the cells that
// commands work on.
#pragma once

#include <functional>
#include <vector>

#include <QStyledItemDelegate>

#include "common/ui/grid.h"
#include "folders/ui/folder_table.h"

namespace zorvane {

class FolderCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

class FolderGrid : public Grid {
    Q_OBJECT
  public:
    FolderGrid(frmCompareDir& viewer, FolderTable& table, const UiText& text, QWidget* parent);

    /// Widths and font as the settings have them.
    void ShowSettings();
    /// What commands work on: the current cell, by its record; -1 without one.
    GridCell CurrentCell() const;
    /// The chosen cells that a file may stand in, by their records.
    std::vector<GridCell> ChosenCells() const;
    void ShowRecord(std::int32_t record, FolderColumn column);
    /// To the next row that differs, or the one before; false: there is none.
    bool GoToDifferent(bool forward);

  private:
    void SortBy(int section);
    // Back to where it was, after everything moved.
    void KeepPlace(const std::function<void()>& change);

    frmCompareDir& viewer_;
    FolderTable& table_;
};

}  // namespace zorvane
