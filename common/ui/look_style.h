// How controls are painted: Fusion where it fits, the tokens and measures of the windows elsewhere.
#pragma once

#include <QProxyStyle>

#include "common/ui/color_tokens.h"

namespace zorvane {

/// The style of the application. What a style sheet says badly is painted here: check marks, boxes
/// with an arrow, and the rows of menus.
class LookStyle : public QProxyStyle {
    Q_OBJECT
  public:
    LookStyle();

    const ColorTokens& GetTokens() const { return tokens_; }
    /// Gives every window its palette; whoever calls it has them painted anew.
    void SetTokens(const ColorTokens& tokens);
    /// Mnemonics are underlined while Alt is held, and in open menus.
    void SetAltHeld(bool held) { alt_held_ = held; }

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;
    QPalette standardPalette() const override;

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

  private:
    ColorTokens tokens_ = ColorTokens::Light();
    bool alt_held_ = false;
};

/// The tokens in force: those of the application's style, light ones where it is another's.
const ColorTokens& Tokens();

/// Set on a field whose value is wrong; its edge is then red.
inline constexpr const char* kWrongProperty = "wrong";

}  // namespace zorvane
