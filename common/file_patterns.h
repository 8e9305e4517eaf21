// Patterns for names of files, as a user types them: *.TXT *.XLS
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// A "*" is any run of characters, a "?" one character; A to Z and a to z are the same. "*.*" is
/// every name, with a dot or without. Safe for several threads at once.
class FilePatterns {
  public:
    /// Separated by blanks or ";"; one with a blank in it stands in double quotes. None is every
    /// name.
    explicit FilePatterns(std::string_view patterns = {});
    bool Matches(std::string_view name) const;
    bool MatchesAll() const { return patterns_.empty(); }

  private:
    std::vector<std::string> patterns_;  ///< in lower case; empty: every name
};

}  // namespace zorvane
