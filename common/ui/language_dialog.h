// The choice of the language of menus, buttons and messages, and of their font.
#pragma once

#include <functional>

#include "common/choose_language.h"
#include "common/ui/dialog.h"
#include "common/ui/list_box.h"

namespace zorvane {

class LanguageDialog : public Dialog {
    Q_OBJECT
  public:
    struct Actions {
        std::function<void(const QString& language)> edit_file;
        std::function<void()> help;
    };
    /// `font`: the one in force, empty where it is the desktop's.
    LanguageDialog(const LanguageList& offered, const QString& font, Actions actions, UiText text,
                   QWidget* parent);

    /// Empty unless the dialog was accepted.
    LanguageChoice Choice() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void AddFont(FormColumn& column);
    void ChooseFont();
    void ShowChosen();

    Actions actions_;
    UiText text_;
    QString font_;         ///< in force
    QString chosen_font_;  ///< empty: none was picked
    ListBox* languages_;
    QLabel* font_name_ = nullptr;
    Button* edit_ = nullptr;
};

}  // namespace zorvane
