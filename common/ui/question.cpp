#include "common/ui/question.h"

#include <QHBoxLayout>
#include <QLabel>

#include "common/ui/check_boxes.h"
#include "common/ui/measures.h"

namespace zorvane {

namespace {

constexpr int kWidth = 520;

}  // namespace

QuestionDialog::QuestionDialog(const Question& question, QWidget* parent)
    : Dialog(question.title, kWidth, parent), answer_(question.escape) {
    setAccessibleName(question.title);
    setAccessibleDescription(question.text);
    auto* text = new QLabel(question.text, this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    AddWide(text);
    if (!question.check.isEmpty()) {
        check_ = new WrappingCheckBox(question.check, this);
        AddWide(check_);
    }
    AddWide(MakeChoices(question));
}

QWidget* QuestionDialog::MakeChoices(const Question& question) {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, measures::kSmall, 0, 0);
    row->setSpacing(measures::kSmall);
    row->addStretch(1);
    const int usual = question.deletes ? question.escape : question.usual;
    for (int index = 0; index < static_cast<int>(question.choices.size()); ++index) {
        const bool filled = index == usual && !question.deletes;
        auto* button =
            new Button(question.choices[static_cast<std::size_t>(index)],
                       filled ? ButtonLook::Primary : ButtonLook::Plain, QString(), holder);
        button->setDefault(index == usual);
        if (index == usual)
            SetFirstFocus(button);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, index] {
            answer_ = index;
            done(QDialog::Accepted);
        });
    }
    return holder;
}

int Ask(const Question& question, QWidget* parent) {
    QuestionDialog dialog(question, parent);
    dialog.exec();
    return dialog.Answer();
}

bool Notify(const Question& question, QWidget* parent) {
    QuestionDialog dialog(question, parent);
    dialog.exec();
    return dialog.Checked();
}

void Tell(const QString& title, const QString& text, const QString& button, QWidget* parent) {
    Ask({.title = title, .text = text, .choices = {button}}, parent);
}

}  // namespace zorvane
