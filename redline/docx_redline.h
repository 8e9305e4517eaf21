// Writes the Modified's package with its differences from the Original tracked inside.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "load/readers/reader.h"
#include "load/redline_certificate.h"
#include "redline/marks.h"

namespace zorvane {

struct RedlineRequest {
    std::string author = "Zorvane";
    std::string date = "1980-01-01T00:00:00Z";  ///< as it stands in the file
    std::int32_t id_prefix = 0;     ///< ids of revisions begin with these digits; 0: no matter
    bool track_formatting = false;  ///< looks of text that stays, too
    bool keep_tracked = false;      ///< refuses documents that hold tracked changes
    /// From that many bytes of both texts on they are compared without their trees in memory,
    /// which are read twice then. The redline is the same.
    std::size_t large_texts = std::size_t{2} << 20U;
};

/// A redline, and what its writer knows of it.
struct WrittenRedline {
    std::string bytes;
    RedlineCounts counts;
    std::int32_t resolved_before = 0;  ///< tracked changes of the inputs, accepted first
    CountsOf<UntrackedCount> untracked;
    std::int32_t headers_left_out = 0;  ///< of the Original, which no section could take
};

/// A fault where the inputs held tracked changes, which were accepted, and the request refuses
/// those.
ReadEnd CheckTracked(const RedlineRequest& request, const WrittenRedline& written);

ReadEnd WriteDocxRedline(const PerSide<std::string_view>& packages, const RedlineRequest& request,
                         RunWatcher* watcher, WrittenRedline& written);

}  // namespace zorvane
