#include "compare/ui/beside_entries.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/qt_text.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kRowHeight = 44;
constexpr int kPlacesRole = Qt::UserRole;
constexpr int kIconRole = Qt::UserRole + 1;
constexpr std::size_t kMostPlaces = 6;

int PlaceOf(const BesideNote& note) {
    return note.paragraphs.modified.value > 0 ? note.paragraphs.modified.value
                                              : note.paragraphs.original.value;
}

QString IconOf(const std::string& kind) {
    if (kind == "pictures" || kind == "drawings" || kind == "charts")
        return QStringLiteral("picture");
    if (kind == "links")
        return QStringLiteral("link");
    return kind == "formatting" ? QStringLiteral("formatting") : QStringLiteral("file");
}

class EntryDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {0, kRowHeight};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const ColorTokens& tokens = Tokens();
        const QRect row = option.rect;
        const auto visual = [&](const QRect& place) {
            return QStyle::visualRect(option.direction, row, place);
        };
        const bool current = option.state.testFlag(QStyle::State_Selected) &&
                             option.state.testFlag(QStyle::State_HasFocus);
        if (option.state.testFlag(QStyle::State_MouseOver) || current)
            PaintBox(*painter, row, kControlCorner, tokens[Token::On], QColor());
        const int top = row.top() + 5;
        PaintIcon(*painter, index.data(kIconRole).toString(),
                  visual({row.left(), top + 1, kIconSize, kIconSize}), tokens[Token::Text2]);
        PaintIcon(*painter, QStringLiteral("chevron-right"),
                  visual({row.right() - kIconSize, row.center().y() - kIconSize / 2, kIconSize,
                          kIconSize}),
                  tokens[Token::Text2]);
        const int left = row.left() + kIconSize + 10;
        const QRect words = visual({left, top, row.right() - kIconSize - kSmall - left, 18});
        const auto align = static_cast<int>(
            Qt::AlignVCenter | QStyle::visualAlignment(option.direction, Qt::AlignLeft));
        painter->setPen(tokens[Token::Text]);
        painter->setFont(option.font);
        painter->drawText(
            words, align,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, words.width()));
        const QFont small = Sized(option.font, kSmallType);
        painter->setFont(small);
        painter->setPen(tokens[Token::Text2]);
        const QString places = index.data(kPlacesRole).toString();
        painter->drawText(words.translated(0, 18), align,
                          QFontMetrics(small).elidedText(places, Qt::ElideRight, words.width()));
        if (option.state.testFlag(QStyle::State_HasFocus))
            PaintFocus(*painter, row, kControlCorner);
    }
};

}  // namespace

std::vector<BesideEntry> EntriesOf(const std::vector<const BesideNote*>& notes) {
    std::vector<BesideEntry> entries;
    for (const BesideNote* note : notes) {
        const auto same = [note](const BesideEntry& entry) {
            return entry.what == note->what && entry.change == note->change;
        };
        auto found = std::find_if(entries.begin(), entries.end(), same);
        if (found == entries.end())
            found = entries.insert(found, {note->kind, note->what, note->change, {}});
        found->notes.push_back(note);
    }
    return entries;
}

BesideEntries::BesideEntries(UiText text, QWidget* parent)
    : QListWidget(parent), text_(std::move(text)) {
    setAccessibleName(text_("Beside the words"));
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new EntryDelegate(this));
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    connect(this, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { Choose(row(item)); });
}

void BesideEntries::SetEntries(std::vector<BesideEntry> entries) {
    clear();
    entries_ = std::move(entries);
    last_row_ = -1;
    for (const BesideEntry& entry : entries_) {
        QString name = text_(entry.what) + u' ' + text_(entry.change);
        name = name.left(1).toUpper() + name.mid(1);
        auto* item = new QListWidgetItem(name, this);
        const QString places = PlacesOf(entry);
        item->setData(kPlacesRole, places);
        item->setData(kIconRole, IconOf(entry.kind));
        item->setData(Qt::AccessibleTextRole,
                      places.isEmpty() ? name : name + QStringLiteral(", ") + places);
        item->setToolTip(TipOf(entry));
    }
    updateGeometry();
}

QString BesideEntries::PlacesOf(const BesideEntry& entry) const {
    QStringList places;
    for (const BesideNote* note : entry.notes) {
        const QString place = QString::number(PlaceOf(*note));
        if (PlaceOf(*note) > 0 && (places.isEmpty() || places.back() != place))
            places.append(place);
    }
    if (places.isEmpty()) {
        const BesideNote& note = *entry.notes.front();
        return ToQt(note.new_text.empty() ? note.old_text : note.new_text);
    }
    if (places.size() == 1)
        return text_("paragraph %1").arg(places.front());
    const bool more = places.size() > static_cast<qsizetype>(kMostPlaces);
    const QString shown = QStringList(places.mid(0, kMostPlaces)).join(QStringLiteral(", "));
    return text_("paragraphs %1").arg(more ? shown + QStringLiteral(", ...") : shown);
}

QString BesideEntries::TipOf(const BesideEntry& entry) const {
    QStringList lines;
    for (const BesideNote* note : entry.notes) {
        if (lines.size() == static_cast<qsizetype>(kMostPlaces)) {
            lines.append(QStringLiteral("..."));
            break;
        }
        const QString before = ToQt(note->old_text);
        const QString after = ToQt(note->new_text);
        QString words = before.isEmpty() || after.isEmpty()
                            ? before + after
                            : before + QStringLiteral(" → ") + after;
        if (PlaceOf(*note) > 0)
            words.prepend(QString::number(PlaceOf(*note)) + QStringLiteral(": "));
        lines.append(words);
    }
    return lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

void BesideEntries::Choose(int row) {
    if (row < 0 || row >= static_cast<int>(entries_.size()))
        return;
    const BesideEntry& entry = entries_[static_cast<std::size_t>(row)];
    next_place_ = row == last_row_ ? (next_place_ + 1) % entry.notes.size() : 0;
    last_row_ = row;
    const BesideNote& note = *entry.notes[next_place_];
    if (place_chosen && PlaceOf(note) > 0)
        place_chosen(note.paragraphs.modified.value > 0 ? Side::Modified : Side::Original,
                     ParagraphNumber{PlaceOf(note)});
}

void BesideEntries::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Choose(currentRow());
    else
        QListWidget::keyPressEvent(event);
}

QSize BesideEntries::sizeHint() const {
    return {200, kRowHeight * count()};
}

}  // namespace zorvane
