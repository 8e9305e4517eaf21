// Hits as lines for people and for programs.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "find/engine/find_run.h"

namespace zorvane {

enum class FindLayout : std::uint8_t {
    Lines,   ///< "path:line:text", lines around with "-", "--" between groups
    Files,   ///< the paths alone
    Counts,  ///< "path:count"
    Json     ///< an object a line
};

struct FindStyle {
    FindLayout layout = FindLayout::Lines;
    bool color = false;
    bool terminal = false;  ///< control characters are shown as pictures
    std::int32_t context = 0;
};

/// A file with hits as text; safe for several threads as long as their numbers differ. `finder`
/// outlives it.
class FindPrinter {
  public:
    static constexpr int kMostThreads = 64;

    FindPrinter(const LineFinder& finder, const FindStyle& style)
        : finder_(finder), style_(style), scratches_(kMostThreads) {}
    std::string Print(const FoundFile& file, int thread);
    /// Between the texts of two files.
    std::string Between() const;
    /// One more object of JSON, for what went wrong and for the end.
    static std::string ErrorObject(const FoundFile& file);
    static std::string SummaryObject(const FindCounts& counts, std::int64_t hits,
                                     std::int64_t files_with_hits);

  private:
    void PrintLine(const FoundFile& file, const FoundLine& line, int thread, std::string& out);
    void PrintObject(const FoundFile& file, const FoundLine& line, int thread, std::string& out);
    std::vector<MatchSpan> MatchesIn(std::string_view text, int thread);
    void Show(std::string_view text, std::string& out) const;
    void ShowColored(const char* color, std::string_view text, std::string& out) const;

    const LineFinder& finder_;
    FindStyle style_;
    std::vector<std::unique_ptr<MatchScratch>> scratches_;
};

/// "12 hits in 3 of 40 files, 2 binary files passed over"
std::string FindStatText(const FindCounts& counts, std::int64_t hits, std::int64_t files_with_hits);

}  // namespace zorvane
