#include "compare/ui/compare_dialogs.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "common/ui/check_boxes.h"
#include "common/ui/measures.h"
#include "common/ui/qt_text.h"

namespace zorvane {

using namespace measures;

// ---- go to ----

GoToDialog::GoToDialog(const UiText& text, std::int32_t current, std::int32_t count,
                       QWidget* parent)
    : Dialog(text("Go To Difference"), kNarrowDialog, parent),
      line_(new QLineEdit(this)),
      count_(count),
      wrong_(text("Type a number from 1 to %1").arg(count)) {
    AddColumn()->AddAbove(text("Number, from 1 to %1").arg(count), line_);
    line_->setText(QString::number(std::max(1, current)));
    SetButtons(text("Go There"), text("Cancel"));
    SetFirstFocus(line_);
}

std::int32_t GoToDialog::Number() const {
    return state_.lNumber();
}

bool GoToDialog::Check() {
    state_.Text1 = FromQt(line_->text());
    state_.cmdOK_Click();
    const bool fits = state_.lNumber() >= 1 && state_.lNumber() <= count_;
    if (!fits)
        ShowError(line_, wrong_);
    return fits;
}

// ---- find and replace ----

FindReplaceDialog::FindReplaceDialog(frmCompareFilesFindReplace& find, const UiText& text,
                                     QWidget* parent)
    : Dialog(text("Find And Replace"), kFormDialog, parent),
      find_(find),
      words_(new QLineEdit(this)),
      instead_(new QLineEdit(this)),
      whole_(new WrappingCheckBox(text("Whole Word &Only"), this)),
      case_(new WrappingCheckBox(text("Match &Case"), this)) {
    FormColumn* column = AddColumn();
    column->AddAbove(text("Find:"), words_);
    column->AddAbove(text("Replace with:"), instead_);
    column->AddInLine({whole_, case_});
    SetButtons(text("&Find Next"), text("&Done"));
    AcceptButton()->disconnect(this);
    const auto search = [this](bool forward) {
        Store();
        forward ? find_.Command1_Click() : find_.FindPrevious();
        if (found)
            found();
    };
    connect(AcceptButton(), &QPushButton::clicked, this, [search] { search(true); });
    // The window behind has the same keys.
    const auto add_key = [&](const QKeySequence& key, bool forward) {
        connect(new QShortcut(key, this), &QShortcut::activated, this,
                [search, forward] { search(forward); });
    };
    add_key(Qt::Key_F3, true);
    add_key(Qt::SHIFT | Qt::Key_F3, false);
    AddReplaceButtons(text);
    SetFirstFocus(words_);
}

void FindReplaceDialog::AddReplaceButtons(const UiText& text) {
    const auto add = [&](const char* words, auto act) {
        Button* button = AddThirdButton(text(words));
        button->setAutoDefault(false);
        replace_buttons_.push_back(button);
        connect(button, &QPushButton::clicked, this, [this, act] {
            Store();
            act();
            if (found)
                found();
        });
    };
    add("Find And &Replace", [this] { find_.Command2_Click(); });
    add("Replace All", [this] { find_.ReplaceAll(); });
}

void FindReplaceDialog::Store() {
    find_.Text1 = FromQt(words_->text());
    find_.Text2 = FromQt(instead_->text());
    find_.Check1 = whole_->isChecked();
    find_.Check2 = case_->isChecked();
}

void FindReplaceDialog::Show(bool read_only, bool replace) {
    words_->setText(ToQt(find_.Text1));
    instead_->setText(ToQt(find_.Text2));
    whole_->setChecked(find_.Check1);
    case_->setChecked(find_.Check2);
    instead_->setEnabled(!read_only);
    for (Button* button : replace_buttons_)
        button->setEnabled(!read_only);
    show();
    raise();
    activateWindow();
    QLineEdit* line = replace && !read_only && !words_->text().isEmpty() ? instead_ : words_;
    line->setFocus();
    line->selectAll();
}

void FindReplaceDialog::done(int result) {
    Store();
    find_.cmdDone_Click();
    Dialog::done(result);
    if (found)
        found();
}

}  // namespace zorvane
