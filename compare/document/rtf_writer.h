// Rich text to RTF.
#pragma once

#include <string>

#include "compare/document/rich_text.h"

namespace zorvane {

/// An RTF document in 7-bit ASCII that word processors open with the same text, fonts, colours and
/// marks; `ReadRtf` of it gives back the same value. After a stop some of it is missing.
std::string WriteRtf(const RichText& text, RunWatcher* watcher = nullptr);

}  // namespace zorvane
