#include "folders/ui/pair_options_dialog.h"

#include "app/command_line_request.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "compare/ui/option_pages.h"
#include "folders/text_check.h"

namespace zorvane {
namespace {

constexpr int kWidth = 900;

}  // namespace

PairOptionsDialog::PairOptionsDialog(ProcessState& process, CommandSet& commands,
                                     const UiText& text, QWidget* parent)
    : Dialog(text("Text and Report Options"), kWidth, parent),
      process_(process),
      viewer_(process, CommandLineRequest(), window_),
      pages_(new OptionArea(text, this)) {
    viewer_.Setup(kTextCheckSection, true);
    auto* compare = new CompareOptionsPage(viewer_, commands, text, pages_);
    auto* report = new ReportOptionsPage(viewer_, commands, text, pages_);
    pages_->AddPage(compare, text("Compare Options"));
    pages_->AddPage(report, text("Report Options"));
    pages_->SetUnfolded(true);
    AddWide(pages_);
    SetButtons(text("Close"), QString());
    compare->Binding().Show();
    report->Binding().Show();
    connect(pages_, &OptionArea::FoldWanted, this, [this] { accept(); });
}

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
    if (const Status saved = file.Flush(); !saved.ok())
        LogMessage(process_, process_.Translate("The settings cannot be saved") + ": " +
                                 saved.failure().reason);
}

}  // namespace zorvane
