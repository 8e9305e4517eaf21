// A folder compare as a value to report: records, text checks, renamed files.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "common/base/side.h"
#include "compare/engine/folder_scan.h"
#include "folders/rename_finder.h"
#include "folders/text_check.h"

namespace zorvane {

/// What an entry comes to.
enum class FolderVerdict {
    Same,
    Date,       ///< nothing but its date differs
    SameWords,  ///< its bytes differ and its text does not
    Changed,
    OnlyOriginal,
    OnlyModified,
    Renamed,  ///< on one side only, and found on the other under another name
    Failed
};
/// "same", "date", "same-words", "changed", "original", "modified", "renamed", "failed".
const char* NameOf(FolderVerdict verdict);
std::optional<FolderVerdict> FolderVerdictNamed(std::string_view name);

struct FolderCounts {
    std::map<FolderVerdict, std::int64_t> files;  ///< a renamed file is one
    std::int64_t folders = 0;
    std::int64_t faults = 0;
    std::int64_t Of(FolderVerdict verdict) const;
    bool Different() const;
    /// "3 changed, 1 only in the original, 120 the same"; nothing that is 0 but the last.
    std::string Words() const;
};

/// What is borrowed outlives it.
struct FolderFindings {
    const FolderScan& scan;
    PerSide<std::string> roots;  ///< as they were given
    bool ignore_dates = false;
    std::function<std::optional<TextCheck>(std::int32_t record)> text;
    std::vector<RenamedEntry> renamed;

    FolderVerdict VerdictOf(std::int32_t record) const;
    /// The pair that a record belongs to, itself or within a folder that moved; nullptr for none.
    const RenamedEntry* RenamedOf(std::int32_t record) const;
    /// To be called once, when `renamed` is in place.
    void IndexRenamed();
    FolderCounts Count() const;

    std::map<std::int32_t, std::size_t> renamed_of;  ///< record to its place in `renamed`
};

/// Where a long text goes, part by part.
using TextTarget = std::function<Status(std::string_view part)>;

/// "zorvane-folders/1", see docs/json.md.
Status WriteFolderJson(const FolderFindings& findings, const TextTarget& target);

struct FolderListStyle {
    bool color = false;
    /// Verdicts that are listed; empty: all but what is the same.
    std::vector<FolderVerdict> only;
};
/// A line for each difference: a letter, the path, what is known. A folder that is on one side only
/// stands for all that is in it.
Status WriteFolderList(const FolderFindings& findings, const FolderListStyle& style,
                       const TextTarget& target);
/// The counts, a line each.
std::string WriteFolderStat(const FolderFindings& findings);

}  // namespace zorvane
