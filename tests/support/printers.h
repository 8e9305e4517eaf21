// How values show in a failed expectation.
#pragma once

#include <ostream>

#include "common/base/number.h"
#include "compare/document/editor.h"
#include "compare/engine/difference_record.h"

namespace zorvane {

template <class Kind>
void PrintTo(const Number<Kind>& number, std::ostream* out) {
    *out << number.value;
}

inline void PrintTo(const DifferenceRecord& record, std::ostream* out) {
    *out << static_cast<char>(record.type) << " " << record.paragraphs.original.first.value << ","
         << record.paragraphs.original.last.value << " " << record.paragraphs.modified.first.value
         << "," << record.paragraphs.modified.last.value;
}

inline void PrintTo(const TextRange& range, std::ostream* out) {
    *out << range.first.value << "+" << range.length;
}

}  // namespace zorvane
