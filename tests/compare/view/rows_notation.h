// Rows of paragraphs as a line of text: "2=2 1~2#0 1-0#1 1e1" are two equal pairs, a paragraph that
// became two, a deleted one (of the records 0 and 1) and an edited pair.
#pragma once

#include <string>

#include "compare/view/paragraph_rows.h"

namespace zorvane {

inline std::string Notation(const ParagraphRows& rows) {
    std::string text;
    for (std::int32_t row = 0; row < rows.Rows();) {
        const ParagraphRow run = rows.RunAt(row);
        const char sign = run.kind == RowKind::Equal     ? '='
                          : run.kind == RowKind::Ignored ? 'i'
                          : run.kind == RowKind::Changed ? '~'
                          : run.kind == RowKind::Edited  ? 'e'
                                                         : '-';
        text += (text.empty() ? "" : " ") + std::to_string(run.paragraphs.original.count) + sign +
                std::to_string(run.paragraphs.modified.count);
        if (run.record >= 0)
            text += "#" + std::to_string(run.record);
        row = run.rows.end();
    }
    return text;
}

}  // namespace zorvane
