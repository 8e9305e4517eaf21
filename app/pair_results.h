// What `zorvane compare --pairs` writes, and what of it stands there already.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "app/compare_runner.h"
#include "common/base/result.h"
#include "common/platform/file_descriptor.h"

namespace zorvane {

/// What became of one pair.
struct PairOutcome {
    std::int64_t number = 0;  ///< its place in the list, from 1
    std::string original;     ///< as the list names it
    std::string modified;
    CompareStatus status = CompareStatus::Trouble;
    std::vector<std::string> messages;
    std::string found;  ///< the fields "counts" and "verdict" as they are written; empty: not known
    std::vector<std::string> written;
};

/// The fields of a comparison.
std::string FoundFields(const Comparison& comparison);
/// "zorvane-pairs/1", with a line end.
std::string PairLine(const PairOutcome& outcome);

/// The lines' place. A file's whole lines are kept and stand for their pairs.
class PairResults {
  public:
    /// An empty name: standard output. The file is nobody else's meanwhile.
    static Result<PairResults> Open(const std::string& file);

    std::int64_t Kept() const { return kept_; }
    /// Of the next kept line, whose pair is `outcome`'s: what became of it. Fails where the line
    /// tells of another pair.
    Result<CompareStatus> TakeKept(const PairOutcome& pair);
    /// All of it in one write.
    Status Write(std::string_view line);
    /// What the system finds at the end alone, as on a full network disk.
    Status Close();

  private:
    Status FindKept();
    bool IsWhole(std::string_view line) const;

    std::string file_;
    FileDescriptor descriptor_;
    std::ifstream old_;
    std::int64_t kept_ = 0;
};

}  // namespace zorvane
