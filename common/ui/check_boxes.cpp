#include "common/ui/check_boxes.h"

#include <algorithm>

#include <QPainter>
#include <QStyleOption>

#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kBoxGap = kSmall;
constexpr int kRow = 28;
constexpr int kLeast = 160;  // below this width a caption is broken into single words
constexpr int kTextFlags = Qt::TextWordWrap | Qt::TextShowMnemonic;

QRect TextRoom(const QAbstractButton& button, int width) {
    const QRect lines = button.fontMetrics().boundingRect(
        QRect(0, 0, std::max(1, width - kIndicatorSize - kBoxGap - 2), 10'000), kTextFlags,
        button.text());
    return lines;
}

int HeightFor(const QAbstractButton& button, int width) {
    const int line = button.fontMetrics().height();
    return std::max(kRow, TextRoom(button, width).height() + kRow - line);
}

QSize HintFor(const QAbstractButton& button) {
    const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    return {kIndicatorSize + kBoxGap + text.width() + 4,
            std::max(kRow, text.height() + kRow - button.fontMetrics().height())};
}

void Allow(QAbstractButton& button) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::CheckBox);
    policy.setHeightForWidth(true);
    button.setSizePolicy(policy);
    button.setAttribute(Qt::WA_Hover);
}

void Paint(QAbstractButton& button, QStyle::PrimitiveElement indicator, QStyle::State state) {
    QPainter painter(&button);
    QStyleOptionButton option;
    option.initFrom(&button);
    option.state |= state;
    const QRect lines = TextRoom(button, button.width());
    const int line = button.fontMetrics().height();
    const int top = (button.height() - lines.height()) / 2;
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(button.layoutDirection(), button.rect(), place);
    };
    // Beside the first line, however many there are.
    option.rect =
        visual({1, top + (line - kIndicatorSize + 1) / 2, kIndicatorSize, kIndicatorSize});
    button.style()->drawPrimitive(indicator, &option, &painter, &button);
    if (ShowsFocus(button))
        PaintFocus(painter, QRectF(option.rect).adjusted(-1, -1, 1, 1),
                   indicator == QStyle::PE_IndicatorCheckBox ? kChipCorner + 1 : kIndicatorSize);
    painter.setPen(Tokens()[button.isEnabled() ? Token::Text : Token::Disabled]);
    int flags = kTextFlags;
    if (button.style()->styleHint(QStyle::SH_UnderlineShortcut, &option, &button) == 0)
        flags |= Qt::TextHideMnemonic;
    const int left = kIndicatorSize + kBoxGap + 2;
    painter.drawText(visual({left, top, button.width() - left, lines.height() + 2}), flags,
                     button.text());
}

}  // namespace

WrappingCheckBox::WrappingCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
    Allow(*this);
}

QSize WrappingCheckBox::sizeHint() const {
    return HintFor(*this);
}

QSize WrappingCheckBox::minimumSizeHint() const {
    return {std::min(kLeast, HintFor(*this).width()), kRow};
}

int WrappingCheckBox::heightForWidth(int width) const {
    return HeightFor(*this, width);
}

bool WrappingCheckBox::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

void WrappingCheckBox::paintEvent(QPaintEvent*) {
    const QStyle::State state = checkState() == Qt::Checked            ? QStyle::State_On
                                : checkState() == Qt::PartiallyChecked ? QStyle::State_NoChange
                                                                       : QStyle::State_Off;
    Paint(*this, QStyle::PE_IndicatorCheckBox, state);
}

WrappingRadioButton::WrappingRadioButton(const QString& text, QWidget* parent)
    : QRadioButton(text, parent) {
    Allow(*this);
}

QSize WrappingRadioButton::sizeHint() const {
    return HintFor(*this);
}

QSize WrappingRadioButton::minimumSizeHint() const {
    return {std::min(kLeast, HintFor(*this).width()), kRow};
}

int WrappingRadioButton::heightForWidth(int width) const {
    return HeightFor(*this, width);
}

bool WrappingRadioButton::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

void WrappingRadioButton::paintEvent(QPaintEvent*) {
    Paint(*this, QStyle::PE_IndicatorRadioButton,
          isChecked() ? QStyle::State_On : QStyle::State_Off);
}

Switch::Switch(const QString& name, QWidget* parent) : QCheckBox(parent) {
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const {
    return {36, kSmallestTarget};
}

bool Switch::hitButton(const QPoint& place) const {
    return rect().contains(place);
}

void Switch::paintEvent(QPaintEvent*) {
    constexpr double kTrack = 20;
    constexpr double kKnob = 12;
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    const QRectF track(0, (height() - kTrack) / 2, width(), kTrack);
    const QColor full = tokens[isEnabled() ? Token::Ink : Token::Disabled];
    const QColor edge = tokens[isEnabled() ? Token::Border : Token::Disabled];
    const bool on = isChecked();
    PaintBox(painter, track, kTrack / 2, on ? full : tokens[Token::Paper], on ? full : edge, 1.5);
    const bool right = on == (layoutDirection() == Qt::LeftToRight);
    const double inset = (kTrack - kKnob) / 2;
    PaintBox(painter,
             QRectF(right ? track.right() - inset - kKnob : track.left() + inset,
                    track.top() + inset, kKnob, kKnob),
             kKnob / 2, on ? tokens[Token::InkText] : edge, QColor());
    if (ShowsFocus(*this))
        PaintBox(painter, QRectF(rect()), kSmallestTarget / 2.0, QColor(), full, kFocusLine);
}

}  // namespace zorvane
