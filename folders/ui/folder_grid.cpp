#include "folders/ui/folder_grid.h"

#include <algorithm>

#include <QHeaderView>
#include <QPainter>

#include "common/ui/contrast.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kLeastNames = 120;
constexpr int kLeastOther = 60;
constexpr int kBeforeWords = 26;  // a picture and its room

Token InkOf(CellInk ink) {
    switch (ink) {
        case CellInk::Changed:
            return Token::ChangedText;
        case CellInk::OnlyOriginal:
            return Token::DeletedText;
        case CellInk::OnlyModified:
            return Token::AddedText;
        case CellInk::Gone:
            return Token::Disabled;
        case CellInk::Moved:
            return Token::Muted;
        case CellInk::Plain:
            break;
    }
    return Token::Text;
}

Token GroundOf(const FolderCell& cell) {
    if (!cell.shaded)
        return Token::Paper;
    switch (cell.ink) {
        case CellInk::Changed:
            return Token::ChangedRow;
        case CellInk::OnlyOriginal:
            return Token::DeletedRow;
        case CellInk::OnlyModified:
            return Token::AddedRow;
        case CellInk::Plain:
        case CellInk::Gone:
        case CellInk::Moved:
            break;
    }
    return Token::Paper;
}

QString PictureOf(const FolderCell& cell) {
    switch (cell.ink) {
        case CellInk::Changed:
            return QStringLiteral("changed");
        case CellInk::OnlyOriginal:
            return QStringLiteral("deleted");
        case CellInk::OnlyModified:
            return QStringLiteral("added");
        case CellInk::Plain:
        case CellInk::Gone:
        case CellInk::Moved:
            break;
    }
    return cell.picture == CellPicture::Folder ? QStringLiteral("open") : QStringLiteral("file");
}

bool IsNames(FolderColumn column) {
    return column <= FolderColumn::Modified;
}

struct CellPlace {
    const FolderTable::Shown& row;
    FolderColumn column{};
    QRect room;
    bool chosen = false;  ///< some cell of its row is
    const FolderCell& Cell() const { return row.cells[column]; }
    bool Missing() const {
        return IsNames(column) && !row.in_both && Cell().picture == CellPicture::None &&
               Cell().ink != CellInk::Moved;
    }
};

void PaintGround(QPainter& painter, const CellPlace& place) {
    const ColorTokens& tokens = Tokens();
    Token ground = GroundOf(place.Cell());
    if (place.chosen)
        ground = Token::Selection;
    else if (place.row.folder && !place.Cell().shaded)
        ground = Token::Window;
    PaintCellGround(painter, place.room, tokens[ground]);
    if (!place.chosen && place.Missing())
        PaintHatch(painter, place.room.adjusted(0, 0, 0, -1));
}

void PaintWords(QPainter& painter, const CellPlace& place, const QString& words,
                const QString& beside) {
    const ColorTokens& tokens = Tokens();
    const QColor ink =
        tokens[place.chosen && place.Cell().ink != CellInk::Gone ? Token::SelectionText
                                                                 : InkOf(place.Cell().ink)];
    QRect room = place.room.adjusted(kWindowEdge, 0, -kSmall, 0);
    if (place.Cell().picture != CellPicture::None) {
        const QRectF icon(room.left(), room.center().y() - kIconSize * 0.5 + 1, kIconSize,
                          kIconSize);
        const QColor own = tokens[InkOf(place.Cell().ink)];
        PaintIcon(
            painter, PictureOf(place.Cell()), icon,
            place.chosen ? MovedToContrast(own, tokens[Token::Selection], kEdgeContrast) : own);
        room.setLeft(room.left() + kBeforeWords);
    }
    painter.setPen(ink);
    const QFontMetrics metrics = painter.fontMetrics();
    constexpr auto kHow = static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine);
    if (place.Cell().ink == CellInk::Moved)
        room.setLeft(room.left() + kBeforeWords);
    // Of a name its end matters too, of a reason its beginning.
    const Qt::TextElideMode elide = IsNames(place.column) ? Qt::ElideMiddle : Qt::ElideRight;
    painter.drawText(room, kHow, metrics.elidedText(words, elide, room.width()));
    const int used = metrics.horizontalAdvance(words) + kMedium;
    if (beside.isEmpty() || used >= room.width())
        return;
    room.setLeft(room.left() + used);
    painter.setPen(tokens[place.chosen ? Token::SelectionText : Token::Muted]);
    painter.drawText(room, kHow, metrics.elidedText(beside, Qt::ElideLeft, room.width()));
}

}  // namespace

void FolderCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const auto& table = static_cast<const FolderTable&>(*index.model());
    const auto* grid = qobject_cast<const FolderGrid*>(option.widget);
    const QItemSelectionModel* selection = grid->selectionModel();
    const bool chosen = selection->rowIntersectsSelection(index.row(), {});
    const CellPlace place{table.Row(index.row()), static_cast<FolderColumn>(index.column()),
                          option.rect, chosen};
    painter->save();
    PaintGround(*painter, place);
    painter->setFont(place.row.folder ? Semibold(option.font) : option.font);
    const bool beside = table.Order().Sort().on && !place.row.folder && IsNames(place.column) &&
                        place.Cell().picture != CellPicture::None;
    if (!place.Missing())
        PaintWords(*painter, place, table.CellText(index.row(), place.column),
                   beside ? place.row.below : QString());
    // Which side of the row commands mean.
    if (chosen && IsNames(place.column) && selection->isSelected(index) && grid->hasFocus()) {
        painter->setRenderHint(QPainter::Antialiasing);
        PaintFocus(*painter, QRectF(option.rect).adjusted(2, 2, -2, -3), kChipCorner);
    }
    painter->restore();
}

FolderGrid::FolderGrid(frmCompareDir& viewer, FolderTable& table, const UiText& text,
                       QWidget* parent)
    : Grid(text("Files of both folders"), parent), viewer_(viewer), table_(table) {
    setModel(&table);
    setItemDelegate(new FolderCellDelegate(this));
    setSelectionBehavior(SelectItems);
    setSelectionMode(ContiguousSelection);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &FolderGrid::SortBy);
    table.around_change = [this](const std::function<void()>& change) { KeepPlace(change); };
    row_wanted = [this] { viewer_.OpenRow(CurrentCell().row); };
}

// ---- columns ----

void FolderGrid::ShowSettings() {
    CompareFoldersSettings& settings = viewer_.Settings();
    ShowFont({settings.FontName, settings.FontSize, settings.FontBold, settings.FontItalic});
    const auto column = [this](const QString& words) {
        const int room = QFontMetrics(font()).horizontalAdvance(words) + kWindowEdge + kMedium;
        return GridColumn{.least = std::max(room, kLeastOther)};
    };
    const GridColumn names{.least = kLeastNames, .shares = true};
    const GridColumn sign = column(QStringLiteral("[M]>[O]"));
    SetColumns(
        {names, names, column(QStringLiteral("12C, 12A, 12D")), sign, sign},
        [this](int at) { return viewer_.ColumnWidth(static_cast<FolderColumn>(at)); },
        [&settings](int at, std::int32_t twips) {
            std::int32_t* const stored[] = {&settings.mlCol1Width_CD, &settings.mlCol2Width_CD,
                                            &settings.mlCol3Width_CD, &settings.mlCol4Width_CD,
                                            &settings.mlCol5Width_CD};
            *stored[at] = twips;
        });
}

// Up, down, and back to the order of the records.
void FolderGrid::SortBy(int section) {
    const FolderSort now = table_.Sort();
    FolderSort next{true, static_cast<FolderColumn>(section), false};
    if (now.on && now.by == next.by) {
        next.downward = true;
        next.on = !now.downward;
    }
    table_.Show(table_.Filter(), next.on ? next : FolderSort{});
    horizontalHeader()->setSortIndicatorShown(next.on);
    if (next.on)
        horizontalHeader()->setSortIndicator(
            section, next.downward ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// ---- cells ----

GridCell FolderGrid::CurrentCell() const {
    const QModelIndex at = currentIndex();
    if (!at.isValid())
        return {};
    return {table_.RecordAt(at.row()), static_cast<FolderColumn>(at.column())};
}

// A choice within the columns that hold no names means no file; one over several columns both.
std::vector<GridCell> FolderGrid::ChosenCells() const {
    std::vector<GridCell> cells;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        std::vector<FolderColumn> columns{FolderColumn::Original, FolderColumn::Modified};
        if (range.left() == range.right())
            columns = {static_cast<FolderColumn>(range.left())};
        if (!IsNames(columns.front()))
            continue;
        for (const FolderColumn column : columns)
            for (int row = range.top(); row <= range.bottom(); ++row)
                cells.push_back({table_.RecordAt(row), column});
    }
    return cells;
}

void FolderGrid::ShowRecord(std::int32_t record, FolderColumn column) {
    const std::int32_t row = table_.Order().RowOf(record);
    if (row < 0)
        return;
    const QModelIndex at = table_.index(row, static_cast<int>(column));
    setCurrentIndex(at);
    scrollTo(at, PositionAtCenter);
}

void FolderGrid::KeepPlace(const std::function<void()>& change) {
    const GridCell cell = CurrentCell();
    change();
    if (cell.row >= 0)
        ShowRecord(cell.row, cell.column);
}

bool FolderGrid::GoToDifferent(bool forward) {
    const FolderScan& scan = viewer_.VestrelX1().Folders();
    const bool ignore_dates = viewer_.Options().bIgnoreDateDifferences.Data();
    const int step = forward ? 1 : -1;
    const int count = table_.rowCount();
    int row = currentIndex().isValid() ? currentIndex().row() + step : (forward ? 0 : count - 1);
    for (; row >= 0 && row < count; row += step) {
        const ScannedEntry& entry = scan.Entry(static_cast<std::size_t>(table_.RecordAt(row)));
        if (entry.IsFolder() || KindOf(entry, ignore_dates) == FolderFilter::Same)
            continue;
        const QModelIndex now = currentIndex();
        setCurrentIndex(table_.index(row, now.isValid() ? now.column() : 0));
        return true;
    }
    return false;
}

}  // namespace zorvane
