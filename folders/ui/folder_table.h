// The grid of a Compare Folders window as a table: rows are made from records when they are
// painted.
#pragma once

#include <chrono>
#include <functional>

#include <QAbstractTableModel>

#include "common/base/background_value.h"
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

    // ---- the order of rows, which is made beside the window where it takes long ----
    void Show(FolderFilter filter, const FolderSort& sort);
    /// What the table shows, or will as soon as its order is made.
    FolderFilter Filter() const { return filter_; }
    const FolderSort& Sort() const { return sort_; }
    bool MakesOrder() const { return making_.Busy(); }
    /// An order that has been made meanwhile is shown; waits for it at most so long.
    void TakeOrder(std::chrono::milliseconds patience);
    /// What is shown.
    const FolderOrder& Order() const { return order_; }
    /// Told around a change after which rows stand elsewhere.
    std::function<void(const std::function<void()>& change)> around_change;
    /// Counts, rows or their order are others.
    std::function<void()> order_changed;

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
    void MakeOrder();

    frmCompareDir& viewer_;
    UiText text_;
    FolderOrder order_;
    FolderFilter filter_ = FolderFilter::All;
    FolderSort sort_;
    int shown_ = 0;  ///< rows that the views know
    // The cells of a row are asked for one after the other.
    mutable int made_row_ = -1;
    mutable Shown made_;
    BackgroundValue<std::optional<FolderOrder>> making_;  ///< the last member: reads the scan
};

}  // namespace zorvane
