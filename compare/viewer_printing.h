// Prints the text of one of the five shown editors on a printer that the user picks.
#pragma once

#include <string>

#include "common/base/run_watcher.h"
#include "compare/document/editor.h"
#include "compare/file_window.h"
#include "compare/print/print_job.h"
#include "options/compare_files_settings.h"

namespace zorvane {

class RunTelling;
struct ProcessState;

/// A margin in inches as twips; a text that is no number, or below 0, is set back to "0.5".
double MarginOf(std::string& inches);

/// The settings' margins on a usual paper; texts that are no numbers are set back.
PageSetup MarginsOf(CompareFilesSettings& settings);
/// Margins that a person changed where pages are set up become settings; the others stay as they
/// were written.
void TakeMargins(const PageSetup& before, const PageSetup& now, CompareFilesSettings& settings);

/// Everything is borrowed.
struct PrintingParts {
    ProcessState& process;
    RunTelling& telling;
    FileWindow& window;
    CompareFilesSettings& settings;
    RunWatcher* watcher = nullptr;
};

enum class PrintEnd { Cancelled, Stopped, Failed, Printed };

/// Asks for the printer, offering the selection where there is one. The system's default printer is
/// afterwards what it was before. `title` stands at the head of each page. What failed, or could
/// not be shown on paper, has been told.
PrintEnd PrintEditor(const PrintingParts& parts, const Editor& editor, const std::string& title);

}  // namespace zorvane
