// What a viewer lets its user do with the shown editors, beside the compare: scroll them together,
// find and replace, go by lines, see where the caret is.
#pragma once

#include <functional>

#include "compare/view/find_replace.h"
#include "compare/view/paragraph_rows.h"
#include "compare/view/scroll_link.h"
#include "compare/view/translate_text.h"
#include "compare/viewer_editors.h"
#include "compare/viewer_window.h"

namespace zorvane {

class ViewerTools {
  public:
    /// All but the functions is borrowed. `is_busy`: a run goes on.
    ViewerTools(ViewerEditors& editors, CompareFilesWindow& window, TranslateText translate,
                std::function<bool()> is_busy);

    /// As long as it lives the programme moves the editors, and nothing of that is scrolling; at
    /// its end what is in sight is where the user's next move begins.
    class Moving {
      public:
        explicit Moving(ViewerTools& tools) : tools_(tools) { ++tools_.moving_; }
        ~Moving();
        Moving(const Moving&) = delete;
        Moving& operator=(const Moving&) = delete;

      private:
        ViewerTools& tools_;
    };

    // ---- scrolling ----
    /// The window hooks its views here.
    ScrollLink& Scrolls() { return scrolls_; }
    /// A finished run: both pairs have the rows of its comparison.
    void TakeRows(const Comparison& comparison);
    ParagraphRows& EditorRows() { return editor_rows_; }
    void SetSynchType(std::int32_t type);
    void mnuScrollLockVertical_Click();
    void mnuScrollLockHorizontal_Click();
    void AlignParagraphs(bool on);

    // ---- the text ----
    /// Opens the find window for the editor that has the focus.
    void ShowFindReplace(ShownEditor editor);
    frmCompareFilesFindReplace& FindReplace() { return find_; }
    /// The caret's place of the editor in use, in the first panel.
    void RefreshStatusBarItems(ShownEditor editor);
    /// The caret of both texts and of the shown result to the next line, or the one before.
    void ChangeCurrentLine(bool bUp, View view);

  private:
    Editor& EditorOf(ShownEditor editor);

    ViewerEditors& editors_;
    CompareFilesWindow& window_;
    TranslateText translate_;
    int moving_ = 0;
    ParagraphRows editor_rows_;
    ParagraphRows result_rows_;
    ScrollLink scrolls_;
    frmCompareFilesFindReplace find_;
};

}  // namespace zorvane
