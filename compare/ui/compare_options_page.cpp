#include <QHBoxLayout>
#include <QVBoxLayout>

#include "common/ui/check_boxes.h"
#include "common/ui/measures.h"
#include "compare/ui/command_buttons.h"
#include "compare/ui/option_pages.h"

namespace zorvane {

using namespace measures;

namespace {

using Set = clsCompareFileOptions;

struct LookRow {
    const char* words;
    LookMark kind;
    clsVarLong Set::*fore;
    clsVarLong Set::*back;
    clsVarBoolean Set::*bold;
    clsVarBoolean Set::*italic;
    clsVarBoolean Set::*underline;
    clsVarBoolean Set::*strike;
};
constexpr LookRow kLooks[] = {
    {"Changed, original", LookMark::Changed, &Set::lViewChangeForeColorOriginal,
     &Set::lViewChangeBackColorOriginal, &Set::bViewChangeBoldOriginal,
     &Set::bViewChangeItalicOriginal, &Set::bViewChangeUnderlineOriginal,
     &Set::bViewChangeStrikeoutOriginal},
    {"Changed, modified", LookMark::Changed, &Set::lViewChangeForeColorModified,
     &Set::lViewChangeBackColorModified, &Set::bViewChangeBoldModified,
     &Set::bViewChangeItalicModified, &Set::bViewChangeUnderlineModified,
     &Set::bViewChangeStrikeoutModified},
    {"Deleted", LookMark::Deleted, &Set::lViewDeletionForeColor, &Set::lViewDeletionBackColor,
     &Set::bViewDeletionBold, &Set::bViewDeletionItalic, &Set::bViewDeletionUnderline,
     &Set::bViewDeletionStrikeout},
    {"Added", LookMark::Added, &Set::lViewAdditionForeColor, &Set::lViewAdditionBackColor,
     &Set::bViewAdditionBold, &Set::bViewAdditionItalic, &Set::bViewAdditionUnderline,
     &Set::bViewAdditionStrikeout},
};

MarkChoice ChoiceOf(const Set& options, const LookRow& row) {
    return {{(options.*row.fore).Data(), (options.*row.back).Data()},
            (options.*row.bold).Data(),
            (options.*row.italic).Data(),
            (options.*row.underline).Data(),
            (options.*row.strike).Data()};
}

void StoreChoice(Set& options, const LookRow& row, const MarkChoice& choice) {
    (options.*row.fore).SetData(choice.colors.fore);
    (options.*row.back).SetData(choice.colors.back);
    (options.*row.bold).SetData(choice.bold);
    (options.*row.italic).SetData(choice.italic);
    (options.*row.underline).SetData(choice.underline);
    (options.*row.strike).SetData(choice.strike);
}

}  // namespace

CompareOptionsPage::CompareOptionsPage(frmCompareFiles& viewer, CommandSet& commands, UiText text,
                                       QWidget* parent)
    : QWidget(parent), viewer_(viewer), text_(std::move(text)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kMedium);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(2 * kLarge);
    columns->addWidget(MakeLeaveOut(), 1, Qt::AlignTop);
    columns->addWidget(MakeHow(), 1, Qt::AlignTop);
    columns->addWidget(MakeWhile(), 1, Qt::AlignTop);
    columns->addWidget(MakeLooks(), 1, Qt::AlignTop);
    rows->addLayout(columns);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kSmall);
    const auto add = [&](const char* id, const char* words) {
        buttons->addWidget(
            MakeCommandButton(commands, id, text_(words), ButtonLook::Plain, "", this));
    };
    add("compare.advanced", "Advanced...");
    add("file.type_options", "File Type Options...");
    buttons->addStretch(1);
    add("compare.defaults", "Restore Defaults");
    rows->addLayout(buttons);
    binding_.Show();
}

void CompareOptionsPage::AddBox(FormColumn& column, const char* words, clsVarBoolean& option) {
    auto* box = new WrappingCheckBox(text_(words), &column);
    column.AddWidget(box);
    binding_.Check(
        box, [&option] { return option.Data(); }, [&option](bool on) { option.SetData(on); });
}

FormColumn* CompareOptionsPage::MakeLeaveOut() {
    Set& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Leave out"));
    AddBox(*column, "Ignore Case", options.bIgnoreCase);
    AddBox(*column, "Ignore Whitespace", options.bIgnoreWhitespace);
    AddBox(*column, "Ignore Empty Lines", options.bIgnoreEmptyLines);
    auto* expression = new QLineEdit(column);
    column->AddAbove(text_("Ignore regular expression"), expression);
    binding_.Text(
        expression, [&options] { return options.sIgnoreRegularExpression.Data(); },
        [&options](const std::string& words) { options.sIgnoreRegularExpression.SetData(words); });
    return column;
}

FormColumn* CompareOptionsPage::MakeHow() {
    Set& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("How to compare"));
    AddBox(*column, "Remove Formatting", options.bRemoveFormatting);
    AddBox(*column, "Remove Blank Lines", options.bRemoveBlankLines);
    AddBox(*column, "Compare By Character", options.bCompareByCharacter);
    AddBox(*column, "Quick Compare", options.bQuickCompare);
    AddBox(*column, "Show Changes Within Paragraphs Alike",
           options.bShowSubParagraphChangesSimilarly);
    return column;
}

FormColumn* CompareOptionsPage::MakeWhile() {
    Set& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("While working"));
    AddBox(*column, "Reload On Refresh", options.bReloadOnRefresh);
    AddBox(*column, "Select Text In Difference View", options.bSelectTextInDiffViewer);
    AddBox(*column, "Beep When Done", options.bBeepWhenDone);
    return column;
}

FormColumn* CompareOptionsPage::MakeLooks() {
    auto* column = new FormColumn(this);
    column->AddHeading(text_("Look of differences"));
    for (const LookRow& look : kLooks) {
        auto* row = new MarkStyleRow(look.kind, text_(look.words), text_, column);
        row->setContentsMargins(0, 0, 0, kTiny);
        column->AddWidget(row);
        Set& options = viewer_.Options();
        binding_.Add([row, &look, &options] { row->SetChoice(ChoiceOf(options, look)); });
        connect(row, &MarkStyleRow::Changed, this, [this, row, &look, &options] {
            binding_.Write([&] { StoreChoice(options, look, row->Choice()); });
        });
    }
    return column;
}

}  // namespace zorvane
