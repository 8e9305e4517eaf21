#include "common/ui/grid.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPainter>

#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kWidestColumn = 4000;  // a damaged file may say millions
constexpr int kLeastSection = 24;
constexpr int kHeadHeight = 32;

}  // namespace

void PaintCellGround(QPainter& painter, const QRect& room, const QColor& ground) {
    painter.fillRect(room, ground);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(room.bottomLeft(), room.bottomRight());
}

Grid::Grid(const QString& name, QWidget* parent) : QTableView(parent) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCornerButtonEnabled(false);
    setAcceptDrops(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    MakeHead();
}

void Grid::MakeHead() {
    QHeaderView* head = horizontalHeader();
    head->setHighlightSections(false);
    head->setSectionResizeMode(QHeaderView::Interactive);
    head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    head->setMinimumSectionSize(kLeastSection);
    head->setFixedHeight(kHeadHeight);
    head->setSortIndicatorShown(false);
    connect(head, &QHeaderView::sectionResized, this, &Grid::TakeWidth);
}

// ---- columns ----

void Grid::SetColumns(std::vector<GridColumn> columns, std::function<std::int32_t(int)> stored,
                      std::function<void(int, std::int32_t)> keep) {
    columns_ = std::move(columns);
    stored_ = std::move(stored);
    keep_ = std::move(keep);
    ShareRoom();
}

void Grid::ShowFont(const GridFont& font) {
    QFont face = parentWidget()->font();
    if (QFontDatabase::hasFamily(ToQt(font.family))) {
        face.setFamily(ToQt(font.family));
        face.setPointSizeF(font.points);
    }
    face.setBold(font.bold);
    face.setItalic(font.italic);
    setFont(face);
    verticalHeader()->setDefaultSectionSize(
        std::max(kGridRowHeight, QFontMetrics(face).height() + kSmall));
    verticalHeader()->setMinimumSectionSize(kGridRowHeight);
}

void Grid::ShareRoom() {
    placing_ = true;
    int room = viewport()->width();
    int least = 0;
    double shares = 0;
    const auto count = static_cast<int>(columns_.size());
    for (int at = 0; at < count; ++at) {
        const GridColumn& column = columns_[static_cast<std::size_t>(at)];
        const std::int32_t twips = stored_(at);
        if (column.shares) {
            least += column.least;
            shares += std::max(1, twips);
            continue;
        }
        setColumnHidden(at, twips == 0);
        if (twips == 0)
            continue;
        setColumnWidth(at, std::clamp(static_cast<int>(twips) / kTwipsPerPixel, column.least,
                                      std::max(column.least, kWidestColumn)));
        room -= columnWidth(at);
    }
    room = std::max(room, least);
    for (int at = 0; at < count; ++at) {
        const GridColumn& column = columns_[static_cast<std::size_t>(at)];
        if (!column.shares)
            continue;
        const double share = std::max(1, stored_(at));
        least -= column.least;
        const int width =
            std::clamp(static_cast<int>(room * share / shares), column.least, room - least);
        setColumnWidth(at, width);
        room -= width;
        shares -= share;
    }
    placing_ = false;
}

// What one column gains another loses, so that no column leaves the window.
void Grid::TakeWidth(int section, int old_width, int width) {
    const auto count = static_cast<int>(columns_.size());
    if (placing_ || width == 0 || section >= count)
        return;
    int next = section + 1;
    while (next < count && isColumnHidden(next))
        ++next;
    if (next < count) {
        placing_ = true;
        setColumnWidth(next, std::max(columns_[static_cast<std::size_t>(next)].least,
                                      columnWidth(next) - (width - old_width)));
        placing_ = false;
    }
    for (int at = 0; at < count; ++at) {
        if (!isColumnHidden(at))
            keep_(at, columnWidth(at) * kTwipsPerPixel);
    }
    ShareRoom();
}

void Grid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    ShareRoom();
}

// ---- rows ----

// A row is painted as a whole where one of its cells is chosen.
void Grid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    viewport()->update();
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    if (model()->rowCount() == 0 || !menu_wanted)
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
void Grid::keyPressEvent(QKeyEvent* event) {
    if (event->text().isEmpty() || !event->text().front().isPrint())
        QTableView::keyPressEvent(event);
    else
        event->ignore();
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && row_wanted &&
        indexAt(event->position().toPoint()).isValid())
        row_wanted();
}

}  // namespace zorvane
