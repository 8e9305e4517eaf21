// How wide the columns of a table are that has only texts.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"

namespace zorvane {

/// Where the cells of neighbouring rows end, in twips: each column as wide as its longest text asks
/// for, all together within `page_width`. A row ends in a break, a cell in character 7. After a
/// stop the rows behind it do not count.
std::vector<std::int32_t> CellEnds(std::u16string_view rows, std::int32_t page_width,
                                   RunWatcher* watcher = nullptr);

}  // namespace zorvane
