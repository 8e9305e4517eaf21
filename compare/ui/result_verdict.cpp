#include "compare/ui/result_verdict.h"

#include <QLayout>
#include <QLineEdit>

#include "common/ui/buttons.h"
#include "common/ui/qt_text.h"
#include "compare/ui/beside_entries.h"

namespace zorvane {

namespace {

// "1 × picture, 4 × formatting"
QString BesideWords(const std::vector<const BesideNote*>& notes, const UiText& text) {
    QStringList names;
    std::vector<int> counts;
    for (const BesideNote* note : notes) {
        const QString name = text(note->what);
        const qsizetype at = names.indexOf(name);
        if (at < 0) {
            names.append(name);
            counts.push_back(1);
        } else {
            ++counts[static_cast<std::size_t>(at)];
        }
    }
    for (qsizetype at = 0; at < names.size(); ++at)
        names[at].prepend(QStringLiteral("%1 × ").arg(counts[static_cast<std::size_t>(at)]));
    return names.join(QStringLiteral(", "));
}

Button* MakeStep(const QString& words, const std::function<void()>& step,
                 ButtonLook look = ButtonLook::Plain) {
    auto* button = new Button(words, look);
    QObject::connect(button, &QPushButton::clicked, button, [step] {
        if (step)
            step();
    });
    return button;
}

QString TitleOf(const Verdict& verdict, const UiText& text) {
    if (verdict.both_empty)
        return text("Both documents are empty.");
    return verdict.identical ? text("The files are identical.")
                             : text("No differences in the words");
}

}  // namespace

Card* MakeVerdictCard(const Verdict& verdict, const UiText& text, const VerdictSteps& steps) {
    QString compared;
    if (!verdict.both_empty)
        compared = verdict.paragraphs == 1 ? text("1 paragraph compared")
                                           : text("%1 paragraphs compared").arg(verdict.paragraphs);
    auto* card = new Card(QStringLiteral("check"), TitleOf(verdict, text), compared);
    if (verdict.identical || verdict.both_empty)
        return card;
    if (verdict.not_counted > 0)
        card->AddLine(QStringLiteral("warning"),
                      text("%1 differences are not counted: %2")
                          .arg(verdict.not_counted)
                          .arg(verdict.kinds_out.join(QStringLiteral(", "))),
                      MakeStep(text("Count Them"), steps.count_them), true);
    if (!verdict.beside.empty())
        card->AddLine(QStringLiteral("picture"),
                      text("Beside the words: %1").arg(BesideWords(verdict.beside, text)),
                      MakeStep(text("Show Them"), steps.show_panel));
    if (!verdict.not_compared.isEmpty())
        card->AddLine(
            QStringLiteral("file"),
            text("Not compared: %1").arg(verdict.not_compared.front().section(u'\n', 0, 0)),
            MakeStep(text("Details"), steps.show_panel));
    return card;
}

Card* MakeUnreadCard(const QString& reason, const UiText& text, const UnreadSteps& steps) {
    auto* card = new Card(QStringLiteral("warning"), text("This file could not be read"), reason);
    if (steps.type_options)
        card->AddButton(MakeStep(text("Options for This Type"), steps.type_options));
    card->AddButton(MakeStep(text("Try Again"), steps.try_again));
    card->AddButton(MakeStep(text("Choose Another"), steps.choose_another, ButtonLook::Primary));
    return card;
}

Card* MakePasswordCard(const UiText& text, const UnreadSteps& steps) {
    auto* card =
        new Card(QStringLiteral("lock"), text("This file is protected by a password"),
                 steps.wrong_password ? text("The password does not open it.")
                                      : text("The password is forgotten when this window closes."));
    auto* field = new QLineEdit(card);
    field->setEchoMode(QLineEdit::Password);
    field->setPlaceholderText(text("Password"));
    field->setAccessibleName(text("Password"));
    card->layout()->addWidget(field);
    const auto open = [field, open_with = steps.open_with] {
        // The step takes the card away, and the field with it.
        if (const QString password = field->text(); !password.isEmpty())
            open_with(password);
    };
    QObject::connect(field, &QLineEdit::returnPressed, field, open, Qt::QueuedConnection);
    card->AddButton(MakeStep(text("Choose Another"), steps.choose_another));
    card->AddButton(MakeStep(text("Open"), open, ButtonLook::Primary));
    return card;
}

}  // namespace zorvane
