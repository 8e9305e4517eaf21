// What the passes share: the editors, the comparison, the options, the counters.
#pragma once

#include "compare/engine/comparison.h"
#include "compare/run/run_editors.h"
#include "compare/run_counters.h"
#include "compare/run_monitor.h"
#include "options/compare_file_options.h"
#include "options/marking_styles.h"

namespace zorvane {

/// All borrowed from the run.
struct PassContext {
    RunEditors& editors;
    const Comparison& comparison;
    const clsCompareFileOptions& options;
    RunCounters& counters;
    RunMonitor& monitor;
    /// The all-in-one text is for a report with a head: each record has a small number in front,
    /// and changes in a table stay in their cells.
    bool presented = false;
    /// The words inside changed paragraphs are not known yet: each is marked as a whole.
    bool paragraphs_only = false;

    MarkStyle Style(Mark mark) const { return StyleFor(options, mark); }
    MarkStyle SubParagraphStyle(Mark mark) const { return SubParagraphStyleFor(options, mark); }
};

}  // namespace zorvane
