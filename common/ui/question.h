// Messages and questions that have to be answered before anything goes on.
#pragma once

#include <vector>

#include "common/ui/dialog.h"

namespace zorvane {

/// Choices are verbs, from left to right as they stand below right.
struct Question {
    QString title{};  ///< the thing, not the program
    QString text{};
    std::vector<QString> choices{};
    int usual = 0;         ///< what Enter presses, filled
    int escape = 0;        ///< what Esc and closing answer
    bool deletes = false;  ///< then Enter presses what Esc does, and nothing is filled
};

class QuestionDialog : public Dialog {
    Q_OBJECT
  public:
    QuestionDialog(const Question& question, QWidget* parent);

    /// Which of the choices; 0-based.
    int Answer() const { return answer_; }

  private:
    int answer_;
};

/// Shows it and waits for the answer.
int Ask(const Question& question, QWidget* parent);
/// A message with one button.
void Tell(const QString& title, const QString& text, const QString& button, QWidget* parent);

}  // namespace zorvane
