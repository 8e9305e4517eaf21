// How folders compare texts and report on pairs: the options of the first Compare Files viewer.
#pragma once

#include <functional>

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "common/ui/dialog.h"
#include "compare/compare_files_viewer.h"

class QMenu;

namespace zorvane {

class CompareOptionsPage;
class ReportOptionsPage;

/// Blocks nobody; what was changed is in the settings file when it is closed, and counts from the
/// next run on.
class PairOptionsDialog : public Dialog {
  public:
    enum class Tab : std::uint8_t { Compare, Report };
    /// `process` is borrowed.
    PairOptionsDialog(ProcessState& process, UiText text, QWidget* parent);
    void ShowTab(Tab tab);
    frmCompareFiles& Viewer() { return viewer_; }
    OptionArea& Pages() { return *pages_; }
    /// What the pages' buttons run; those of a compare have no meaning here.
    CommandSet& Commands() { return commands_; }
    std::function<void(QMenu&)> dress = [](QMenu&) {};  ///< in the look of the window

  protected:
    void done(int result) override;

  private:
    void BindCommands();
    void BindTypes();
    template <class Shown>
    void EditOptions();
    template <class Shown>
    void EditSettings();
    void EditExtensions();
    void EditSheets();
    void EditReports();
    void RestoreDefaults();
    void ChooseType();
    void Save();

    ProcessState& process_;
    UiText text_;
    SilentWindow window_;
    frmCompareFiles viewer_;
    CommandSet commands_;
    OptionArea* pages_;
    CompareOptionsPage* compare_;
    ReportOptionsPage* report_;
};

}  // namespace zorvane
