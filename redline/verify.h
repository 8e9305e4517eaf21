// The law of a redline, checked on the bytes that were written: accepting all gives the Modified,
// rejecting all gives the Original. Shares no code with the writer but the taking of marks.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "redline/verify_reading.h"

namespace zorvane {

struct RedlineToCheck {
    PerSide<std::string_view> inputs;
    std::string_view redline;
    bool all_looks = false;             ///< the looks of text that stays come back, too
    std::int32_t headers_left_out = 0;  ///< of the Original, as the writer told
    RunWatcher* watcher = nullptr;
    bool open_document = false;  ///< all three are OpenDocument texts
};

/// What was found the same.
struct Verified {
    ReadCounts accepted;
    ReadCounts rejected;
};

/// The first fault, with its place, or what was counted.
Result<Verified> VerifyRedline(const RedlineToCheck& check);

/// What a package's XML refers to and does not have.
std::set<std::string> MissingIn(PartTrees& trees);
/// Faults of the file itself: ids, marks, references, parts. Nothing when there is none.
std::string FirstStructureFault(PartTrees& redline, Package& modified,
                                const std::set<std::string>& missing_before);

/// "9c1e..." of 64 digits.
std::string HexDigest(std::string_view bytes);

}  // namespace zorvane
