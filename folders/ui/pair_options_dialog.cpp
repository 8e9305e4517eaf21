#include "folders/ui/pair_options_dialog.h"

#include <QCursor>
#include <QMenu>

#include "app/command_line_request.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "common/ui/file_dialogs.h"
#include "common/ui/qt_text.h"
#include "compare/ui/advanced_options_dialog.h"
#include "compare/ui/command_buttons.h"
#include "compare/ui/compare_commands.h"
#include "compare/ui/option_pages.h"
#include "compare/ui/report_options_dialog.h"
#include "compare/ui/type_dialogs.h"
#include "folders/text_check.h"

namespace zorvane {
namespace {

constexpr int kWidth = 900;

}  // namespace

PairOptionsDialog::PairOptionsDialog(ProcessState& process, UiText text, QWidget* parent)
    : Dialog(text("Text and Report Options"), kWidth, parent),
      process_(process),
      text_(std::move(text)),
      viewer_(process, CommandLineRequest(), window_),
      commands_({CompareCommands()}, text_, *this),
      pages_(new OptionArea(text_, this)) {
    viewer_.Setup(kTextCheckSection, true);
    BindCommands();
    BindTypes();
    commands_.Refresh();
    compare_ = new CompareOptionsPage(viewer_, commands_, text_, pages_);
    report_ = new ReportOptionsPage(viewer_, commands_, text_, pages_,
                                    ReportOptionsPage::ReportButton::Absent);
    pages_->AddPage(compare_, text_("Compare Options"));
    pages_->AddPage(report_, text_("Report Options"));
    pages_->SetUnfolded(true);
    AddWide(pages_);
    SetButtons(text_("Close"), QString());
    compare_->Binding().Show();
    report_->Binding().Show();
    connect(pages_, &OptionArea::FoldWanted, this, [this] { accept(); });
}

// ---- what its buttons run ----

void PairOptionsDialog::BindCommands() {
    const auto bind = [this](const char* id, void (PairOptionsDialog::*run)()) {
        commands_.Bind(id, {.run = [this, run] {
                           (this->*run)();
                           compare_->Binding().Show();
                           report_->Binding().Show();
                       }});
    };
    bind("compare.advanced", &PairOptionsDialog::EditOptions<AdvancedOptionsDialog>);
    bind("compare.defaults", &PairOptionsDialog::RestoreDefaults);
    bind("file.type_options", &PairOptionsDialog::ChooseType);
    bind("report.options", &PairOptionsDialog::EditReports);
}

void PairOptionsDialog::BindTypes() {
    const auto bind = [this](const char* id, void (PairOptionsDialog::*run)()) {
        commands_.Bind(id, {.run = [this, run] { (this->*run)(); }});
    };
    bind("types.text", &PairOptionsDialog::EditExtensions);
    bind("types.word", &PairOptionsDialog::EditOptions<WordOptionsDialog>);
    bind("types.pdf", &PairOptionsDialog::EditSettings<PdfOptionsDialog>);
    bind("types.sheets", &PairOptionsDialog::EditSheets);
    bind("types.slides", &PairOptionsDialog::EditSettings<SlideOptionsDialog>);
    bind("types.html", &PairOptionsDialog::EditOptions<HtmlOptionsDialog>);
}

// Files of all types are compared: the person says which is meant.
void PairOptionsDialog::ChooseType() {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    dress(*menu);
    for (const char* id :
         {"types.text", "types.word", "types.pdf", "types.sheets", "types.slides", "types.html"})
        menu->addAction(commands_.Action(id));
    menu->popup(QCursor::pos());
}

template <class Shown>
void PairOptionsDialog::EditOptions() {
    Shown dialog(viewer_.Options(), text_, this);
    if (dialog.exec() == QDialog::Accepted)
        viewer_.Options() = dialog.Options();
}

template <class Shown>
void PairOptionsDialog::EditSettings() {
    Shown dialog(viewer_.Settings(), text_, this);
    if (dialog.exec() == QDialog::Accepted)
        viewer_.Settings() = dialog.Settings();
}

void PairOptionsDialog::EditExtensions() {
    TextOptionsDialog dialog(viewer_.TextFileExtensions(), text_, this);
    if (dialog.exec() == QDialog::Accepted && dialog.State().Changed())
        dialog.State().cmdApply_Click(viewer_.TextFileExtensions());
}

// There is no workbook whose sheets could be listed.
void PairOptionsDialog::EditSheets() {
    const auto read = [](Side, const std::string&) -> Result<std::vector<std::string>> {
        return std::vector<std::string>();
    };
    SheetOptionsDialog dialog(viewer_.Options(), {false, false}, read, text_, this);
    if (dialog.exec() == QDialog::Accepted)
        viewer_.Options() = dialog.Options();
}

void PairOptionsDialog::EditReports() {
    const auto ask = [this](const QString& title, const QString& filter, const QString& start) {
        FileRequest request{.title = title, .filter = filter, .saving = true, .start = start};
        return PickFile(request, text_, this);
    };
    ReportOptionsDialog dialog(viewer_.Settings(), {}, ask, text_, this);
    if (dialog.exec() == QDialog::Accepted)
        viewer_.Settings() = dialog.Settings();
}

void PairOptionsDialog::RestoreDefaults() {
    clsCompareFileOptions fresh = DefaultCompareFileOptions();
    fresh.sSectionName = viewer_.Options().sSectionName;
    viewer_.Options() = fresh;
}

// ---- its life ----

void PairOptionsDialog::ShowTab(Tab tab) {
    pages_->Tabs().setCurrentIndex(static_cast<int>(tab));
}

void PairOptionsDialog::done(int result) {
    Save();
    Dialog::done(result);
}

// The place on the screen is that of the true viewer of that name.
void PairOptionsDialog::Save() {
    IniProfile& file = *process_.settings;
    SaveCompareFilesSettings(file, kTextCheckSection, viewer_.Settings(), WindowPlace::Leave);
    viewer_.Options().SaveStateToFile(file);
    viewer_.TextFileExtensions().ShutDown();
    if (const Status saved = file.Flush(); !saved.ok())
        LogMessage(process_, process_.Translate("The settings cannot be saved") + ": " +
                                 saved.failure().reason);
}

}  // namespace zorvane
