// One report of a finished compare: named, checked, written, opened.
#pragma once

#include <cstdint>
#include <string>

#include "compare/engine/vestrel_x.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {

struct ProcessState;
class RunTelling;

/// What the driver needs of a viewer.
class ReportSource {
  public:
    virtual ~ReportSource() = default;
    virtual ProcessState& Process() = 0;
    virtual RunTelling& Telling() = 0;
    virtual VestrelX& Engine() = 0;
    virtual const clsCompareFileOptions& ReportOptions() const = 0;
    virtual CompareFilesSettings& ReportSettings() = 0;
    /// Compares again where a text or an option was changed since; otherwise the result stands.
    virtual Status EnsureFreshComparison() = 0;
    /// Puts the word-processor report together in the scratch editor and saves it.
    virtual Status SaveDocumentReport(const std::string& file) = 0;
    /// Brings the all-in-one text into being when the side-by-side view is shown and it is not
    /// fresh.
    virtual void BuildAllInOneView() = 0;
    virtual void ShowReportStatus(const std::string& text) = 0;
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

/// Says why there is no report, for a cause that was known before anything was written; gives it
/// back.
ReportResult TellReportResult(ReportSource& source, ReportResult result);

enum class Launch { No, Yes };
/// The report of the viewer's default type with its default titles; an empty `file` is the type's
/// default. Kept: a failed text or comma-delimited report gives Ok, its message having been shown.
ReportResult CreateReportGUI(ReportSource& source, Launch launch, const std::string& file);

/// When a regular file was last written, in local time, for a report's head; empty: not known.
std::string ReportDateOf(const std::string& file);

/// The user's marks as the engine's writers take them.
ReportLook ReportLookOf(const clsCompareFileOptions& options);

}  // namespace zorvane
