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
    *out << static_cast<char>(record.type) << " " << record.first_original << ","
         << record.last_original << " " << record.first_modified << "," << record.last_modified;
}

inline void PrintTo(const TextRange& range, std::ostream* out) {
    *out << range.first.value << "+" << range.length;
}

}  // namespace zorvane
