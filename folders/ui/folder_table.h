// The grid of a Compare Folders window as a table: rows are made from records when they are
// painted.
#pragma once

#include <functional>

#include <QAbstractTableModel>

#include "common/ui/ui_text.h"
#include "folders/compare_folders_viewer.h"
#include "folders/ui/folder_order.h"

namespace zorvane {

class FolderTable : public QAbstractTableModel {
    Q_OBJECT
  public:
    /// Borrowed.
    FolderTable(frmCompareDir& viewer, UiText text, QObject* parent);

    // ---- what the viewer tells ----
    void Clear();
    void TakeRows();
    void RecordsChanged(std::int32_t first, std::int32_t count);

    void Show(FolderFilter filter, const FolderSort& sort);
    const FolderOrder& Order() const { return order_; }

    /// A row as it is painted.
    struct Shown {
        FolderRow cells;
        bool folder = false;
        bool in_both = false;
        QString below;  ///< where it lies: of a folder its path, of a file the folder's
    };
    const Shown& Row(int row) const;
    /// -1 for none.
    std::int32_t RecordAt(int row) const;
    /// What a cell shows, without the room for pictures.
    QString CellText(int row, FolderColumn column) const;
    /// A whole row in words, for a screen reader.
    QString Spoken(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString Verdict(const FolderRecord& record) const;

    frmCompareDir& viewer_;
    UiText text_;
    FolderOrder order_;
    int shown_ = 0;  ///< rows that the views know
    // The cells of a row are asked for one after the other.
    mutable int made_row_ = -1;
    mutable Shown made_;
};

}  // namespace zorvane
