#include "folders/ui/folder_grid.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kLeastNames = 120;
constexpr int kLeastOther = 60;
constexpr int kHeadHeight = 32;
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
    FolderColumn column;
    QRect room;
    bool chosen;  ///< some cell of its row is
    const FolderCell& Cell() const { return row.cells[column]; }
    bool Missing() const {
        return IsNames(column) && !row.in_both && Cell().picture == CellPicture::None &&
               Cell().ink != CellInk::Moved;
    }
};

void PaintGround(QPainter& painter, const CellPlace& place) {
    const ColorTokens& tokens = Tokens();
    if (place.chosen)
        painter.fillRect(place.room, tokens[Token::Selection]);
    else if (place.Missing())
        PaintHatch(painter, place.room);
    else if (place.row.folder && !place.Cell().shaded)
        painter.fillRect(place.room, tokens[Token::Window]);
    else
        painter.fillRect(place.room, tokens[GroundOf(place.Cell())]);
    painter.setPen(tokens[Token::Hairline]);
    painter.drawLine(place.room.bottomLeft(), place.room.bottomRight());
}

void PaintWords(QPainter& painter, const CellPlace& place, const QString& words,
                const QString& beside) {
    const ColorTokens& tokens = Tokens();
    const QColor ink =
        tokens[place.chosen && place.Cell().ink != CellInk::Gone ? Token::SelectionText
                                                                 : InkOf(place.Cell().ink)];
    QRect room = place.room.adjusted(kWindowEdge, 0, -kSmall, 0);
    if (place.Cell().picture != CellPicture::None) {
        const QRectF icon(room.left(), room.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize);
        PaintIcon(painter, PictureOf(place.Cell()), icon, tokens[InkOf(place.Cell().ink)]);
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
    : QTableView(parent), viewer_(viewer), table_(table) {
    setAccessibleName(text("Files of both folders"));
    setModel(&table);
    setItemDelegate(new FolderCellDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectItems);
    setSelectionMode(ContiguousSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCornerButtonEnabled(false);
    setAcceptDrops(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    MakeHead();
}

void FolderGrid::MakeHead() {
    QHeaderView* head = horizontalHeader();
    head->setSectionsClickable(true);
    head->setHighlightSections(false);
    head->setSectionResizeMode(QHeaderView::Interactive);
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    head->setMinimumSectionSize(kLeastOther);
    head->setFixedHeight(kHeadHeight);
    head->setSortIndicatorShown(false);
    connect(head, &QHeaderView::sectionResized, this, &FolderGrid::TakeWidth);
    connect(head, &QHeaderView::sectionClicked, this, &FolderGrid::SortBy);
}

// ---- columns ----

void FolderGrid::ShowSettings() {
    const CompareFoldersSettings& settings = viewer_.Settings();
    QFont face = parentWidget()->font();
    // A font of another system stands for the desktop's own.
    if (QFontDatabase::hasFamily(ToQt(settings.FontName))) {
        face.setFamily(ToQt(settings.FontName));
        face.setPointSizeF(settings.FontSize);
    }
    face.setBold(settings.FontBold);
    face.setItalic(settings.FontItalic);
    setFont(face);
    verticalHeader()->setDefaultSectionSize(
        std::max(kGridRowHeight, QFontMetrics(face).height() + kSmall));
    verticalHeader()->setMinimumSectionSize(kGridRowHeight);
    ShareRoom();
}

// The first two columns share what the others leave, as their stored widths are to each other.
void FolderGrid::ShareRoom() {
    placing_ = true;
    int room = viewport()->width();
    for (const FolderColumn column :
         {FolderColumn::Contents, FolderColumn::Size, FolderColumn::Date}) {
        const int at = static_cast<int>(column);
        const std::int32_t twips = viewer_.ColumnWidth(column);
        setColumnHidden(at, twips == 0);
        if (twips == 0)
            continue;
        const int words = QFontMetrics(font()).horizontalAdvance(QStringLiteral("[M]>[O]"));
        const int least = std::max(words + kWindowEdge + kMedium, kLeastOther);
        const int width = std::max(static_cast<int>(twips) / kTwipsPerPixel, least);
        setColumnWidth(at, width);
        room -= width;
    }
    room = std::max(room, 2 * kLeastNames);
    const double left = std::max(1, viewer_.ColumnWidth(FolderColumn::Original));
    const double right = std::max(1, viewer_.ColumnWidth(FolderColumn::Modified));
    const int first =
        std::clamp(static_cast<int>(room * left / (left + right)), kLeastNames, room - kLeastNames);
    setColumnWidth(static_cast<int>(FolderColumn::Original), first);
    setColumnWidth(static_cast<int>(FolderColumn::Modified), room - first);
    placing_ = false;
}

// What one column gains another loses, so that no column leaves the window.
void FolderGrid::TakeWidth(int section, int old_width, int width) {
    if (placing_ || width == 0)
        return;
    if (section < static_cast<int>(FolderColumn::Date)) {
        int next = section + 1;
        while (next < static_cast<int>(kFolderColumns) && isColumnHidden(next))
            ++next;
        const int least =
            next <= static_cast<int>(FolderColumn::Modified) ? kLeastNames : kLeastOther;
        placing_ = true;
        if (next < static_cast<int>(kFolderColumns))
            setColumnWidth(next, std::max(least, columnWidth(next) - (width - old_width)));
        placing_ = false;
    }
    StoreWidths();
    ShareRoom();
}

void FolderGrid::StoreWidths() {
    CompareFoldersSettings& settings = viewer_.Settings();
    std::int32_t* const stored[] = {&settings.mlCol1Width_CD, &settings.mlCol2Width_CD,
                                    &settings.mlCol3Width_CD, &settings.mlCol4Width_CD,
                                    &settings.mlCol5Width_CD};
    for (int column = 0; column < static_cast<int>(kFolderColumns); ++column) {
        if (!isColumnHidden(column))
            *stored[column] = columnWidth(column) * kTwipsPerPixel;
    }
}

void FolderGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    ShareRoom();
}

// Up, down, and back to the order of the records.
void FolderGrid::SortBy(int section) {
    const FolderSort now = table_.Order().Sort();
    FolderSort next{true, static_cast<FolderColumn>(section), false};
    if (now.on && now.by == next.by) {
        next.downward = true;
        next.on = !now.downward;
    }
    KeepPlace([&] { table_.Show(table_.Order().Filter(), next.on ? next : FolderSort{}); });
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

// A row is painted as a whole where one of its cells is chosen.
void FolderGrid::selectionChanged(const QItemSelection& selected,
                                  const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    viewport()->update();
}

void FolderGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (table_.rowCount() == 0 || !menu_wanted)
        return;
    if (event->reason() == QContextMenuEvent::Keyboard) {
        menu_wanted(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
        return;
    }
    if (const QModelIndex at = indexAt(event->pos());
        at.isValid() && !selectionModel()->isSelected(at))
        setCurrentIndex(at);
    menu_wanted(event->globalPos());
}

// Typing is no search here: keys that are no commands go on to the window.
void FolderGrid::keyPressEvent(QKeyEvent* event) {
    if (event->text().isEmpty() || !event->text().front().isPrint())
        QTableView::keyPressEvent(event);
    else
        event->ignore();
}

void FolderGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        viewer_.OpenRow(CurrentCell().row);
}

}  // namespace zorvane
