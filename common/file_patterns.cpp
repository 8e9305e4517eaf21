#include "common/file_patterns.h"

#include <algorithm>
#include <cstddef>

#include "common/base/ascii.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

// Names are bytes; where they are UTF-8, a character may be several.
std::size_t BehindCharacter(std::string_view name, std::size_t at) {
    ++at;
    while (at < name.size() && IsContinuation(name[at]))
        ++at;
    return at;
}

// On a mismatch only the last "*" has to take more: what an earlier one took cannot matter.
bool MatchesOne(std::string_view pattern, std::string_view name) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t in_pattern = 0;
    std::size_t in_name = 0;
    std::size_t star = kNone;
    std::size_t star_name = 0;
    while (in_name < name.size()) {
        const char wanted = in_pattern < pattern.size() ? pattern[in_pattern] : '\0';
        if (wanted == '*') {
            star = in_pattern++;
            star_name = in_name;
        } else if (wanted == '?') {
            ++in_pattern;
            in_name = BehindCharacter(name, in_name);
        } else if (in_pattern < pattern.size() && wanted == AsciiLower(name[in_name])) {
            ++in_pattern;
            ++in_name;
        } else if (star != kNone) {
            in_pattern = star + 1;
            in_name = ++star_name;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in_pattern) == kNone;
}

}  // namespace

FilePatterns::FilePatterns(std::string_view patterns) {
    std::string one;
    bool quoted = false;
    bool every = false;
    const auto take = [&] {
        every = every || one == "*" || one == "*.*";
        if (!one.empty())
            patterns_.push_back(std::move(one));
        one.clear();
    };
    for (const char character : patterns) {
        if (character == '"')
            quoted = !quoted;
        else if (!quoted && (character == ' ' || character == '\t' || character == ';'))
            take();
        else
            one += AsciiLower(character);
    }
    take();
    if (every)
        patterns_.clear();
}

bool FilePatterns::Matches(std::string_view name) const {
    return patterns_.empty() ||
           std::any_of(patterns_.begin(), patterns_.end(),
                       [name](const std::string& pattern) { return MatchesOne(pattern, name); });
}

}  // namespace zorvane
