#include "find/ui/find_boxes.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/buttons.h"
#include "common/ui/cards.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kTypesWidth = 232;
constexpr int kNarrowTypesWidth = 120;
constexpr int kWideTypesFrom = 900;
constexpr int kLongest = 1000;  // longer texts are cut by the settings file

QStringList ToList(const std::vector<std::string>& items) {
    QStringList list;
    for (const std::string& item : items)
        list.append(ToQt(item));
    return list;
}

}  // namespace

const std::array<FindSwitch, kFindSwitches>& FindSwitches() {
    static const std::array<FindSwitch, kFindSwitches> switches{{
        {"Case Sensitive", "find.case", &FindEntries::cbCaseSensitive},
        {"Whole Word Only", "find.word", &FindEntries::cbWholeWordOnly},
        {"Regular Expression", "find.expression", &FindEntries::cbRegularExpression},
        {"Look In Subfolders", "find.subfolders", &FindEntries::cbLookInSubfolders},
        {"Support Office Docs", "find.office", &FindEntries::cbSupportOfficeDocs},
    }};
    return switches;
}

FindBoxes::FindBoxes(CommandSet& commands, UiText text, QWidget* parent)
    : QFrame(parent), text_(std::move(text)) {
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(kWindowEdge, kMedium, kWindowEdge, kMedium);
    lines->setSpacing(kSmall);
    lines->addLayout(MakeFirstLine(commands));
    lines->addLayout(MakeSecondLine(commands));
    lines->addLayout(MakeThirdLine(commands));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QLabel* FindBoxes::MakeCaption(const QString& words) {
    QLabel* caption = MakeLabel(words, look::kBeside, this);
    caption->setWordWrap(false);
    return caption;
}

FileBox* FindBoxes::MakeBox(const QString& name, const char* icon) {
    auto* box = new FileBox(name, QString::fromLatin1(icon), this);
    box->lineEdit()->setPlaceholderText(name);
    box->lineEdit()->setMaxLength(kLongest);
    connect(box, &FileBox::PathChosen, box, &FileBox::SetPath);
    connect(box, &FileBox::Entered, this, [this] { run_wanted(); });
    return box;
}

QHBoxLayout* FindBoxes::MakeFirstLine(CommandSet& commands) {
    auto* line = new QHBoxLayout;
    line->setSpacing(kSmall);
    what_words_ = MakeCaption(text_("What To Find"));
    line->addWidget(what_words_);
    search_for_ = MakeBox(text_("What To Find"), "");
    search_for_->setAcceptDrops(false);
    line->addWidget(search_for_, 1);
    line->addWidget(MakeCommandIcon(commands, "find.signs", "regex", this));
    line->addSpacing(kSmall);
    run_ = MakeCommandButton(commands, "compare.run", text_("Find"), ButtonLook::Primary, "find",
                             this);
    line->addWidget(run_);
    abort_ = MakeCommandButton(commands, "compare.abort", text_("Abort"), ButtonLook::Plain,
                               "abort", this);
    abort_->hide();
    line->addWidget(abort_);
    key_ = MakeKeyLabel(QStringLiteral("F5"), this);
    line->addWidget(key_);
    return line;
}

QHBoxLayout* FindBoxes::MakeSecondLine(CommandSet& commands) {
    auto* line = new QHBoxLayout;
    line->setSpacing(kSmall);
    where_words_ = MakeCaption(text_("Folder"));
    line->addWidget(where_words_);
    folder_ = MakeBox(text_("Folder"), "open");
    connect(folder_, &FileBox::FilesDropped, this,
            [this](const QStringList& paths) { dropped(paths); });
    line->addWidget(folder_, 1);
    line->addWidget(MakeCommandIcon(commands, "file.open_original", "open", this));
    line->addSpacing(kSmall);
    types_words_ = MakeCaption(text_("File Types"));
    line->addWidget(types_words_);
    types_ = MakeBox(text_("File Types"), "");
    types_->setToolTip(text_("Patterns such as *.docx *.txt, with blanks between"));
    types_->setAcceptDrops(false);
    types_->setFixedWidth(kTypesWidth);
    line->addWidget(types_);
    return line;
}

QHBoxLayout* FindBoxes::MakeThirdLine(CommandSet& commands) {
    auto* line = new QHBoxLayout;
    line->setSpacing(kSmall);
    below_words_ = new QWidget(this);
    line->addWidget(below_words_);
    switch_box_ = new FlowBox(kColumnGap, kTiny, this);
    MakeSwitches(commands);
    line->addWidget(switch_box_, 1);
    line->addWidget(MakeCommandIcon(commands, "report.make", "report", this), 0, Qt::AlignTop);
    line->addWidget(MakeCommandIcon(commands, "view.options", "options", this), 0, Qt::AlignTop);
    return line;
}

void FindBoxes::MakeSwitches(CommandSet& commands) {
    for (std::size_t number = 0; number < kFindSwitches; ++number) {
        const FindSwitch& entry = FindSwitches()[number];
        auto* box = new WrappingCheckBox(text_(entry.words), switch_box_);
        const QAction* action = commands.Action(entry.command);
        box->setToolTip(action->toolTip());
        connect(action, &QAction::changed, box, [box, action] {
            box->setToolTip(action->toolTip());
            box->setAccessibleDescription(action->statusTip());
        });
        connect(box, &QAbstractButton::toggled, this, [this] {
            if (!setting_)
                switches_changed();
        });
        switch_box_->Add(box);
        switches_[number] = box;
    }
}

// ---- what stands there ----

FindEntries FindBoxes::Entries() const {
    FindEntries entries;
    entries.cbSearchFor = FromQt(search_for_->Path());
    entries.cbFileExt = FromQt(types_->Path());
    entries.cbDirectory = FromQt(folder_->Path());
    for (std::size_t number = 0; number < kFindSwitches; ++number)
        entries.*FindSwitches()[number].value = switches_[number]->isChecked();
    return entries;
}

void FindBoxes::SetEntries(const FindEntries& entries) {
    setting_ = true;
    search_for_->SetPath(ToQt(entries.cbSearchFor));
    types_->SetPath(ToQt(entries.cbFileExt));
    folder_->SetPath(ToQt(entries.cbDirectory));
    for (std::size_t number = 0; number < kFindSwitches; ++number)
        switches_[number]->setChecked(entries.*FindSwitches()[number].value);
    setting_ = false;
    ShowWords();
}

void FindBoxes::SetHistories(const FindHistories& histories) {
    search_for_->SetRecent(ToList(histories.cbSearchFor));
    types_->SetRecent(ToList(histories.cbFileExt));
    folder_->SetRecent(ToList(histories.cbDirectory));
}

void FindBoxes::SetRunning(bool running) {
    abort_->setMinimumWidth(running ? run_->width() : 0);
    run_->setVisible(!running);
    abort_->setVisible(running);
}

void FindBoxes::ShowWords() {
    search_for_->lineEdit()->setPlaceholderText(text_("What To Find"));
    folder_->lineEdit()->setPlaceholderText(text_("Folder"));
    types_->lineEdit()->setPlaceholderText(text_("File Types"));
    types_->setToolTip(text_("Patterns such as *.docx *.txt, with blanks between"));
    FitCaptions();
}

// ---- room ----

// The boxes stand under each other: the captions in front of them are as wide as the widest.
void FindBoxes::FitCaptions() {
    const bool captions = width() >= kCaptionsFrom;
    int wide = 0;
    for (QLabel* caption : {what_words_, where_words_}) {
        caption->setVisible(captions);
        // Not its hint, which is never below the width that it was given.
        wide = std::max(wide, caption->fontMetrics().horizontalAdvance(caption->text()));
    }
    for (QWidget* caption :
         {static_cast<QWidget*>(what_words_), static_cast<QWidget*>(where_words_), below_words_})
        caption->setFixedWidth(wide + kSmall);
    below_words_->setVisible(captions);
    types_words_->setVisible(captions);
    key_->setVisible(captions);
    types_->setFixedWidth(width() >= kWideTypesFrom ? kTypesWidth : kNarrowTypesWidth);
}

void FindBoxes::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    FitCaptions();
}

void FindBoxes::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
