// What the check of a redline reads of OpenDocument texts, by a walk of its own.
#pragma once

#include <string>
#include <string_view>

#include "common/base/result.h"
#include "redline/resolve.h"
#include "redline/verify_reading.h"

namespace zorvane {

/// All stories, all changes taken. `lists`: a paragraph's look tells the lists around it.
Result<ReadStories> ReadOdtStories(std::string_view bytes, Resolution resolution, bool lists);

/// Faults of the file itself: ids, marks, styles, parts. Nothing when there is none.
std::string FirstOdtFault(std::string_view modified, std::string_view original,
                          std::string_view redline);

}  // namespace zorvane
