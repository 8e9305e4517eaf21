// Which extensions are text.
#include <QHBoxLayout>
#include <QKeyEvent>

#include "common/ui/measures.h"
#include "compare/ui/type_dialogs.h"

namespace zorvane {

namespace {

constexpr int kRows = 6;

}  // namespace

TextOptionsDialog::TextOptionsDialog(const clsMRU& extensions, UiText text, QWidget* parent)
    : Dialog(text("Text Comparison Options"), measures::kFormDialog, parent),
      state_(extensions),
      text_(std::move(text)),
      line_(new QLineEdit(this)),
      list_(new ListBox(text_("Extensions of text files"), kRows, this)) {
    FormColumn* column = AddColumn();
    column->AddHint(
        text_("Please add any file extensions that are text files so that 'Zorvane' will "
              "properly compare them. Note: ONLY add file extensions that are exclusively "
              "TEXT files"));
    line_->setObjectName(QStringLiteral("extension"));
    AddButtons(*column);
    column->AddWidget(list_);
    SetButtons(text_("Apply"), text_("Cancel"));
    Button* defaults = AddThirdButton(text_("Restore Defaults"));
    defaults->setAutoDefault(false);
    connect(defaults, &QPushButton::clicked, this, [this] {
        state_.RestoreDefaults();
        ShowEntries();
    });
    connect(line_, &QLineEdit::textChanged, this, &TextOptionsDialog::UpdateGUI);
    connect(list_, &QListWidget::currentTextChanged, this, [this](const QString& entry) {
        if (!entry.isEmpty() && list_->hasFocus())
            line_->setText(entry);
    });
    connect(list_, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { line_->setText(item->text()); });
    SetFirstFocus(line_);
    ShowEntries();
}

void TextOptionsDialog::AddButtons(FormColumn& column) {
    auto* row = new QWidget(this);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, measures::kSmall);
    line->setSpacing(measures::kSmall);
    line->addWidget(line_, 1);
    add_ = new Button(text_("Add"), ButtonLook::Plain, QString(), row);
    delete_ = new Button(text_("Delete"), ButtonLook::Plain, QString(), row);
    for (Button* button : {add_, delete_}) {
        button->setAutoDefault(false);
        line->addWidget(button);
    }
    row->setFocusProxy(line_);
    column.AddAbove(text_("Extension"), row);
    connect(add_, &QPushButton::clicked, this, &TextOptionsDialog::Add);
    connect(delete_, &QPushButton::clicked, this, &TextOptionsDialog::Delete);
}

void TextOptionsDialog::Add() {
    ClearErrors();
    if (!state_.cmdAdd_Click()) {
        ShowError(line_, text_("An extension has letters and digits, and stands in the list once"));
        line_->selectAll();
        return;
    }
    ShowEntries();
    line_->setFocus();
    line_->selectAll();
}

void TextOptionsDialog::Delete() {
    ClearErrors();
    if (!state_.cmdDelete_Click()) {
        ShowError(line_, text_("The last extension stays"));
        return;
    }
    ShowEntries();
    line_->setFocus();
}

void TextOptionsDialog::ShowEntries() {
    const QSignalBlocker silent(list_);
    QStringList entries;
    for (const std::string& entry : state_.Entries())
        entries.append(ToQt(entry));
    list_->SetItems(entries);
    line_->setText(ToQt(state_.Text));
    UpdateGUI();
}

// What is typed and is an entry is the selected one.
void TextOptionsDialog::UpdateGUI() {
    state_.Text = FromQt(line_->text());
    add_->setEnabled(state_.CanAdd());
    delete_->setEnabled(state_.CanDelete());
    const QSignalBlocker silent(list_);
    const auto selected = state_.Selected();
    list_->setCurrentRow(selected ? static_cast<int>(*selected) : -1);
}

// Enter adds what is typed; with nothing to add it is Apply's.
void TextOptionsDialog::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == line_ && state_.CanAdd())
        Add();
    else
        Dialog::keyPressEvent(event);
}

// What was typed and not added is not lost in silence.
bool TextOptionsDialog::Check() {
    if (!state_.CanAdd())
        return true;
    Add();
    return !state_.CanAdd();
}

}  // namespace zorvane
