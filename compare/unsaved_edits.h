// Asks about edits before a step that would lose them: closing, loading, a new run.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "compare/file_window.h"

namespace zorvane {

struct ProcessState;

/// A text that the user may have edited.
struct EditedText {
    std::string name;  ///< of its file, or what the editor is called
    std::function<bool()> is_modified;
    std::function<bool()> save;  ///< false when that failed or the user stepped back
};

enum class LosingStep { Close, Load };

/// What becomes of edits whose files a compare would load again.
enum class EditsOrFiles { Edits, Files, Cancel };

/// Both are borrowed.
class UnsavedEdits {
  public:
    UnsavedEdits(ProcessState& process, FileWindow& window) : process_(process), window_(window) {}

    /// True when nothing is lost against the user's will: each edited text was saved, or its loss
    /// agreed to. All are asked about before any is saved, so that stepping back changes nothing.
    bool MayGoOn(LosingStep step, const std::vector<EditedText>& texts);
    /// Before a compare that would load the files of these sides over edits; one at least.
    EditsOrFiles AskWhatToCompare(const PerSide<bool>& edited);

  private:
    enum class Answer { Save, Discard, Cancel };
    Answer Ask(LosingStep step, const EditedText& text);

    ProcessState& process_;
    FileWindow& window_;
};

}  // namespace zorvane
