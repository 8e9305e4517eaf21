// The word-processor report: up to four texts one behind the other, saved as rich text.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "compare/document/editor.h"
#include "compare/engine/comparison.h"
#include "options/marking_styles.h"

namespace zorvane {

/// What stands in front of the texts, for who did not make the report.
struct RichReportHead {
    std::string title{};  ///< empty: none
    PerSide<std::string> names{};
    MarkStyle addition{};
    MarkStyle deletion{};
    MarkStyle change_original{};
    MarkStyle change_modified{};
};

/// In this order; nullptr leaves a piece out. All is borrowed.
struct RichReportPieces {
    const Editor* all_in_one = nullptr;
    const Editor* additions = nullptr;
    const Editor* deletions = nullptr;
    const Editor* changes = nullptr;
    /// What lies beside its words is told behind the texts.
    const Comparison* comparison = nullptr;
    /// Needs `comparison`; with it tables are tables. nullptr: the texts alone, tables as tabs.
    const RichReportHead* head = nullptr;
};

/// Puts the pieces together in `scratch`, whose old content goes, and saves it. The name decides
/// nothing: a ".DOC" file holds rich text. Without any of the four texts the document is empty. A
/// failure names the file.
/// A report that the watcher stopped is a failure and leaves no file. `mode`: see `ReplaceFile`.
Status SaveRichReport(const RichReportPieces& pieces, Editor& scratch, const std::string& file,
                      RunWatcher* watcher = nullptr, std::uint32_t mode = 0666);

}  // namespace zorvane
