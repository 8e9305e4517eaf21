#include "app/ui/about_dialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/dialog.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kIcon = 56;

QWidget* MakeHead(const AboutFacts& facts, const UiText& text, QWidget* parent) {
    auto* head = new QWidget(parent);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kLarge);
    auto* icon = new QLabel(head);
    icon->setPixmap(ProgramIcon().pixmap(QSize(kIcon, kIcon), parent->devicePixelRatioF()));
    row->addWidget(icon, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->setSpacing(kTiny);
    auto* name = new QLabel(QStringLiteral("Zorvane"), head);
    name->setFont(Sized(name->font(), kCardTitleType, true));
    words->addWidget(name);
    words->addWidget(MakeLabel(text("Version %1").arg(facts.version), look::kBeside, head));
    auto* what = new QLabel(text("Compares two versions of a document, word by word."), head);
    what->setWordWrap(true);
    words->addSpacing(kSmall);
    words->addWidget(what);
    auto* stay = new QLabel(text("Documents stay on this computer."), head);
    stay->setWordWrap(true);
    words->addWidget(stay);
    row->addLayout(words, 1);
    return head;
}

}  // namespace

void ShowAbout(const AboutFacts& facts, const UiText& text, QWidget* parent) {
    Dialog dialog(text("About Zorvane"), kFormDialog, parent);
    dialog.AddWide(MakeHead(facts, text, &dialog));
    dialog.StartRow(Dialog::Parted::ByLine);
    FormColumn* column = dialog.AddColumn();
    QString copied = QStringLiteral("Zorvane") + u' ' + facts.version;
    const std::pair<const char*, QString> kRows[] = {
        {"System", facts.system},
        {"Qt version", QString::fromLatin1(qVersion())},
        {"Settings file", facts.settings_file},
    };
    for (const auto& [caption, fact] : kRows) {
        if (fact.isEmpty())
            continue;
        auto* label = new QLabel(fact, column);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        column->AddBeside(text(caption), label);
        copied += u'\n' + text(caption) + QStringLiteral(": ") + fact;
    }
    column->AddHint(text("Licence: see the file LICENSE beside the program."));
    dialog.SetButtons(text("Close"), QString());
    Button* copy = dialog.AddThirdButton(text("Copy"));
    QObject::connect(copy, &QPushButton::clicked, &dialog,
                     [copied] { QGuiApplication::clipboard()->setText(copied); });
    dialog.SetFirstFocus(dialog.AcceptButton());
    dialog.exec();
}

}  // namespace zorvane
