// The steps of one compare, from loaded editors to the finished view.
#pragma once

#include <functional>

#include "compare/pass_context.h"

namespace zorvane {

/// State of a viewer that a run reads and sets.
struct RunState {
    bool mbRemoveFormatting = false;
    bool mbRebuildOriginalParagraphs = true;  ///< the paragraphs of that side are stale
    bool mbRebuildModifiedParagraphs = true;
    bool mbSBSViewFresh = false;
    bool mbAIOViewFresh = false;
    bool mbOriginalDiffStale = false;  ///< an option was changed since the last run
    bool mbModifiedDiffStale = false;
    View view = View::SideBySide;
    bool show_views = true;  ///< false: nobody looks at editors, so none is marked
    std::string msFontName = "Courier";
    double msngFontSize = 10;
};

enum class RunEnd { Finished, Aborted, Failed };

/// What the run calls back on the viewer.
struct RunCalls {
    std::function<Status()> run_document_engine;
    std::function<void()> update_difference_list;
};

/// Above this many paragraphs the last scan takes noticeable time, so a user with a window is
/// asked.
inline constexpr std::int32_t kParagraphsBeforeAsking = 50000;

/// Copies the texts into the working editors, runs the engine and the passes of the current view,
/// and leaves the footers in the summaries. An aborted or failed run leaves the paragraphs to be
/// rebuilt.
RunEnd RunCompareSteps(PassContext& context, RunState& state, CompareFilesWindow& window,
                       const RunCalls& calls, bool command_line);

/// Writes the text of a summary's first line, such as "------- Deletions Summary. 5 deletions found
/// -------".
void PutSummaryFooters(PassContext& context);

}  // namespace zorvane
