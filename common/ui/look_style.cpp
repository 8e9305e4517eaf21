#include "common/ui/look_style.h"

#include <algorithm>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QStyleOption>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style_menu.h"
#include "common/ui/look_style_title.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr const char* kOwnPalette = "ownPalette";
constexpr int kArrowWidth = 28;
constexpr int kFieldPadding = 8;

bool IsWrong(const QWidget* widget) {
    return widget != nullptr && widget->property(kWrongProperty).toBool();
}

// An editable box has the focus in the line that it is edited in.
bool HasFocus(const QStyleOption& option, const QWidget* widget) {
    if (option.state.testFlag(QStyle::State_HasFocus))
        return true;
    return widget != nullptr && widget->focusWidget() != nullptr &&
           widget->focusWidget()->hasFocus();
}

void PaintCheckBox(const QStyleOption& option, QPainter& painter) {
    const ColorTokens& tokens = Tokens();
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    const bool filled = option.state & (QStyle::State_On | QStyle::State_NoChange);
    const QColor edge = tokens[enabled ? Token::Border : Token::Disabled];
    const QColor full = tokens[enabled ? Token::Ink : Token::Disabled];
    PaintBox(painter, option.rect, kChipCorner, filled ? full : tokens[Token::Paper],
             filled ? full : edge, 1.5);
    if (option.state & QStyle::State_On)
        PaintIcon(painter, QStringLiteral("check"), option.rect, tokens[Token::InkText]);
    if (option.state & QStyle::State_NoChange)
        PaintIcon(painter, QStringLiteral("deleted"), option.rect, tokens[Token::InkText]);
}

void PaintRadioButton(const QStyleOption& option, QPainter& painter) {
    const ColorTokens& tokens = Tokens();
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    const QRectF place = option.rect;
    if (!option.state.testFlag(QStyle::State_On)) {
        PaintBox(painter, place, place.height() / 2, tokens[Token::Paper],
                 tokens[enabled ? Token::Border : Token::Disabled], 1.5);
        return;
    }
    const QColor full = tokens[enabled ? Token::Ink : Token::Disabled];
    PaintBox(painter, place, place.height() / 2, full, QColor());
    const double inset = place.height() * 0.31;
    PaintBox(painter, place.adjusted(inset, inset, -inset, -inset), inset, tokens[Token::InkText],
             QColor());
}

void PaintComboBox(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) {
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    if (option.frame)
        PaintField(painter, option.rect, enabled, HasFocus(option, widget), IsWrong(widget));
    const bool rightward = option.direction == Qt::LeftToRight;
    QRect arrow(0, 0, kIconSize, kIconSize);
    arrow.moveCenter(option.rect.center());
    arrow.moveLeft(rightward ? option.rect.right() - kArrowWidth + kFieldPadding
                             : option.rect.left() + kFieldPadding);
    PaintIcon(painter, QStringLiteral("chevron"), arrow,
              Tokens()[enabled ? Token::Text : Token::Disabled]);
}

void PaintSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget,
                  const QStyle& style) {
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    if (option.frame)
        PaintField(painter, option.rect, enabled, HasFocus(option, widget), IsWrong(widget));
    for (const bool up : {true, false}) {
        const QRect button =
            style.subControlRect(QStyle::CC_SpinBox, &option,
                                 up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown, widget);
        const bool can = option.stepEnabled &
                         (up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled);
        QRect arrow(0, 0, kIconSize, kIconSize);
        arrow.moveCenter(button.center());
        painter.save();
        if (up) {
            painter.translate(0, arrow.top() + arrow.bottom() + 1);
            painter.scale(1, -1);
        }
        PaintIcon(painter, QStringLiteral("chevron"), arrow,
                  Tokens()[enabled && can ? Token::Text : Token::Disabled]);
        painter.restore();
    }
}

}  // namespace

const ColorTokens& Tokens() {
    static const ColorTokens kPlain = ColorTokens::Light();
    const auto* style = qobject_cast<const LookStyle*>(QApplication::style());
    return style == nullptr ? kPlain : style->GetTokens();
}

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::SetTokens(const ColorTokens& tokens) {
    tokens_ = tokens;
    const QPalette palette = tokens_.Palette();
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->isWindow() || widget->property(kOwnPalette).toBool())
            widget->setPalette(palette);
}

void LookStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    // The application's palette stays the desktop's, so that its changes are heard of.
    if (widget->isWindow() && widget->windowType() != Qt::Desktop)
        widget->setPalette(tokens_.Palette());
    // A widget that is put below a style sheet later does not inherit its parent's palette.
    const QWidget* parent = widget->parentWidget();
    if (!widget->isWindow() && parent != nullptr && parent->testAttribute(Qt::WA_StyleSheet) &&
        widget->palette().resolveMask() == 0) {
        widget->setProperty(kOwnPalette, true);
        widget->setPalette(tokens_.Palette());
    }
    if (qobject_cast<QMenu*>(widget) != nullptr)
        widget->setAttribute(Qt::WA_TranslucentBackground);
}

QPalette LookStyle::standardPalette() const {
    return QProxyStyle::standardPalette();
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
        case PM_SmallIconSize:
        case PM_ButtonIconSize:
        case PM_ToolBarIconSize:
            return kIndicatorSize;
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return kSmall;
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return 6;
        case PM_MenuBarItemSpacing:
        case PM_MenuBarVMargin:
        case PM_MenuBarPanelWidth:
            return 0;
        case PM_MenuBarHMargin:
            return kSmall;
        case PM_MenuPanelWidth:
            return 0;
        case PM_TitleBarHeight:
            return kTitleBarHeight;
        case PM_MdiSubWindowFrameWidth:
            return 3;
        case PM_SplitterWidth:
            return kSmall;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    switch (hint) {
        case SH_ComboBox_Popup:
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
        case SH_Widget_Animate:
        case SH_Widget_Animation_Duration:
            return 0;
        case SH_UnderlineShortcut:
            return alt_held_ || qobject_cast<const QMenu*>(widget) != nullptr ? 1 : 0;
        case SH_Menu_MouseTracking:
        case SH_ComboBox_ListMouseTracking:
            return 1;
        case SH_Menu_Mask:
            if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returned); mask != nullptr)
                mask->region = MenuShape(option->rect);
            return 1;
        default:
            return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    switch (type) {
        case CT_MenuItem:
            return MenuItemSize(*option, size);
        case CT_MenuBarItem:
            return {size.width() + 2 * kSmall + kTiny, kMenuBarHeight};
        case CT_LineEdit:
            return {size.width() + 2 * kFieldPadding, std::max(kControlHeight, size.height() + 8)};
        case CT_ComboBox:
            return {size.width() + kArrowWidth + 2 * kFieldPadding,
                    std::max(kControlHeight, size.height() + 8)};
        case CT_SpinBox:
            return {size.width() + kArrowWidth + kFieldPadding,
                    std::max(kControlHeight, size.height() + 8)};
        default:
            return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option,
                                const QWidget* widget) const {
    if (element == SE_LineEditContents) {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        const int inset = frame != nullptr && frame->lineWidth > 0 ? kFieldPadding : 0;
        return option->rect.adjusted(inset, 0, -inset, 0);
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const {
    const QRect all = option->rect;
    const auto visual = [&](const QRect& place) {
        return visualRect(option->direction, all, place);
    };
    const QRect arrow(all.right() - kArrowWidth + 1, all.top(), kArrowWidth, all.height());
    if (control == CC_ComboBox && part == SC_ComboBoxArrow)
        return visual(arrow);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return visual(all.adjusted(kFieldPadding, 2, -kArrowWidth, -2));
    if (control == CC_SpinBox && part == SC_SpinBoxUp)
        return visual(arrow.adjusted(0, 2, -2, -all.height() / 2));
    if (control == CC_SpinBox && part == SC_SpinBoxDown)
        return visual(arrow.adjusted(0, all.height() / 2, -2, -2));
    if (control == CC_SpinBox && part == SC_SpinBoxEditField)
        return visual(all.adjusted(kFieldPadding, 2, -kArrowWidth, -2));
    if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
        title != nullptr && control == CC_TitleBar)
        return TitleBarPart(*title, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    switch (element) {
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            PaintCheckBox(*option, *painter);
            return;
        case PE_IndicatorRadioButton:
            PaintRadioButton(*option, *painter);
            return;
        case PE_PanelMenu:
            PaintBox(*painter, option->rect, kMenuCorner, tokens_[Token::Surface],
                     tokens_[Token::Hairline]);
            return;
        case PE_FrameMenu:
            return;
        case PE_FrameWindow:
            PaintWindowFrame(*option, *painter);
            return;
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (frame != nullptr && frame->lineWidth > 0)
                PaintField(*painter, option->rect, option->state & State_Enabled,
                           option->state & State_HasFocus, IsWrong(widget));
            return;
        }
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (element == CE_MenuItem) {
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            PaintMenuItem(*item, *painter);
        return;
    }
    if (element == CE_MenuBarItem) {
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            PaintMenuBarItem(*item, *painter, *this);
        return;
    }
    if (element == CE_MenuBarEmptyArea) {
        painter->fillRect(option->rect, tokens_[Token::Surface]);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo != nullptr && control == CC_ComboBox) {
        PaintComboBox(*combo, *painter, widget);
        return;
    }
    if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
        title != nullptr && control == CC_TitleBar) {
        PaintTitleBar(*title, *painter);
        return;
    }
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        spin != nullptr && control == CC_SpinBox) {
        PaintSpinBox(*spin, *painter, widget, *this);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace zorvane
