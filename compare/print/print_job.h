// Prints a text: its pages with a head and a foot, on whatever paints them.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "compare/print/page_layout.h"
#include "compare/print/page_painter.h"
#include "compare/print/page_setup.h"

namespace zorvane {

/// What stands in the margins of each page; a margin without room for it stays empty.
struct PageEdges {
    std::string title{};       ///< above, at the left; cut where it would meet the date
    std::string date{};        ///< above, at the right
    std::string page{"Page"};  ///< below: "Page 3 of 12"
    std::string of{"of"};
};

struct PrintJob {
    const RichText& text;  ///< all that is printed: a whole text, or what was selected in it
    PageSetup setup{};
    PageEdges edges{};
};

/// The number of pages that were printed. The text is laid out twice, since each page tells how
/// many there are; no page is held. Fails with `kPrintStopped` when the watcher said so, and with
/// the painter's reason otherwise; then the job was not finished. `watcher` may be nullptr.
Result<std::int32_t> PrintRTF(const PrintJob& job, PagePainter& painter, RunWatcher* watcher);

}  // namespace zorvane
