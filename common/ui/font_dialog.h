// The choice of a font.
#pragma once

#include <QLineEdit>
#include <QSpinBox>

#include "common/ui/dialog.h"
#include "common/ui/list_box.h"

namespace zorvane {

struct FontChoice {
    QString family;
    double points = 0;  ///< 0: the size is no part of the choice
};

class FontDialog : public Dialog {
    Q_OBJECT
  public:
    FontDialog(const UiText& text, const FontChoice& current, QWidget* parent);

    FontChoice Choice() const;

  protected:
    bool Check() override;

  private:
    void ShowTyped(const QString& typed);
    void ShowSample();

    QLineEdit* family_;
    ListBox* families_;
    QSpinBox* points_ = nullptr;
    QLabel* sample_;
    double first_points_;
    QString missing_;
};

}  // namespace zorvane
