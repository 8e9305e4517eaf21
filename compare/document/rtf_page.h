// Rich text to RTF for a reader's eyes.
#pragma once

#include "common/base/run_watcher.h"
#include "compare/document/rich_text.h"
#include "compare/document/rtf_body.h"

namespace zorvane {

enum class TableForm { Tabs, Cells };

/// As `WriteRtf`, but each paragraph has one format, that of its first character: text that was put
/// together from several documents can hold a paragraph with a break of another's. With
/// `TableForm::Cells` a paragraph that holds ends of cells becomes a row of a table.
RtfParts WriteRtfPage(const RichText& text, TableForm tables, RunWatcher* watcher = nullptr);

}  // namespace zorvane
