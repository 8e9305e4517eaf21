// Find and replace in one editor, and the jump to a difference by its number: what their windows
// hold and do.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "compare/document/editor.h"
#include "compare/view/text_search.h"

namespace zorvane {

/// The state of the find window; it lives as long as the viewer, so that the fields come back as
/// they were left. It reads the text as it is at each press.
class frmCompareFilesFindReplace {
  public:
    /// Told "Nothing found", in English.
    explicit frmCompareFilesFindReplace(std::function<void(const char*)> show_message)
        : show_message_(std::move(show_message)) {}

    std::string Text1;    ///< the text to find
    std::string Text2;    ///< what to put in its place
    bool Check1 = false;  ///< whole words only
    bool Check2 = false;  ///< the case must match

    /// Shows the window for an editor, which is borrowed. The search begins behind its selection.
    void Open(Editor& editor);
    bool IsOpen() const { return editor_ != nullptr; }
    void cmdDone_Click() { editor_ = nullptr; }

    /// Selects the next hit, the first again behind the last. False when there is none, which was
    /// told. Where the user moved the selection since, the search goes on behind that.
    bool Command1_Click();
    bool FindPrevious();
    /// Puts `Text2` in the place of what is selected, and finds the next. Where nothing is selected
    /// it only finds.
    bool Command2_Click();
    /// In the whole text, as one step that can be undone. Gives the number; none was told.
    std::int32_t ReplaceAll();

  private:
    TextSearch Search() const;
    bool Show(const std::optional<TextRange>& hit);
    CharPos From() const;

    std::function<void(const char*)> show_message_;
    Editor* editor_ = nullptr;
    std::optional<TextRange> last_hit_;
};

/// The state of the go-to window.
class frmCompareFilesGoTo {
  public:
    std::string Text1;  ///< what stands in the number box

    void cmdOK_Click();
    void cmdCancel_Click() { lNumber_ = -1; }
    /// -1 when the window was cancelled, or held no number.
    std::int32_t lNumber() const { return lNumber_; }

  private:
    std::int32_t lNumber_ = -1;
};

}  // namespace zorvane
