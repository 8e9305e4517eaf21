// The list of signs of regular expressions, which drops down below the text that is looked for.
#pragma once

#include <functional>

#include "common/ui/list_box.h"
#include "common/ui/ui_text.h"
#include "find/find_viewer.h"

namespace zorvane {

/// Esc, and the focus going elsewhere, hide it without a change.
class SignPicker : public ListBox {
    Q_OBJECT
  public:
    SignPicker(UiText text, QWidget* parent);

    /// In the language of now.
    void ShowWords();

    /// Below `box` and as wide; both stand in one window.
    void OpenBelow(QWidget& box);

    std::function<void(const ExpressionSign& sign)> picked;
    /// The focus belongs to whoever opened it again.
    std::function<void()> closed;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Pick(int row);

    UiText text_;
};

}  // namespace zorvane
