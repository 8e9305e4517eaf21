// Messages and questions that have to be answered before anything goes on.
#pragma once

#include <vector>

#include <QCheckBox>

#include "common/ui/dialog.h"

namespace zorvane {

/// Choices are verbs.
struct Question {
    QString title{};  ///< the thing, not the program
    QString text{};
    std::vector<QString> choices{};
    int usual = 0;         ///< what Enter presses, filled
    int escape = 0;        ///< what Esc and closing answer
    bool deletes = false;  ///< then Enter presses what Esc does, and nothing is filled
    QString check{};       ///< a box below the text; empty: none
};

class QuestionDialog : public Dialog {
    Q_OBJECT
  public:
    QuestionDialog(const Question& question, QWidget* parent);

    /// Which of the choices; 0-based.
    int Answer() const { return answer_; }
    bool Checked() const { return check_ != nullptr && check_->isChecked(); }

  private:
    QWidget* MakeChoices(const Question& question);
    Button* MakeChoice(const Question& question, int index, QWidget* holder);

    int answer_;
    QCheckBox* check_ = nullptr;
};

/// Shows it and waits for the answer.
int Ask(const Question& question, QWidget* parent);
/// A notice with one way on; true when its box was checked.
bool Notify(const Question& question, QWidget* parent);
/// A message with one button.
void Tell(const QString& title, const QString& text, const QString& button, QWidget* parent);

}  // namespace zorvane
