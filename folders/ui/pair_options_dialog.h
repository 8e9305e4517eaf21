// How folders compare texts and report on pairs: the options of the first Compare Files viewer.
#pragma once

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "common/ui/dialog.h"
#include "compare/compare_files_viewer.h"

namespace zorvane {

/// Blocks nobody; what was changed is in the settings file when it is closed, and counts from the
/// next run on.
class PairOptionsDialog : public Dialog {
  public:
    enum class Tab : std::uint8_t { Compare, Report };
    /// All is borrowed. `commands`: what the pages' buttons run.
    PairOptionsDialog(ProcessState& process, CommandSet& commands, const UiText& text,
                      QWidget* parent);
    void ShowTab(Tab tab);
    frmCompareFiles& Viewer() { return viewer_; }
    OptionArea& Pages() { return *pages_; }

  protected:
    void done(int result) override;

  private:
    void Save();

    ProcessState& process_;
    SilentWindow window_;
    frmCompareFiles viewer_;
    OptionArea* pages_;
};

}  // namespace zorvane
