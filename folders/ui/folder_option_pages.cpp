#include "folders/ui/folder_option_pages.h"

#include <QHBoxLayout>

#include "common/ui/bars.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

// ---- what is compared ----

FolderOptionsPage::FolderOptionsPage(frmCompareDir& viewer, UiText text, QWidget* parent)
    : QWidget(parent), viewer_(viewer), text_(std::move(text)) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    columns->addWidget(MakeWhat(), 1, Qt::AlignTop);
    columns->addWidget(MakeListed(), 1, Qt::AlignTop);
    columns->addWidget(MakeHow(), 1, Qt::AlignTop);
    ShowValues();
}

WrappingCheckBox* FolderOptionsPage::AddBox(FormColumn& column, const char* words,
                                            std::function<bool()> read,
                                            std::function<void(bool)> write) {
    auto* box = new WrappingCheckBox(text_(words), &column);
    column.AddWidget(box);
    binding_.Check(box, std::move(read), std::move(write));
    return box;
}

WrappingCheckBox* FolderOptionsPage::AddOption(FormColumn& column, const char* words,
                                               clsVarBoolean& option) {
    return AddBox(
        column, words, [&option] { return option.Data(); },
        [&option](bool on) { option.SetData(on); });
}

FormColumn* FolderOptionsPage::MakeWhat() {
    clsCompareFolderOptions& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("How to compare"));
    AddBox(
        *column, "Compare File Contents", [&options] { return options.bContentCompare.Data(); },
        [this](bool on) { viewer_.ClickContentCompare(on); });
    texts_ = AddBox(
        *column, "Compare the Text of Files That Differ",
        [this] { return ControlsOf(viewer_.Options()).ticked_text; },
        [this](bool on) { viewer_.ClickContentCompareText(on); });
    column->AddHint(text_("As the first Compare Files window does."));
    text_options_ = new Button(text_("Text Options..."), ButtonLook::Plain, QString(), column);
    connect(text_options_, &Button::clicked, this, [this] { text_options_wanted(); });
    column->AddInLine({text_options_});
    AddOption(*column, "Ignore Date Differences", options.bIgnoreDateDifferences);
    return column;
}

FormColumn* FolderOptionsPage::MakeListed() {
    clsCompareFolderOptions& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("What is listed"));
    AddOption(*column, "Only in the Original Folder", options.bShowOnlyInMaster);
    AddOption(*column, "Only in the Modified Folder", options.bShowOnlyInSource);
    AddBox(
        *column, "Different in Both",
        [&options] { return options.bShowDifferentInBothPlaces.Data(); },
        [this](bool on) { viewer_.ClickShowDifferentInBothPlaces(on); });
    AddOption(*column, "The Same in Both", options.bShowSameInBothPlaces);
    AddBox(
        *column, "Renamed and Moved Files", [this] { return viewer_.Settings().TellRenamed; },
        [this](bool on) { viewer_.ClickTellRenamed(on); });
    return column;
}

FormColumn* FolderOptionsPage::MakeHow() {
    clsCompareFolderOptions& options = viewer_.Options();
    auto* column = new FormColumn(this);
    column->AddHeading(text_("While working"));
    AddOption(*column, "Look Into Subfolders", options.bDoSubDirectories);
    AddBox(
        *column, "Show Rows When All Are There", [this] { return viewer_.cbDontStreamResults; },
        [this](bool on) { viewer_.cbDontStreamResults = on; });
    AddOption(*column, "Beep When Done", options.bBeepWhenDone);
    return column;
}

void FolderOptionsPage::ShowValues() {
    binding_.Show();
    const FolderOptionControls controls = ControlsOf(viewer_.Options());
    texts_->setEnabled(controls.cbCompareFileTextualContents);
    text_options_->setEnabled(controls.cmdTextCompareOptions);
}

// ---- reports ----

FolderReportPage::FolderReportPage(frmCompareDir& viewer, UiText text, QWidget* parent)
    : QWidget(parent), viewer_(viewer), text_(std::move(text)) {
    QHBoxLayout* columns = MakeOptionColumns(this);
    columns->addWidget(MakePairs(), 1, Qt::AlignTop);
    columns->addWidget(MakeTable(), 1, Qt::AlignTop);
    ShowValues();
}

FormColumn* FolderReportPage::MakePairs() {
    auto* column = new FormColumn(this);
    column->AddHeading(text_("A report for each pair whose text differs"));
    create_ = new WrappingCheckBox(text_("Create Report"), column);
    column->AddWidget(create_);
    binding_.Check(
        create_, [this] { return ControlsOf(viewer_.Options()).ticked_report; },
        [this](bool on) { viewer_.ClickCreateReport(on); });
    folder_ = new PathField(text_("Browse For Folder"), column);
    column->AddAbove(text_("Folder"), folder_);
    binding_.Path(
        &folder_->Line(), [this] { return viewer_.txtReportFolder; },
        [this](const std::string& path) { viewer_.txtReportFolder = path; });
    connect(&folder_->Browse(), &QToolButton::clicked, this,
            [this] { viewer_.SelectReportFolder(); });
    report_options_ = new Button(text_("Report Options..."), ButtonLook::Plain, QString(), column);
    connect(report_options_, &Button::clicked, this, [this] { report_options_wanted(); });
    column->AddInLine({report_options_});
    return column;
}

FormColumn* FolderReportPage::MakeTable() {
    auto* column = new FormColumn(this);
    column->AddHeading(text_("The report of all rows"));
    auto* file = new PathField(text_("Pick Find CSV Report File"), column);
    column->AddAbove(text_("File, a row for each record with tabs between"), file);
    binding_.Path(
        &file->Line(), [this] { return viewer_.Settings().txtDefaultReportCSV; },
        [this](const std::string& path) { viewer_.Settings().txtDefaultReportCSV = path; });
    connect(&file->Browse(), &QToolButton::clicked, this, [this] { viewer_.SelectReportFile(); });
    return column;
}

void FolderReportPage::ShowValues() {
    binding_.Show();
    const FolderOptionControls controls = ControlsOf(viewer_.Options());
    create_->setEnabled(controls.cbCreateReport);
    folder_->setEnabled(controls.frameReportOptions);
    report_options_->setEnabled(controls.cmdReportOptions);
}

}  // namespace zorvane
