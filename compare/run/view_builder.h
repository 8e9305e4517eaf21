// The marked texts of one view and the summaries, from a comparison.
#pragma once

#include "common/base/run_watcher.h"
#include "compare/pass_context.h"
#include "compare/viewer_window.h"

namespace zorvane {

struct ViewWanted {
    View view = View::SideBySide;
    bool plain = false;  ///< the texts are compared without their formatting
    std::string font;    ///< of plain text
    double font_size = 0;
    LoadQuestions* questions = nullptr;  ///< nullptr: nobody is asked
};

/// Text has no font of its own: both texts and the results take this one.
void UseFont(RunEditors& editors, const ViewWanted& wanted);

/// Gives the two texts their paragraphs and, of plain text, the font.
void PrepareTexts(RunEditors& editors, const ViewWanted& wanted, RunWatcher& watcher);

/// Marks the editors of the view and fills the summaries, footers in front. The two texts are
/// prepared and the counters set. False after a stop.
bool BuildView(PassContext& context, const ViewWanted& wanted);

}  // namespace zorvane
