// One run as a computation: values in, a value out. It touches nothing of a viewer, so it may go on
// on any thread, and two may go on at once.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "common/platform/file_stamp.h"
#include "common/process_state.h"
#include "compare/document/paragraphs.h"
#include "compare/document/rich_text.h"
#include "compare/engine/comparison.h"
#include "compare/engine/document_look.h"
#include "compare/engine/in_sight.h"
#include "compare/run_counters.h"
#include "compare/viewer_window.h"
#include "load/document_loader.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"

namespace zorvane {

/// A run whose result nobody looks at in editors marks none.
enum class BuildViews { Yes, No };

enum class RunEnd { Finished, Aborted, Failed };

/// Above this many paragraphs the last scan takes noticeable time, so a user with a window is
/// asked.
inline constexpr std::int32_t kParagraphsBeforeAsking = 50000;

/// From so many paragraphs on a window shows the paragraph level first.
inline constexpr std::int32_t kParagraphsOfEarlyResult = 20000;

using SharedText = std::shared_ptr<const RichText>;

/// Where the two texts come from.
enum class RunSource {
    Texts,          ///< `CompareInput::texts`
    Files,          ///< the two files of the options, for a command line
    ReloadedFiles,  ///< the same, for the Refresh button, with the advice that a user gets
    LoadedAgain,    ///< the files of `load_again`, which are loaded and not compared
    Compared        ///< `texts`, which `compared` tells of already: only the view is built
};

/// A text with its numbered paragraphs, ready for an editor.
struct ResultText {
    RichText text;
    Paragraphs paragraphs;
};

/// What is known of a long compare while it goes on: the paragraphs, then with the words in sight,
/// then all of it before the marked texts are made. It is shown until the result comes, and nothing
/// is made from it.
struct EarlyOutcome {
    PerSide<SharedText> texts;
    std::shared_ptr<const Comparison> comparison;
};

/// All of it is the run's own, but for what is borrowed for as long as the run goes on.
struct CompareInput {
    CompareInput(ProcessState& services, RunTelling& own) : process(services), telling(own) {}

    ProcessState& process;  ///< borrowed: its services and language are safe from any thread
    RunTelling& telling;    ///< borrowed; its manner says whether anybody is asked
    clsCompareFileOptions options;
    CompareFilesSettings settings;
    clsMRU TextFileExtensions;
    LoadMemory memory;
    RunSource source = RunSource::Texts;
    PerSide<SharedText> texts;  ///< of the editors; of what is not loaded anew
    PerSide<bool> load_again{false, false};
    PerSide<bool> keep{false, false};  ///< of `ReloadedFiles`: that text, whatever its file holds
    const Comparison* compared = nullptr;  ///< borrowed
    View view = View::SideBySide;
    BuildViews views = BuildViews::Yes;
    bool find_moves = true;
    bool count_numbering = true;                   ///< numbers in front of paragraphs take part
    bool presented = false;                        ///< see `PassContext::presented`
    CharFormat default_format;                     ///< of plain text
    ConversionService* service = nullptr;          ///< borrowed, of no other run meanwhile
    LoadQuestions* questions = nullptr;            ///< borrowed
    std::function<void(EarlyOutcome)> show_early;  ///< empty: nobody waits for it
    std::function<ParagraphsInSight()> in_sight;   ///< see `EarlyReader`
};

struct CompareOutcome {
    RunEnd end = RunEnd::Failed;
    bool load_failed = false;
    std::optional<Side> unread;  ///< the side whose load failed
    std::string detail;          ///< a last word for the detail panel

    // What a load changes; there after a failed one too.
    PerSide<bool> tried{false, false};  ///< the load of that side was begun: its name is known
    clsCompareFileOptions options;      ///< as they were in the end
    CompareFilesSettings settings;
    LoadMemory memory;

    // Only after a whole run.
    PerSide<SharedText> texts;  ///< as they were compared
    PerSide<bool> loaded{false, false};
    PerSide<bool> looked_at{false, false};  ///< its file is the one that `stamps` tells of
    PerSide<std::optional<FileStamp>> stamps;
    PerSide<ResultText> sources;             ///< of a side that was loaded, for its editor
    std::shared_ptr<Comparison> comparison;  ///< nothing when the run got one
    bool viewer_font = false;                ///< both texts were given the viewer's font
    PerSide<DocumentLook> looks;
    View view = View::SideBySide;  ///< the one that was built
    bool views_built = false;
    PerSide<ResultText> side_by_side;
    ResultText all_in_one;
    RichText deletions;  ///< the summaries, each with its head line
    RichText additions;
    RichText changes;
    RunCounters counters;
    std::uint32_t elapsed = 0;  ///< milliseconds
};

/// Never half a result: what is there after `Finished` is whole, and after anything else nothing is
/// but what the load tells.
CompareOutcome RunCompareJob(CompareInput input, RunWatcher& watcher);

}  // namespace zorvane
