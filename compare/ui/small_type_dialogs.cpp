// The dialogs of file types with few options: documents, slides, web pages.
#include <QHBoxLayout>

#include "common/ui/measures.h"
#include "compare/ui/type_dialogs.h"

namespace zorvane {

using namespace measures;

QLineEdit* MakePasswordLine(QWidget* parent) {
    auto* line = new QLineEdit(parent);
    line->setEchoMode(QLineEdit::Password);
    return line;
}

// ---- documents ----

WordOptionsDialog::WordOptionsDialog(const clsCompareFileOptions& options, const UiText& text,
                                     QWidget* parent)
    : Dialog(text("Word Comparison Options"), kFormDialog, parent), options_(options) {
    AddColumn()->AddHint(
        text("Word documents sometimes require a password.  Leave empty if no password is "
             "required."));
    StartRow(Parted::Plain);
    const auto add = [&](FormColumn& column, const char* caption, clsVarString& password) {
        QLineEdit* line = MakePasswordLine(&column);
        line->setObjectName(ToQt(password.Name()));
        column.AddAbove(text(caption), line);
        ties_.Tie(*line, password);
        return line;
    };
    FormColumn* original = AddColumn();
    original->AddHeading(text("Original File"));
    SetFirstFocus(add(*original, "Password To OPEN Document", options_.sDOCPassword_TO_Original));
    add(*original, "Password To Open Document Template", options_.sDOCPasswordTemplate_TO_Original);
    FormColumn* modified = AddColumn();
    modified->AddHeading(text("Modified File"));
    add(*modified, "Password To OPEN Document", options_.sDOCPassword_TO_Modified);
    add(*modified, "Password To Open Document Template", options_.sDOCPasswordTemplate_TO_Modified);
    SetButtons(text("Apply"), text("Cancel"));
    ties_.Show();
}

bool WordOptionsDialog::Check() {
    ties_.Take();
    return true;
}

// ---- slides ----

namespace {

constexpr int kMostSlides = 99'999;

}  // namespace

SlideOptionsDialog::SlideOptionsDialog(const CompareFilesSettings& settings, const UiText& text,
                                       QWidget* parent)
    : Dialog(text("PowerPoint Comparison Options"), kFormDialog, parent), settings_(settings) {
    all_ = settings.bConvertAllSlides ? 1 : 0;
    FormColumn* top = AddColumn();
    auto* which = new QButtonGroup(this);
    for (const auto& [id, words] :
         {std::pair(1, "Compare All Slides"), std::pair(0, "Specify Which Slides to Compare")}) {
        auto* button = new WrappingRadioButton(text(words), top);
        which->addButton(button, id);
        top->AddWidget(button);
    }
    ties_.Tie(*which, all_);
    StartRow(Parted::Plain);
    AddSide(*AddColumn(), text, Side::Original);
    AddSide(*AddColumn(), text, Side::Modified);
    StartRow(Parted::ByLine);
    FormColumn* notes = AddColumn();
    AddTiedBox(*notes, ties_, text("Add Slide and Shape Number"),
               settings_.bShowSlideAndShapeNumber);
    AddTiedBox(*notes, ties_, text("Include &NOTES"), settings_.bIncludeNotes);
    only_notes_ =
        AddTiedBox(*notes, ties_, text("&ONLY Include notes"), settings_.bIncludeNotesOnly);
    notes->AddHint(text("NOTES are only available when the 'Remove Formatting' option is chosen"));
    SetButtons(text("Apply"), text("Cancel"));
    Button* defaults = AddThirdButton(text("Restore Defaults"));
    connect(defaults, &QPushButton::clicked, this, [this] {
        const CompareFilesSettings fresh;
        all_ = 1;
        settings_.bShowSlideAndShapeNumber = fresh.bShowSlideAndShapeNumber;
        settings_.bIncludeNotes = fresh.bIncludeNotes;
        settings_.bIncludeNotesOnly = fresh.bIncludeNotesOnly;
        for (const auto& [box, number] : numbers_)
            box->setValue(fresh.*number);
        ties_.Show();
    });
    ties_.changed = [this] { UpdateGUI(); };
    ties_.Show();
    SetFirstFocus(which->checkedButton());
}

void SlideOptionsDialog::AddSide(FormColumn& column, const UiText& text, Side side) {
    using Number = std::int32_t CompareFilesSettings::*;
    const bool original = side == Side::Original;
    column.AddHeading(text(original ? "Original File" : "Modified File"));
    const std::pair<const char*, Number> kRows[] = {
        {"From Slide", original ? &CompareFilesSettings::lFromSlideOriginal
                                : &CompareFilesSettings::lFromSlideModified},
        {"To Slide", original ? &CompareFilesSettings::lToSlideOriginal
                              : &CompareFilesSettings::lToSlideModified}};
    for (const auto& [caption, number] : kRows) {
        auto* box = new OptionalNumberBox(kMostSlides, &column);
        box->setValue(settings_.*number);
        column.AddBeside(text(caption), box);
        numbers_.emplace_back(box, number);
    }
}

void SlideOptionsDialog::UpdateGUI() {
    for (const auto& [box, number] : numbers_)
        box->setEnabled(all_ == 0);
    only_notes_->setEnabled(settings_.bIncludeNotes);
}

// A number that is left out stays what it was.
bool SlideOptionsDialog::Check() {
    ties_.Take();
    settings_.bConvertAllSlides = all_ == 1;
    for (const auto& [box, number] : numbers_)
        if (!box->IsEmpty())
            settings_.*number = box->value();
    return true;
}

// ---- web pages ----

HtmlOptionsDialog::HtmlOptionsDialog(const clsCompareFileOptions& options, const UiText& text,
                                     QWidget* parent)
    : Dialog(text("HTML Comparison Options"), kFormDialog, parent), options_(options) {
    FormColumn* column = AddColumn();
    column->AddHint(
        text("To compare HTML Source Script, check the box below.  Otherwise, textual content "
             "will be compared."));
    SetFirstFocus(
        AddTiedBox(*column, ties_, text("Compare HTML Source"), options_.bHTMLCompareSource));
    SetButtons(text("Apply"), text("Cancel"));
    ties_.Show();
}

bool HtmlOptionsDialog::Check() {
    ties_.Take();
    return true;
}

}  // namespace zorvane
