#include "common/ui/buttons.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QVariant>

#include "common/ui/command_table.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "common/ui/ui_text.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kDot = 6;
constexpr int kFrameInset = 3;

const char* SelectorOf(ButtonLook look) {
    switch (look) {
        case ButtonLook::Primary:
            return look::kPrimary;
        case ButtonLook::Flat:
            return look::kFlat;
        case ButtonLook::Plain:
            break;
    }
    return "";
}

/// Enter presses the button that has the focus: outside dialogs Qt leaves that to Space, and in
/// them it would press another button.
class EnterPresses : public QObject {
  public:
    explicit EnterPresses(QAbstractButton& button) : QObject(&button) {
        button.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto* press = static_cast<QKeyEvent*>(event);
        const bool enter = press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter;
        const bool plain = (press->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (enter && plain && !press->isAutoRepeat())
            static_cast<QAbstractButton*>(watched)->click();
        return enter && plain;
    }
};

/// One of a group, painted flat unless it is the pressed one.
class SegmentButton : public QRadioButton {
  public:
    SegmentButton(const QString& text, const QString& icon, const QString& name, QWidget* parent)
        : QRadioButton(text, parent), icon_(icon), name_(name) {
        setFocusPolicy(Qt::StrongFocus);
        setProperty("caption", name_);
        setMinimumSize(kSmallestTarget, kSmallestTarget);
        if (text.isEmpty())
            setToolTip(name_);
        TellName();
    }

    void SetCount(int count) {
        count_ = count;
        TellName();
        updateGeometry();
        update();
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics(Semibold(font()));
        int width = 2 * kMedium;
        if (text().isEmpty())
            return {kIconSize + 14, kBarControlHeight - 2};
        if (!icon_.isEmpty())
            width += kIconSize + kSmall;
        width += metrics.horizontalAdvance(text());
        if (count_ >= 0)
            width += kSmall + metrics.horizontalAdvance(QString::number(count_));
        return {width, kBarControlHeight - 2};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    // Its caption may become one of another language.
    bool event(QEvent* event) override {
        if (event->type() == QEvent::DynamicPropertyChange) {
            name_ = property("caption").toString();
            if (!text().isEmpty())
                setText(name_);
            TellName();
        }
        return QRadioButton::event(event);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const ColorTokens& tokens = Tokens();
        const bool on = isChecked();
        if (on)
            PaintBox(painter, rect(), kChipCorner, tokens[isEnabled() ? Token::Ink : Token::On],
                     QColor());
        else if (underMouse() && isEnabled())
            PaintBox(painter, rect(), kChipCorner, tokens[Token::On], QColor());
        const QColor ink = tokens[!isEnabled() ? Token::Disabled
                                  : on         ? Token::InkText
                                               : Token::Text];
        PaintContents(painter, ink);
        if (ShowsFocus(*this))
            PaintBox(painter, rect().adjusted(2, 2, -2, -2), kChipCorner - 1, QColor(), ink, 1.5);
    }

  private:
    void PaintContents(QPainter& painter, const QColor& ink) {
        const QFont usual = isChecked() ? Semibold(font()) : font();
        QRect left = rect();
        // The room is that of the heavier face, so what is lighter stands in its middle.
        const QString count = count_ < 0 ? QString() : QString::number(count_);
        const QFontMetrics metrics(usual);
        int width = metrics.horizontalAdvance(text());
        if (!icon_.isEmpty())
            width += kIconSize + (text().isEmpty() ? 0 : kSmall);
        if (count_ >= 0)
            width += kSmall + metrics.horizontalAdvance(count);
        left.setLeft((rect().width() - width) / 2);
        const auto visual = [&](const QRect& place) {
            return QStyle::visualRect(layoutDirection(), rect(), place);
        };
        if (!icon_.isEmpty()) {
            PaintIcon(painter, icon_,
                      visual({left.left(), (height() - kIconSize) / 2, kIconSize, kIconSize}), ink);
            left.setLeft(left.left() + kIconSize + kSmall);
        }
        painter.setFont(usual);
        painter.setPen(ink);
        const int text_width = metrics.horizontalAdvance(text());
        painter.drawText(visual({left.left(), 0, text_width, height()}), Qt::AlignVCenter, text());
        painter.drawText(visual({left.left() + text_width + kSmall, 0,
                                 metrics.horizontalAdvance(count), height()}),
                         Qt::AlignVCenter, count);
    }

    void TellName() {
        setAccessibleName(count_ < 0 ? name_ : QStringLiteral("%1, %2").arg(name_).arg(count_));
    }

    QString icon_;
    QString name_;
    int count_ = -1;
};

}  // namespace

Button::Button(const QString& text, ButtonLook look, const QString& icon, QWidget* parent)
    : QPushButton(text, parent), look_(look), caption_(text), icon_(icon) {
    setProperty(look::kProperty, QString::fromLatin1(SelectorOf(look)));
    setAutoDefault(false);
    new EnterPresses(*this);
}

void Button::SetDot(bool shown) {
    dot_ = shown;
    update();
}

void Button::SetCaptionShown(bool shown) {
    setText(shown ? caption_ : QString());
    if (!shown)
        setAccessibleName(caption_);
    if (toolTip().isEmpty())
        setToolTip(caption_);
}

void Button::SetCaption(const QString& caption) {
    const bool shown = !text().isEmpty();
    if (toolTip() == caption_)
        setToolTip(caption);
    caption_ = caption;
    setAccessibleName(WithoutMnemonic(caption));
    setText(shown ? caption : QString());
    updateGeometry();
}

QFont Button::Face() const {
    return look_ == ButtonLook::Primary ? Semibold(font()) : font();
}

Token Button::InkToken() const {
    if (!isEnabled())
        return Token::Disabled;
    return look_ == ButtonLook::Primary ? Token::InkText : Token::Text;
}

QSize Button::sizeHint() const {
    const int padding = look_ == ButtonLook::Flat || text().isEmpty() ? kMedium : kLarge;
    const QFontMetrics metrics(Face());
    int width = 2 * padding;
    if (!icon_.isEmpty())
        width += kIconSize + (text().isEmpty() ? 0 : kSmall);
    width += metrics.size(Qt::TextShowMnemonic, text()).width();
    return {width, std::max(kControlHeight, metrics.height() + kSmall)};
}

// By hand, since below a style sheet icon and words stand too close.
void Button::PaintContents(QPainter& painter, const QStyleOptionButton& option) {
    const QFontMetrics metrics(Face());
    const int text_width = metrics.size(Qt::TextShowMnemonic, text()).width();
    const int icon_width = icon_.isEmpty() ? 0 : kIconSize + (text().isEmpty() ? 0 : kSmall);
    int x = (width() - text_width - icon_width) / 2;
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(layoutDirection(), rect(), place);
    };
    const QColor ink = Tokens()[InkToken()];
    if (!icon_.isEmpty())
        PaintIcon(painter, icon_, visual({x, (height() - kIconSize) / 2, kIconSize, kIconSize}),
                  ink);
    x += icon_width;
    int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic;
    if (style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) == 0)
        flags |= Qt::TextHideMnemonic;
    painter.setFont(Face());
    painter.setPen(ink);
    painter.drawText(visual({x, 0, text_width + 1, height()}), flags, text());
}

void Button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
    PaintContents(painter, option);
    if (!dot_)
        return;
    const int x = layoutDirection() == Qt::LeftToRight ? width() - kDot - 5 : 5;
    PaintBox(painter, QRectF(x, 5, kDot, kDot), kDot / 2.0, Tokens()[InkToken()], QColor());
}

IconButton::IconButton(const QString& icon, const QString& name, const QString& keys,
                       const QString& description, QWidget* parent)
    : QToolButton(parent), keys_(keys) {
    setProperty(look::kProperty, QString::fromLatin1(look::kIcon));
    setIcon(LookIcon(icon));
    setIconSize(QSize(kIconSize, kIconSize));
    new EnterPresses(*this);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(ToolTipOf(name, keys, description));
    setAccessibleName(name);
    setAccessibleDescription(description);
}

// Made of what is told about the button, which may be in another language by now.
bool IconButton::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(ToolTipOf(accessibleName(), keys_, accessibleDescription()));
    return QToolButton::event(event);
}

QLabel* MakeKeyLabel(const QString& keys, QWidget* parent) {
    auto* label = new QLabel(keys, parent);
    label->setProperty(look::kProperty, QString::fromLatin1(look::kKeys));
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return label;
}

SegmentedGroup::SegmentedGroup(const QString& name, QWidget* parent) : QWidget(parent) {
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kFrameInset, kFrameInset, kFrameInset, kFrameInset);
    layout->setSpacing(2);
    // A screen reader chooses without a click.
    connect(&group_, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on && !setting_)
            Q_EMIT Chosen(id);
    });
}

void SegmentedGroup::Add(int id, const QString& text, const QString& icon, const QString& name) {
    auto* segment = new SegmentButton(text, icon, text.isEmpty() ? name : text, this);
    segment->setAccessibleDescription(text.isEmpty() ? QString() : name);
    group_.addButton(segment, id);
    layout()->addWidget(segment);
    if (group_.buttons().size() == 1)
        SetCurrent(id);
}

void SegmentedGroup::SetCount(int id, int count) {
    if (QAbstractButton* button = group_.button(id))
        static_cast<SegmentButton*>(button)->SetCount(count);
}

void SegmentedGroup::SetSegmentEnabled(int id, bool enabled) {
    if (QAbstractButton* button = group_.button(id))
        button->setEnabled(enabled);
}

void SegmentedGroup::SetCurrent(int id) {
    setting_ = true;
    if (QAbstractButton* button = group_.button(id))
        button->setChecked(true);
    setting_ = false;
}

void SegmentedGroup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintBox(painter, rect(), kControlCorner, Tokens()[Token::Surface],
             Tokens()[isEnabled() ? Token::Border : Token::Hairline]);
}

}  // namespace zorvane
