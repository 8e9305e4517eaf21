// The widgets of a window as the walk of the translator sees them.
#pragma once

#include <string>

class QWidget;

namespace zorvane {

class modTranslator;
class ShownTexts;

/// Shows `window` and all in it in the translator's language, from what was shown before. A widget
/// that paints its words itself has them as its property "caption"; one whose property
/// "TranslateFalse" is set keeps its main text.
void TranslateWidgets(QWidget& window, modTranslator& translator, const ShownTexts& before);

/// The font of all windows, also of those to come; empty: the desktop's.
void ApplyLanguageFont(const std::string& family);

}  // namespace zorvane
