// The report of a folder compare: a table with a row for each record, parted by tabs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "common/base/result.h"
#include "common/report_writing.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

struct FolderReport {
    const VestrelX& engine;
    std::string error_word;  ///< "ERR: File" in the language in force
    /// What the text check of a record that differs came to: whether the words differ too. Nothing:
    /// it is not known, and the bytes count.
    std::function<std::optional<bool>(std::int32_t record)> words_differ;
};

/// Of the records that are there when it begins. A name with a tab or a line break in it is shown
/// with pictures of them, so that a row stays a row.
/// On any thread; a stop is a failure, and no file is left.
Status WriteFolderReport(const FolderReport& report, const std::string& file,
                         const WritingWatch& watch = {});

}  // namespace zorvane
