#include "find/ui/find_tables.h"

#include <QAbstractItemView>
#include <QPainter>

#include "common/ui/file_box.h"
#include "common/ui/grid.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

// ---- what both have ----

FindTable::FindTable(frmFindTextInFiles& viewer, UiText text, QObject* parent)
    : QAbstractTableModel(parent), viewer_(viewer), text_(std::move(text)) {}

void FindTable::TakeRows() {
    const int rows = Rows();
    if (rows < shown_) {
        beginResetModel();
        shown_ = rows;
        endResetModel();
        return;
    }
    if (rows == shown_) {
        if (rows > 0)
            Q_EMIT dataChanged(index(0, 0), index(rows - 1, 0));
        return;
    }
    beginInsertRows({}, shown_, rows - 1);
    shown_ = rows;
    endInsertRows();
}

int FindTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

int FindTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns();
}

QVariant FindTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    switch (role) {
        case Qt::DisplayRole:
            return Cell(index.row(), index.column()).text;
        case Qt::AccessibleTextRole:
            return Spoken(index.row());
        case Qt::ToolTipRole:
            return ToolTip(index.row(), index.column());
        default:
            return {};
    }
}

QVariant FindTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return Head(section);
    if (role == Qt::TextAlignmentRole && IsNumber(section))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

// ---- hits ----

int HitTable::Rows() const {
    return Viewer().fgFiles().Count();
}

FindCell HitTable::Cell(int row, int column) const {
    const auto which = static_cast<HitRows::Column>(column);
    FindCell cell{.text = ToQt(Viewer().fgFiles().Cell(row, which)), .right = IsNumber(column)};
    switch (which) {
        case HitRows::Number:
            cell.ink = Token::Muted;
            if (Viewer().Marked().Has(row))
                cell.icon = QStringLiteral("compare");
            break;
        case HitRows::File:
            cell.text = WithHomeShort(cell.text);
            cell.icon = QStringLiteral("file");
            cell.path = true;
            break;
        case HitRows::Line:
        case HitRows::Col:
            break;
        case HitRows::Item:
            cell.bold = true;
            cell.beside = ToQt(Viewer().Engine().PlaceOf(row));
            break;
        case HitRows::kColumns:
            break;
    }
    return cell;
}

QString HitTable::Head(int column) const {
    switch (static_cast<HitRows::Column>(column)) {
        case HitRows::Number:
            return QStringLiteral("#");
        case HitRows::File:
            return Text()("File");
        case HitRows::Line:
            return Text()("Line");
        case HitRows::Col:
            return Text()("Col");
        case HitRows::Item:
            return Text()("Item Found");
        case HitRows::kColumns:
            break;
    }
    return {};
}

QString HitTable::Spoken(int row) const {
    const UiText& text = Text();
    const ShownHit hit = Viewer().HitAt(row);
    QString words = text("%1, line %2, column %3: %4")
                        .arg(FileNameOf(ToQt(hit.file)))
                        .arg(hit.line)
                        .arg(hit.column)
                        .arg(ToQt(hit.item));
    if (!hit.place.empty())
        words += QStringLiteral(", ") + ToQt(hit.place);
    return Viewer().Marked().Has(row) ? words + QStringLiteral(", ") + text("marked") : words;
}

QString HitTable::ToolTip(int row, int column) const {
    const ShownHit hit = Viewer().HitAt(row);
    if (column == HitRows::File)
        return ToQt(hit.file);
    if (column == HitRows::Item)
        return hit.place.empty() ? ToQt(hit.item) : ToQt(hit.item) + u'\n' + ToQt(hit.place);
    return {};
}

// ---- errors ----

int ErrorTable::Rows() const {
    return static_cast<int>(Viewer().fgErrorMessages().size());
}

FindCell ErrorTable::Cell(int row, int column) const {
    if (column == 0)
        return {.text = QString::number(row + 1), .ink = Token::Muted, .right = true};
    return {.text = ToQt(Viewer().fgErrorMessages()[static_cast<std::size_t>(row)]),
            .icon = QStringLiteral("warning"),
            .icon_ink = Token::AmberText};
}

QString ErrorTable::Head(int column) const {
    return column == 0 ? QStringLiteral("#") : Text()("Warning or Error found") + u' ';
}

QString ErrorTable::Spoken(int row) const {
    return Cell(row, 1).text;
}

QString ErrorTable::ToolTip(int row, int) const {
    return Cell(row, 1).text;
}

// ---- cells ----

namespace {

QString Fitted(const FindCell& cell, const QFontMetrics& metrics, int width) {
    return cell.path ? ElidedPath(cell.text, metrics, width)
                     : metrics.elidedText(cell.text, Qt::ElideRight, width);
}

void PaintCell(QPainter& painter, const FindCell& cell, QRect room, bool chosen) {
    const ColorTokens& tokens = Tokens();
    if (!cell.icon.isEmpty()) {
        const QRectF icon(room.left(), room.center().y() - kIconSize * 0.5 + 1, kIconSize,
                          kIconSize);
        PaintIcon(painter, cell.icon, icon, tokens[chosen ? Token::SelectionText : cell.icon_ink]);
        room.setLeft(room.left() + kIconSize + kMedium);
    }
    const QFont plain = painter.font();
    if (cell.bold)
        painter.setFont(Semibold(plain));
    painter.setPen(tokens[chosen ? Token::SelectionText : cell.ink]);
    const QString words = Fitted(cell, painter.fontMetrics(), room.width());
    const auto how = static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      (cell.right ? Qt::AlignRight : Qt::AlignLeft));
    painter.drawText(room, how, words);
    const int used = painter.fontMetrics().horizontalAdvance(words) + kMedium;
    if (cell.beside.isEmpty() || used >= room.width())
        return;
    room.setLeft(room.left() + used);
    painter.setFont(plain);
    painter.setPen(tokens[chosen ? Token::SelectionText : Token::Muted]);
    painter.drawText(room, how,
                     painter.fontMetrics().elidedText(cell.beside, Qt::ElideRight, room.width()));
}

}  // namespace

void FindCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const auto& table = static_cast<const FindTable&>(*index.model());
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    const bool chosen = view->selectionModel()->rowIntersectsSelection(index.row(), {});
    painter->save();
    PaintCellGround(*painter, option.rect, Tokens()[chosen ? Token::Selection : Token::Paper]);
    painter->setFont(option.font);
    PaintCell(*painter, table.Cell(index.row(), index.column()),
              option.rect.adjusted(kMedium, 0, -kMedium, 0), chosen);
    // Of several chosen rows the one that commands mean.
    if (index.row() == view->currentIndex().row() && view->hasFocus()) {
        painter->setPen(QPen(Tokens()[Token::Ink], kFocusLine));
        const QRect room = option.rect;
        painter->drawLine(room.left(), room.top() + 1, room.right(), room.top() + 1);
        painter->drawLine(room.left(), room.bottom(), room.right(), room.bottom());
    }
    painter->restore();
}

}  // namespace zorvane
