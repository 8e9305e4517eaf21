// Above the errors of a search: how many documents are protected, and a field for their password.
#pragma once

#include <functional>

#include <QFrame>
#include <QLabel>
#include <QLineEdit>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

namespace zorvane {

class PasswordLine : public QFrame {
  public:
    PasswordLine(UiText text, QWidget* parent);

    /// Not there without documents. `tried`: passwords were given that open none of them.
    void Show(int documents, bool tried);
    QLineEdit& Field() { return *field_; }
    QString Words() const { return words_->text(); }
    /// Not empty; the field forgets it.
    std::function<void(const QString& password)> given;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void Give();

    UiText text_;
    QLabel* words_;
    QLineEdit* field_;
    Button* open_;
};

}  // namespace zorvane
