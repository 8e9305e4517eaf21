// The word-processor report: up to four texts one behind the other, saved as rich text.
#pragma once

#include <string>

#include "common/base/result.h"
#include "compare/document/editor.h"

namespace zorvane {

/// In this order; nullptr leaves a piece out.
struct RichReportPieces {
    const Editor* all_in_one = nullptr;
    const Editor* additions = nullptr;
    const Editor* deletions = nullptr;
    const Editor* changes = nullptr;
};

/// Puts the pieces together in `scratch`, whose old content goes, and saves it. The name decides
/// nothing: a
/// ".DOC" file holds rich text. A failure names the file.
Status SaveRichReport(const RichReportPieces& pieces, Editor& scratch, const std::string& file);

}  // namespace zorvane
