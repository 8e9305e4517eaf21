// What the three passes share: the editors, the engines, the options, the counters.
#pragma once

#include "compare/engine/vestrel_x.h"
#include "compare/run_counters.h"
#include "compare/run_monitor.h"
#include "compare/viewer_editors.h"
#include "options/compare_file_options.h"
#include "options/marking_styles.h"

namespace zorvane {

/// All borrowed from the viewer.
struct PassContext {
    ViewerEditors& editors;
    VestrelX& VXMacroDiff;
    VestrelX& VXMiniDiff;
    VestrelX& VXMicroDiff;
    const clsCompareFileOptions& options;
    RunCounters& counters;
    RunMonitor& monitor;

    MarkStyle Style(Mark mark) const { return StyleFor(options, mark); }
    MarkStyle SubParagraphStyle(Mark mark) const { return SubParagraphStyleFor(options, mark); }
};

}  // namespace zorvane
