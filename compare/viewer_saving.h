// Saves the text of one of the five shown editors under a name that the user picks.
#pragma once

#include <functional>
#include <string>

#include "compare/file_window.h"
#include "load/document_loader.h"
#include "load/trellis_page.h"
#include "reports/report_driver.h"

namespace zorvane {

class RunTelling;
struct ProcessState;

/// By the order of the file dialog's filter.
enum class SaveType : std::int32_t { RichText = 1, Text = 2, Document = 3, Html = 4 };

/// "ALL IN ONE DIFF", "ORIGINAL", ...: how titles call an editor.
std::string EditorTitle(EditorTarget target);
/// Of an editor its file, of a result both by their names; without files what titles call it.
std::string TitleOf(EditorTarget target, const PerSide<std::string>& files);
/// Where to save a text, without an ending: beside the file that it belongs to, as that is called,
/// a result after both. Empty without that file.
std::string SuggestedName(EditorTarget target, const PerSide<std::string>& files);
/// The four types, `extensions` being those of the user's text files.
std::string SaveFilter(ProcessState& process, const std::vector<std::string>& extensions);
/// A name without an extension gets that of its type.
std::string WithExtension(const std::string& file, SaveType type,
                          const std::vector<std::string>& extensions);

/// Everything is borrowed from the viewer.
struct SavingParts {
    ProcessState& process;
    RunTelling& telling;
    FileWindow& window;
    CompareFilesSettings& settings;
    const clsMRU& TextFileExtensions;
    TrellisPage& page;
    std::function<const Editor&(EditorTarget)> editor;
    /// The word-processor report of the all-in-one text alone, without summaries; what went wrong
    /// has been told.
    std::function<ReportResult(std::string& file)> create_all_in_one;
    /// The saved file becomes the selected file of that side.
    std::function<void(Side, const std::string&)> select_file;
    std::string suggested;          ///< see `SuggestedName`
    std::uint32_t mode = 0666;      ///< of the file, see `ReplaceFile`
    RunWatcher* watcher = nullptr;  ///< stops the save until the user's file is replaced
};

enum class SaveEnd { Cancelled, Stopped, Failed, Saved };

struct SaveOutcome {
    SaveEnd end = SaveEnd::Cancelled;
    std::string file;  ///< when saved
    friend bool operator==(const SaveOutcome&, const SaveOutcome&) = default;
};

/// Asks for the name, and before a file is replaced. The all-in-one text is saved as the report
/// puts it together. A file is written whole or not at all; one that stood there
/// keeps its permissions, and a text file its kind of line ends (else those of this system). What
/// failed has been told, with the file's name.
SaveOutcome SaveEditorAs(const SavingParts& parts, EditorTarget target);

}  // namespace zorvane
