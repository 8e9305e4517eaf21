// The small dialogs of a Compare Files window.
#pragma once

#include <QCheckBox>
#include <QLineEdit>

#include "common/ui/combo_boxes.h"
#include "common/ui/dialog.h"
#include "compare/view/find_replace.h"

namespace zorvane {

/// Asks for the number of a difference; -1: cancelled.
class GoToDialog : public Dialog {
  public:
    GoToDialog(const UiText& text, std::int32_t current, std::int32_t count, QWidget* parent);
    std::int32_t Number() const;

  protected:
    bool Check() override;

  private:
    QLineEdit* line_;
    frmCompareFilesGoTo state_;
    std::int32_t count_;
    QString wrong_;
};

/// Find and replace over the viewer's state; stays open while the text is worked on.
class FindReplaceDialog : public Dialog {
  public:
    FindReplaceDialog(frmCompareFilesFindReplace& find, const UiText& text, QWidget* parent);
    /// Shows what the state holds; a read-only text offers no replacing.
    void Show(bool read_only, bool replace);

    /// A hit was selected, or marks changed.
    std::function<void()> found;

    /// Esc, too; a dialog that is only out of sight goes on.
    void done(int result) override;

  private:
    void Store();
    void AddReplaceButtons(const UiText& text);

    frmCompareFilesFindReplace& find_;
    QLineEdit* words_;
    QLineEdit* instead_;
    QCheckBox* whole_;
    QCheckBox* case_;
    std::vector<Button*> replace_buttons_;
};

}  // namespace zorvane
