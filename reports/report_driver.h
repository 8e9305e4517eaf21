// One report of a finished compare: named, checked, written, opened.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/run_watcher.h"
#include "compare/engine/vestrel_x.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {

struct ProcessState;
class RunTelling;
class ShellOpen;

/// What the driver needs: a comparison that is fresh, the texts of its views, the user's wishes.
class ReportSource {
  public:
    virtual ~ReportSource() = default;
    virtual ProcessState& Process() = 0;
    virtual RunTelling& Telling() = 0;
    virtual RunWatcher* Watcher() = 0;  ///< nullptr: nobody can stop a report
    virtual VestrelX& Engine() = 0;
    virtual const clsCompareFileOptions& ReportOptions() const = 0;
    virtual CompareFilesSettings& ReportSettings() = 0;
    /// Puts the word-processor report together and saves it, with that mode (see `ReplaceFile`).
    virtual Status SaveDocumentReport(const std::string& file, std::uint32_t mode) = 0;
    /// Instead of that, in the default report where settings ask for it: tracked changes of the two
    /// files, under a name that such a document may have.
    virtual std::string TrackedName(const std::string& file) const = 0;
    virtual Status SaveTrackedReport(const std::string& file) = 0;
    virtual void TellStep(RunStep step) = 0;
    /// Lets go of an office suite that holds files of that type, before the user's own opens one.
    virtual void ShutDownAppsIfRequired(const std::string& file) = 0;
    virtual void ShowReportMessage(const std::string& text, const std::string& title) = 0;
    /// The title that a command line gave; empty: none.
    virtual std::string CommandLineTitle() const = 0;
};

/// Expands the date tokens in `file`, makes its folder, and writes the report. Failures have been
/// told through `LogMessage`. `style`: 1 all in one, else side by side. A target that is one of the
/// two inputs is refused.
ReportResult CreateReport(ReportSource& source, std::string& file, ReportType type,
                          std::int32_t style);

/// The words of a result that has some of its own: a run that was stopped, or goes on, a file that
/// cannot be loaded.
void TellReportResult(ProcessState& process, RunTelling& telling, ReportResult result);

enum class Launch { No, Yes };
/// The report of the viewer's default type with its default titles; an empty `file` is the type's
/// default. Kept: a failed text or comma-delimited report gives Ok, its message having been shown.
ReportResult CreateReportGUI(ReportSource& source, Launch launch, const std::string& file);

/// A comma-delimited report opens in the program of tables; the short switches show it as text.
enum class TableOpens { InItsProgram, InTheTextEditor };
/// Hands a written report to the desktop: text to the text editor, pages and documents to the
/// programs of their kinds. Fails where the desktop has none.
Status OpenReport(ShellOpen& shell, ReportType type, const std::string& file,
                  TableOpens table = TableOpens::InItsProgram);

/// When a regular file was last written, in local time, for a report's head; empty: not known.
std::string ReportDateOf(const std::string& file);

/// The user's marks as the engine's writers take them.
ReportLook ReportLookOf(const clsCompareFileOptions& options);

}  // namespace zorvane
