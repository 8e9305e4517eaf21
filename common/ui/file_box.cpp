#include "common/ui/file_box.h"

#include <algorithm>

#include <QDir>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QStyleOption>

#include "common/ui/dropped_files.h"
#include "common/ui/icons.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

qsizetype LastSlash(const QString& path, qsizetype from = -1) {
    return std::max(path.lastIndexOf(u'/', from), path.lastIndexOf(u'\\', from));
}

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

QString FileNameOf(const QString& path) {
    return path.mid(LastSlash(path) + 1);
}

QString WithHomeShort(const QString& path) {
    const QString home = QDir::homePath() + u'/';
    return path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
}

QString WithHomeLong(const QString& path) {
    const bool home = path == QStringLiteral("~") || path.startsWith(QStringLiteral("~/"));
    return home ? QDir::homePath() + path.mid(1) : path;
}

QString ElidedPath(const QString& path, const QFontMetrics& metrics, int width) {
    if (metrics.horizontalAdvance(path) <= width)
        return path;
    const QString dots(QChar(0x2026));
    // The longest end that begins at a slash and fits behind the dots.
    qsizetype cut = -1;
    for (qsizetype at = LastSlash(path); at >= 0; at = at == 0 ? -1 : LastSlash(path, at - 1)) {
        if (metrics.horizontalAdvance(dots + path.mid(at)) > width)
            break;
        cut = at;
    }
    if (cut >= 0)
        return dots + path.mid(cut);
    return metrics.elidedText(FileNameOf(path), Qt::ElideMiddle, width);
}

FileBox::FileBox(const QString& name, const QString& icon, QWidget* parent)
    : ComboBox(parent), icon_(icon) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setModel(&rows_);
    setCompleter(nullptr);
    setAccessibleName(name);
    lineEdit()->setAccessibleName(name);
    setAcceptDrops(true);
    lineEdit()->setAcceptDrops(false);
    lineEdit()->installEventFilter(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QComboBox::activated, this,
            [this](int row) { Q_EMIT PathChosen(recent_.value(row)); });
}

void FileBox::SetRecent(const QStringList& paths) {
    const QString kept = Path();
    recent_ = paths;
    rows_.SetRows(static_cast<int>(paths.size()),
                  [this](int row) { return ListRow{.text = recent_[row], .icon = icon_}; });
    SetPath(kept);
}

void FileBox::SetPath(const QString& path) {
    const QSignalBlocker silent(this);
    setCurrentIndex(-1);
    setEditText(path);
    setToolTip(path);
    PlaceEditor();  // the box laid it out anew, over the icon
    update();
}

QString FileBox::Path() const {
    return icon_.isEmpty() ? currentText() : WithHomeLong(currentText());
}

void FileBox::SetNamesOnly(bool names_only) {
    names_only_ = names_only;
    update();
}

// While nobody edits, the box paints the path itself: a line edit would show its start.
bool FileBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit()) {
        if (event->type() == QEvent::Paint && !lineEdit()->hasFocus())
            return true;
        if (event->type() == QEvent::KeyPress && IsEnter(*static_cast<QKeyEvent*>(event))) {
            // Here, since the box would hand it to the line a second time.
            EndByEnter();
            return true;
        }
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            update();
    }
    return ComboBox::eventFilter(watched, event);
}

// The focus is the box's own: keys come here, and the line never sees them as events.
void FileBox::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event))
        EndByEnter();
    else
        ComboBox::keyPressEvent(event);
}

void FileBox::EndByEnter() {
    Q_EMIT PathChosen(Path());
    Q_EMIT Entered();
}

void FileBox::PlaceEditor() {
    const int inset = icon_.isEmpty() ? 0 : kIconSize + kSmall;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    const bool rightward = layoutDirection() == Qt::LeftToRight;
    lineEdit()->setGeometry(room.adjusted(rightward ? inset : 0, 0, rightward ? 0 : -inset, 0));
}

void FileBox::resizeEvent(QResizeEvent* event) {
    ComboBox::resizeEvent(event);
    PlaceEditor();
}

void FileBox::paintEvent(QPaintEvent*) {
    PlaceEditor();  // the box lays it out anew for reasons of its own
    QPainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
    const ColorTokens& tokens = Tokens();
    const QRect room = lineEdit()->geometry();
    if (!icon_.isEmpty()) {
        const bool rightward = layoutDirection() == Qt::LeftToRight;
        PaintIcon(painter, icon_,
                  QRectF(rightward ? room.left() - kIconSize - kSmall : room.right() + kSmall,
                         room.center().y() - kIconSize * 0.5 + 1, kIconSize, kIconSize),
                  tokens[isEnabled() ? Token::Text2 : Token::Disabled]);
    }
    if (lineEdit()->hasFocus())
        return;
    painter.setPen(tokens[isEnabled() ? Token::Text : Token::Disabled]);
    painter.drawText(room,
                     static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     ShownText(fontMetrics(), room.width()));
}

QString FileBox::ShownText(const QFontMetrics& metrics, int width) const {
    if (icon_.isEmpty())
        return metrics.elidedText(Path(), Qt::ElideRight, width);
    return ElidedPath(names_only_ ? FileNameOf(Path()) : WithHomeShort(Path()), metrics, width);
}

ListRow FileBox::ShownRow() const {
    return {.text = Path(), .icon = icon_};
}

void FileBox::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FileBox::dropEvent(QDropEvent* event) {
    const QStringList paths = DroppedFiles(*event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    Q_EMIT FilesDropped(paths);
}

}  // namespace zorvane
