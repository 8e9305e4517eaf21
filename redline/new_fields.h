// Fields over several paragraphs (a table of contents) that the Modified has and the Original has
// not.
#pragma once

#include <vector>

#include "redline/plan.h"

namespace zorvane {

/// Tells the borders of each field that stands in inserted paragraphs, whatever follows its end in
/// the last one: they are inserted, too. Those of any other field stay where the Modified has them.
void FindNewFields(const Plan& plan, std::vector<StoryBlock>& modified);

}  // namespace zorvane
