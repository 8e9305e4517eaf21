#include "folders/ui/folder_table.h"

namespace zorvane {
namespace {

// So long an order may keep a window waiting; that of most folders is there sooner.
constexpr std::chrono::milliseconds kPatience{15};

}  // namespace

FolderTable::FolderTable(frmCompareDir& viewer, UiText text, QObject* parent)
    : QAbstractTableModel(parent),
      viewer_(viewer),
      text_(std::move(text)),
      order_(viewer.VestrelX1().Folders()) {}

void FolderTable::Clear() {
    making_.Drop();
    beginResetModel();
    made_row_ = -1;
    order_.Clear(viewer_.Options().bIgnoreDateDifferences.Data());
    shown_ = 0;
    endResetModel();
    order_changed();
}

// How many rows new records make is known only behind them. Where rows are sorted, or an order is
// in work, they come with the next order.
void FolderTable::TakeRows() {
    if (making_.Busy())
        return;
    if (order_.Sort().on) {
        MakeOrder();
        return;
    }
    made_row_ = -1;
    const int before = shown_;
    order_.Take(viewer_.RowCount());
    if (order_.Count() > before) {
        beginInsertRows({}, before, order_.Count() - 1);
        shown_ = order_.Count();
        endInsertRows();
    }
    order_changed();
}

void FolderTable::RecordsChanged(std::int32_t first, std::int32_t count) {
    // To look for so many rows costs more than to paint those in sight.
    constexpr std::int32_t kFewRecords = 8;
    made_row_ = -1;
    if (shown_ == 0)
        return;
    if (count > kFewRecords) {
        Q_EMIT dataChanged(index(0, 0), index(shown_ - 1, columnCount() - 1));
        return;
    }
    for (std::int32_t record = first; record < first + count; ++record) {
        const std::int32_t row = order_.RowOf(record);
        if (row >= 0)
            Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    }
}

void FolderTable::Show(FolderFilter filter, const FolderSort& sort) {
    filter_ = filter;
    sort_ = sort;
    MakeOrder();
}

void FolderTable::MakeOrder() {
    FolderOrder order = order_;
    order.Take(viewer_.RowCount());
    making_.Begin([order = std::move(order), filter = filter_,
                   sort = sort_](const auto& stop) mutable -> std::optional<FolderOrder> {
        if (!order.Show(filter, sort, stop))
            return std::nullopt;
        return std::move(order);
    });
    TakeOrder(kPatience);
}

void FolderTable::TakeOrder(std::chrono::milliseconds patience) {
    std::optional<std::optional<FolderOrder>> made = making_.Take(patience);
    if (!made || !*made)
        return;
    around_change([&] {
        beginResetModel();
        made_row_ = -1;
        order_ = std::move(**made);
        shown_ = order_.Count();
        endResetModel();
    });
    if (order_.Known() < viewer_.RowCount())
        TakeRows();
    else
        order_changed();
}

std::int32_t FolderTable::RecordAt(int row) const {
    return row < 0 || row >= shown_ ? -1 : order_.RecordAt(row);
}

const FolderTable::Shown& FolderTable::Row(int row) const {
    if (row == made_row_)
        return made_;
    const std::int32_t record = RecordAt(row);
    made_ = {};
    made_row_ = row;
    if (record < 0)
        return made_;
    const FolderScan& scan = viewer_.VestrelX1().Folders();
    const ScannedEntry& entry = scan.Entry(static_cast<std::size_t>(record));
    made_.cells = viewer_.Rows().Row(record);
    made_.folder = entry.IsFolder();
    made_.in_both = entry.InBoth();
    const QString path = ToQt(scan.PathBelow(static_cast<std::size_t>(record)));
    made_.below = path.left(std::max(path.lastIndexOf(u'/'), qsizetype{0}));
    return made_;
}

// A folder by its path below the two that are compared; its record has the whole one.
QString FolderTable::CellText(int row, FolderColumn column) const {
    const Shown& shown = Row(row);
    const FolderCell& cell = shown.cells[column];
    if (cell.ink == CellInk::Moved)
        return ToQt(cell.text);
    if (shown.folder && column <= FolderColumn::Modified)
        return cell.picture == CellPicture::None ? QString() : shown.below;
    if (cell.picture == CellPicture::File)
        return ToQt(cell.text.substr(kFileBlanks.size()));
    return ToQt(cell.text).trimmed();
}

QString FolderTable::Verdict(const FolderRecord& record) const {
    if (!record.InBoth())
        return text_(record.OnlyInMaster != 0 ? "only in Original" : "only in Modified");
    if (record.ContentDifferent == 0 && record.SizeDifferent == 0 && record.DateDifferent == 0)
        return text_("the same");
    QStringList parts{text_("changed")};
    if (const QString words = ToQt(viewer_.Rows().ContentsCell(record)).trimmed();
        !words.isEmpty() && record.ContentDifferent != 0)
        parts.append(words);
    if (record.SizeDifferent != 0)
        parts.append(text_(record.SizeDifferent < 0 ? "Modified is larger" : "Original is larger"));
    if (record.DateDifferent != 0)
        parts.append(text_(record.DateDifferent < 0 ? "Modified is later" : "Original is later"));
    return parts.join(QStringLiteral(", "));
}

QString FolderTable::Spoken(int row) const {
    const std::optional<FolderRecord> record = viewer_.Rows().Record(RecordAt(row));
    if (!record)
        return {};
    if (record->IsFile == 0)
        return text_("Folder") + QStringLiteral(" ") + Row(row).below;
    QString spoken = ToQt(record->FileName) + QStringLiteral(", ") + Verdict(*record);
    for (const FolderColumn column : {FolderColumn::Original, FolderColumn::Modified}) {
        if (Row(row).cells[column].ink == CellInk::Moved)
            spoken += QStringLiteral(", ") + CellText(row, column);
    }
    return spoken;
}

int FolderTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

int FolderTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kFolderColumns);
}

QVariant FolderTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<FolderColumn>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return CellText(index.row(), column);
        case Qt::AccessibleTextRole:
            return Spoken(index.row());
        case Qt::ToolTipRole: {
            const std::optional<FolderRecord> record = viewer_.Rows().Record(RecordAt(index.row()));
            if (!record || column == FolderColumn::Size || column == FolderColumn::Date)
                return {};
            if (column == FolderColumn::Contents)
                return CellText(index.row(), column);
            return ToQt(column == FolderColumn::Original ? record->Original() : record->Modified());
        }
        default:
            return {};
    }
}

QVariant FolderTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return ToQt(viewer_.Rows().Head(static_cast<FolderColumn>(section)));
}

}  // namespace zorvane
