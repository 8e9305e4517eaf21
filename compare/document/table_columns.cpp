#include "compare/document/table_columns.h"

#include <algorithm>
#include <numeric>

#include "compare/document/rtf_output.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostUnits = 60;  // a longer text wraps
constexpr std::size_t kLeastUnits = 4;  // of a column, so that an empty one can be seen
constexpr std::int32_t kLeastWidth = 60;

// What a column needs it has up to an equal share; what is left then goes to those that lack more.
void KeepWithin(std::int32_t page_width, std::vector<std::int32_t>& widths) {
    if (std::accumulate(widths.begin(), widths.end(), 0) <= page_width)
        return;
    const std::int32_t share = page_width / static_cast<std::int32_t>(widths.size());
    std::int64_t left = page_width;
    std::int64_t lack = 0;
    for (const std::int32_t width : widths) {
        left -= std::min(width, share);
        lack += std::max(width - share, 0);
    }
    for (std::int32_t& width : widths) {
        if (width > share)
            width = share + static_cast<std::int32_t>(left * (width - share) / lack);
        width = std::max(width, kLeastWidth);
    }
}

}  // namespace

std::vector<std::int32_t> CellEnds(std::u16string_view rows, std::int32_t page_width,
                                   RunWatcher* watcher) {
    constexpr std::u16string_view kMarks = u"\a\r";  // the end of a cell, the end of a row
    std::vector<std::int32_t> widths;
    std::size_t column = 0;
    StopCheck stop(watcher);
    for (std::size_t begin = 0; begin < rows.size() && stop.KeepGoing();) {
        const std::size_t end = std::min(rows.find_first_of(kMarks, begin), rows.size());
        if (end < rows.size() && rows[end] == kRtfCell) {
            const auto units =
                static_cast<std::int32_t>(std::clamp(end - begin, kLeastUnits, kMostUnits));
            if (column == widths.size())
                widths.push_back(0);
            widths[column] = std::max(widths[column], 400 + 120 * units);
            ++column;
            begin = end + 1;
        } else {
            column = 0;
            begin = end + 2;
        }
    }
    KeepWithin(page_width, widths);
    std::partial_sum(widths.begin(), widths.end(), widths.begin());
    return widths;
}

}  // namespace zorvane
