#include "common/ui/language_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include "common/ui/font_dialog.h"
#include "common/ui/measures.h"

namespace zorvane {

namespace {

constexpr int kShownLanguages = 6;

}  // namespace

LanguageDialog::LanguageDialog(const LanguageList& offered, const QString& font, Actions actions,
                               UiText text, QWidget* parent)
    : Dialog(text("Language"), measures::kFormDialog, parent),
      actions_(std::move(actions)),
      text_(std::move(text)),
      font_(font),
      languages_(new ListBox(text_("Language"), kShownLanguages, this)) {
    QStringList names;
    for (const std::string& language : offered.languages)
        names.append(ToQt(language));
    languages_->SetItems(names);
    languages_->setCurrentRow(static_cast<int>(offered.selected));
    AddColumn()->AddAbove(text_("Language"), languages_);
    AddFont(*AddColumn());
    SetButtons(text_("Apply"), text_("Cancel"));
    Button* help = AddThirdButton(text_("Help"));
    connect(help, &QPushButton::clicked, this, [this] {
        if (actions_.help)
            actions_.help();
    });
    connect(languages_, &QListWidget::currentRowChanged, this, &LanguageDialog::ShowChosen);
    connect(languages_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    SetFirstFocus(languages_);
    ShowChosen();
}

void LanguageDialog::AddFont(FormColumn& column) {
    font_name_ = new QLabel(&column);
    font_name_->setTextFormat(Qt::PlainText);
    auto* row = new QWidget(&column);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(measures::kSmall);
    auto* font = new Button(text_("Font..."), ButtonLook::Plain, QString(), row);
    font_name_->setParent(row);
    line->addWidget(font_name_, 1);
    line->addWidget(font);
    column.AddAbove(text_("Font"), row);
    column.AddHeading(text_("Language file"));
    edit_ = new Button(text_("Edit Language File"), ButtonLook::Plain, QString(), &column);
    column.AddInLine({edit_});
    column.AddHint(text_("Texts without a translation stand at the end of the file."));
    connect(font, &QPushButton::clicked, this, &LanguageDialog::ChooseFont);
    connect(edit_, &QPushButton::clicked, this, [this] {
        if (actions_.edit_file)
            actions_.edit_file(languages_->Current());
    });
}

void LanguageDialog::ChooseFont() {
    FontDialog dialog(text_, {chosen_font_.isEmpty() ? font_ : chosen_font_, 0}, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    chosen_font_ = dialog.Choice().family;
    ShowChosen();
}

void LanguageDialog::ShowChosen() {
    const QString font = chosen_font_.isEmpty() ? font_ : chosen_font_;
    font_name_->setText(font.isEmpty() ? text_("The desktop's font") : font);
    // English stands first and has no file.
    edit_->setEnabled(languages_->currentRow() > 0);
    AcceptButton()->setEnabled(languages_->currentRow() >= 0);
}

LanguageChoice LanguageDialog::Choice() const {
    if (result() != QDialog::Accepted)
        return {};
    return {FromQt(languages_->Current()), FromQt(chosen_font_)};
}

void LanguageDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 && actions_.help)
        actions_.help();
    else
        Dialog::keyPressEvent(event);
}

}  // namespace zorvane
