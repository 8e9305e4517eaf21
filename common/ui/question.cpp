#include "common/ui/question.h"

#include <QHBoxLayout>
#include <QLabel>

#include "common/ui/check_boxes.h"
#include "common/ui/measures.h"
#include "common/ui/window_placing.h"

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

Button* QuestionDialog::MakeChoice(const Question& question, int index, QWidget* holder) {
    const int usual = question.deletes ? question.escape : question.usual;
    // The way out is not what the person came for.
    const bool filled =
        index == usual && (usual != question.escape || question.choices.size() == 1);
    auto* button = new Button(question.choices[static_cast<std::size_t>(index)],
                              filled ? ButtonLook::Primary : ButtonLook::Plain, QString(), holder);
    button->setDefault(index == usual);
    if (index == usual)
        SetFirstFocus(button);
    connect(button, &QPushButton::clicked, this, [this, index] {
        answer_ = index;
        done(QDialog::Accepted);
    });
    return button;
}

// Below right what leaves all as it is, then what is done; another way out stands at the left.
QWidget* QuestionDialog::MakeChoices(const Question& question) {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, measures::kSmall, 0, 0);
    row->setSpacing(measures::kSmall);
    const int count = static_cast<int>(question.choices.size());
    int done = question.usual;
    if (done == question.escape && count > 1)
        done = question.escape == 0 ? 1 : 0;
    for (int index = 0; index < count; ++index) {
        if (index != question.escape && index != done)
            row->addWidget(MakeChoice(question, index, holder));
    }
    row->addStretch(1);
    row->addWidget(MakeChoice(question, question.escape, holder));
    if (done != question.escape)
        row->addWidget(MakeChoice(question, done, holder));
    return holder;
}

int Ask(const Question& question, QWidget* parent) {
    WindowPlacing::WaitFor(parent);
    QuestionDialog dialog(question, parent);
    dialog.exec();
    return dialog.Answer();
}

bool Notify(const Question& question, QWidget* parent) {
    WindowPlacing::WaitFor(parent);
    QuestionDialog dialog(question, parent);
    dialog.exec();
    return dialog.Checked();
}

void Tell(const QString& title, const QString& text, const QString& button, QWidget* parent) {
    Ask({.title = title, .text = text, .choices = {button}}, parent);
}

}  // namespace zorvane
