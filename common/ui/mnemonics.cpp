#include "common/ui/mnemonics.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>

#include "common/ui/dialog.h"
#include "common/ui/ui_text.h"

namespace zorvane {

namespace {

struct Caption {
    QString text;
    std::function<void(const QString&)> show;
};

bool CanBe(QChar letter) {
    return letter >= u'A' && letter <= u'Y';
}

// The first letter of a word, or else any, that nobody has; its place in the text.
std::optional<qsizetype> FreeLetter(const QString& text, const std::set<QChar>& taken) {
    for (const bool words : {true, false}) {
        for (qsizetype at = 0; at < text.size(); ++at) {
            const bool begins = at == 0 || !text[at - 1].isLetterOrNumber();
            const QChar letter = text[at].toUpper();
            if ((begins || !words) && CanBe(letter) && !taken.contains(letter))
                return at;
        }
    }
    return {};
}

bool HasLatinLetters(const QString& text) {
    return FreeLetter(text, {}).has_value();
}

void Give(const Caption& caption, std::set<QChar>& taken) {
    // What was there was somebody else's already; a doubled one is a character.
    QString text = WithoutMnemonic(caption.text).replace(u'&', QStringLiteral("&&"));
    if (const std::optional<qsizetype> at = FreeLetter(text, taken)) {
        taken.insert(text[*at].toUpper());
        caption.show(text.insert(*at, u'&'));
        return;
    }
    // Signs alone, as on a button that browses, would only be read as something else.
    const bool words = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    if (!words || HasLatinLetters(text))
        return;
    for (char16_t letter = u'A'; CanBe(letter); ++letter) {
        if (taken.insert(letter).second) {
            caption.show(text + QStringLiteral("(&%1)").arg(QChar(letter)));
            return;
        }
    }
}

// What Enter and Esc press may bring a mnemonic along.
std::vector<const QAbstractButton*> PressedByKey(const QWidget& dialog) {
    const auto* host = qobject_cast<const Dialog*>(&dialog);
    if (host == nullptr)
        return {};
    return {host->AcceptButton(), host->CancelButton()};
}

// The label of a field that takes the focus.
bool NamesAField(const QLabel& label) {
    const QWidget* field = label.buddy();
    return field != nullptr && !label.text().isEmpty() &&
           (field->focusPolicy() != Qt::NoFocus || field->focusProxy() != nullptr);
}

void AppendCaptions(QTabBar* tabs, std::vector<Caption>& captions) {
    for (int tab = 0; tab < tabs->count(); ++tab)
        captions.push_back({tabs->tabText(tab),
                            [tabs, tab](const QString& text) { tabs->setTabText(tab, text); }});
}

template <class Widget>
Caption CaptionOf(Widget* widget) {
    return {widget->text(), [widget](const QString& text) { widget->setText(text); }};
}

std::vector<Caption> CaptionsOf(QWidget& dialog) {
    const std::vector<const QAbstractButton*> by_key = PressedByKey(dialog);
    std::vector<Caption> captions;
    for (QWidget* widget : dialog.findChildren<QWidget*>()) {
        auto* label = qobject_cast<QLabel*>(widget);
        auto* button = qobject_cast<QAbstractButton*>(widget);
        if (label != nullptr && NamesAField(*label))
            captions.push_back(CaptionOf(label));
        else if (button != nullptr && !button->text().isEmpty() &&
                 std::ranges::find(by_key, button) == by_key.end())
            captions.push_back(CaptionOf(button));
        else if (auto* tabs = qobject_cast<QTabBar*>(widget))
            AppendCaptions(tabs, captions);
    }
    return captions;
}

}  // namespace

void ShareMnemonics(QWidget& dialog) {
    std::set<QChar> taken;
    for (const QAbstractButton* button : PressedByKey(dialog))
        if (button != nullptr && !MnemonicOf(button->text()).isNull())
            taken.insert(MnemonicOf(button->text()));
    std::vector<Caption> without;
    for (Caption& caption : CaptionsOf(dialog)) {
        const QChar letter = MnemonicOf(caption.text);
        const bool kept = !letter.isNull() && letter != u'Z' && taken.insert(letter).second;
        if (!kept)
            without.push_back(std::move(caption));
    }
    for (const Caption& caption : without)
        Give(caption, taken);
}

}  // namespace zorvane
