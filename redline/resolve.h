// Takes a WordprocessingML tree as it is when all tracked changes are accepted, or all rejected.
// Knows nothing of the writer: both inputs and the check of what was written go through here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/container/xml_part.h"

namespace zorvane {

enum class Resolution { Accept, Reject };

/// What a resolving came across.
struct Resolved {
    std::int32_t changes = 0;  ///< tracked changes of any kind
    std::int32_t without_partner =
        0;  ///< marks of paragraphs with no paragraph behind to join with
};

/// `root` is a story: a document, header, footer, or all notes of a part. With `trace`, what stood
/// in a deletion or an insertion and stays keeps an attribute of that name.
Resolved Resolve(pugi::xml_node root, Resolution resolution, const char* trace = nullptr);

/// True for elements that exist only to track a change; those of its root's prefix are.
bool IsTracking(const pugi::xml_node& node);

}  // namespace zorvane
