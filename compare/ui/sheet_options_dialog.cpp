// How workbooks and comma-delimited files become text, and the choice of sheets.
#include <QApplication>
#include <QHBoxLayout>

#include "common/ui/measures.h"
#include "common/ui/question.h"
#include "compare/ui/type_dialogs.h"
#include "load/sheet_names.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kMostPadding = 9999;
constexpr int kSheetRows = 8;

using Set = clsCompareFileOptions;
/// The options of one side. "Master" is the original, "Source" the modified document.
struct SideOptions {
    clsVarString Set::*sheets;
    clsVarBoolean Set::*use_rows;
    clsVarString Set::*rows;
    clsVarBoolean Set::*use_columns;
    clsVarString Set::*columns;
    clsVarString Set::*open;
    clsVarString Set::*write;
};
constexpr SideOptions kOriginal = {&Set::sExcelSheetNumberMaster,  &Set::bExcelUseRowsMaster,
                                   &Set::sExcelRowsMaster,         &Set::bExcelUseColsMaster,
                                   &Set::sExcelColsMaster,         &Set::sExcelPasswordOriginal,
                                   &Set::sExcelPasswordOriginal_TW};
constexpr SideOptions kModified = {&Set::sExcelSheetNumberSource,  &Set::bExcelUseRowsSource,
                                   &Set::sExcelRowsSource,         &Set::bExcelUseColsSource,
                                   &Set::sExcelColsSource,         &Set::sExcelPasswordModified,
                                   &Set::sExcelPasswordModified_TW};

struct BoxRow {
    const char* caption;
    clsVarBoolean Set::*option;
};
constexpr BoxRow kExtraction[] = {
    {"Do Quick Text Extraction", &Set::bExcelQuickTextExtraction},
    {"Compare Formulas", &Set::bExcelCompareFormulas},
    {"Include Values", &Set::bExcelIncludeValues},
};
constexpr BoxRow kBetween[] = {
    {"Add New Line Between Sheets", &Set::bExcelAddNewLineBetweenSheets},
    {"Add Sheet Name Between Sheets", &Set::bExcelAddSheetNameBetweenSheets},
};

// What the dialog shows of the options, and nothing else, as it comes.
void SetDefaults(Set& options) {
    const Set fresh = DefaultCompareFileOptions();
    const auto set = [&](auto option) { (options.*option).SetData((fresh.*option).Data()); };
    for (const SideOptions* side : {&kOriginal, &kModified}) {
        for (clsVarString Set::*text :
             {side->sheets, side->rows, side->columns, side->open, side->write})
            set(text);
        set(side->use_rows);
        set(side->use_columns);
    }
    for (const BoxRow& row : kExtraction)
        set(row.option);
    for (const BoxRow& row : kBetween)
        set(row.option);
    set(&Set::lPadLength);
}

}  // namespace

SheetOptionsDialog::SheetOptionsDialog(const clsCompareFileOptions& options,
                                       PerSide<bool> has_sheets, ReadSheets read, UiText text,
                                       QWidget* parent)
    : Dialog(text("Spreadsheet Comparison Options"), kWideDialog, parent),
      options_(options),
      read_(std::move(read)),
      text_(std::move(text)) {
    AddSide(*AddColumn(), Side::Original, has_sheets.original);
    AddSide(*AddColumn(), Side::Modified, has_sheets.modified);
    StartRow(Parted::ByLine);
    AddExtraction(*AddColumn());
    AddBetween(*AddColumn());
    SetButtons(text_("Apply"), text_("Cancel"));
    Button* defaults = AddThirdButton(text_("Restore Defaults"));
    connect(defaults, &QPushButton::clicked, this, [this] {
        SetDefaults(options_);
        ties_.Show();
    });
    ties_.changed = [this] { UpdateGUI(); };
    ties_.Show();
}

void SheetOptionsDialog::AddSide(FormColumn& column, Side side, bool has_sheets) {
    const bool original = side == Side::Original;
    const SideOptions& own = original ? kOriginal : kModified;
    column.AddHeading(text_(original ? "Original File" : "Modified File"));
    auto* row = new QWidget(&column);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kSmall);
    auto* sheets = new QLineEdit(row);
    sheets->setPlaceholderText(QStringLiteral("1-2, 12, 20, *"));
    line->addWidget(sheets, 1);
    auto* choose = new Button(QStringLiteral("..."), ButtonLook::Plain, QString(), row);
    choose->setAccessibleName(text_("Select Sheet"));
    choose->setToolTip(text_("Choose sheets of this workbook by their names"));
    choose->setAutoDefault(false);
    choose->setEnabled(has_sheets);
    line->addWidget(choose);
    row->setFocusProxy(sheets);
    column.AddAbove(text_("Sheets, by number or name"), row);
    ties_.Tie(*sheets, options_.*own.sheets);
    AddCrop(column, "Only these rows", options_.*own.use_rows, options_.*own.rows);
    AddCrop(column, "Only these columns", options_.*own.use_columns, options_.*own.columns);
    const auto password = [&](const char* caption, clsVarString& value) {
        QLineEdit* field = MakePasswordLine(&column);
        column.AddAbove(text_(caption), field);
        ties_.Tie(*field, value);
        field->setObjectName(ToQt(value.Name()));
        return field;
    };
    const QLineEdit* opens = password("Password To OPEN", options_.*own.open);
    password("Password To WRITE", options_.*own.write);
    connect(choose, &QPushButton::clicked, this,
            [this, side, sheets, opens] { ChooseSheets(side, *sheets, *opens); });
    sheets->setObjectName(ToQt((options_.*own.sheets).Name()));
    if (original)
        SetFirstFocus(sheets);
}

void SheetOptionsDialog::AddCrop(FormColumn& column, const char* caption, clsVarBoolean& use,
                                 clsVarString& list) {
    auto* box = new WrappingCheckBox(text_(caption), &column);
    auto* line = new QLineEdit(&column);
    line->setPlaceholderText(QStringLiteral("1, 12, 20,30-50"));
    line->setAccessibleName(text_(caption));
    line->setObjectName(ToQt(list.Name()));
    auto* room = new QWidget(&column);
    auto* rows = new QVBoxLayout(room);
    rows->setContentsMargins(0, kSmall, 0, 0);
    rows->setSpacing(kTiny);
    rows->addWidget(box);
    rows->addWidget(line);
    column.AddWidget(room);
    ties_.Tie(*box, use);
    ties_.Tie(*line, list);
    depends_.emplace_back(box, line);
}

void SheetOptionsDialog::AddExtraction(FormColumn& column) {
    column.AddHeading(text_("Extraction"));
    QCheckBox* formulas = nullptr;
    for (const BoxRow& row : kExtraction) {
        QCheckBox* box = AddTiedBox(column, ties_, text_(row.caption), options_.*row.option);
        if (row.option == &Set::bExcelCompareFormulas)
            formulas = box;
        else if (row.option == &Set::bExcelIncludeValues)
            depends_.emplace_back(formulas, box);
    }
}

void SheetOptionsDialog::AddBetween(FormColumn& column) {
    column.AddHeading(text_("Sheets and cells"));
    for (const BoxRow& row : kBetween)
        AddTiedBox(column, ties_, text_(row.caption), options_.*row.option);
    auto* padding = new NumberBox(0, kMostPadding, &column);
    column.AddBeside(text_("Pad Each Cell With This Many Spaces"), padding);
    ties_.Tie(*padding, options_.lPadLength);
    column.AddHint(text_("Use 0 for no padding."));
}

void SheetOptionsDialog::UpdateGUI() {
    for (const auto& [box, dependent] : depends_)
        dependent->setEnabled(box->isChecked());
}

void SheetOptionsDialog::ChooseSheets(Side side, QLineEdit& line, const QLineEdit& password) {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    const auto names = read_(side, FromQt(password.text()));
    QApplication::restoreOverrideCursor();
    if (!names.ok()) {
        Tell(text_("Select Sheet"), ToQt(names.failure().reason), text_("OK"), this);
    } else {
        SelectSheetDialog dialog(names.value(), text_, this);
        if (dialog.exec() == QDialog::Accepted)
            line.setText(ToQt(dialog.Selected()));
    }
    line.setFocus(Qt::OtherFocusReason);
}

bool SheetOptionsDialog::Check() {
    ties_.Take();
    return true;
}

// ---- the choice of sheets ----

SelectSheetDialog::SelectSheetDialog(const std::vector<std::string>& names, const UiText& text,
                                     QWidget* parent)
    : Dialog(text("Select Sheet"), kNarrowDialog, parent),
      list_(new ListBox(text("Sheets"), kSheetRows, this)) {
    QStringList items;
    for (const std::string& name : names)
        items.append(ToQt(name));
    list_->SetItems(items);
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    AddColumn()->AddAbove(text("Sheets, several if you like"), list_);
    SetButtons(text("&Select"), text("&Cancel"));
    SetFirstFocus(list_);
    const auto follow = [this] { AcceptButton()->setEnabled(!list_->selectedItems().isEmpty()); };
    connect(list_, &QListWidget::itemSelectionChanged, this, follow);
    follow();
}

std::string SelectSheetDialog::Selected() const {
    std::vector<std::string> names;
    for (int row = 0; row < list_->count(); ++row)
        if (list_->item(row)->isSelected())
            names.push_back(FromQt(list_->item(row)->text()));
    return JoinedSheetNames(names);
}

}  // namespace zorvane
