// What is looked for.
#pragma once

#include <cstdint>
#include <string>

namespace zorvane {

enum class FindSyntax : std::uint8_t {
    Literal,
    /// A regular expression in which a "*" behind a plain character is any run of characters and a
    /// "?" any one or none, as in names of files; behind a class, a group or a "." they repeat.
    Simple,
    Full  ///< a regular expression as elsewhere
};

enum class WordRule : std::uint8_t {
    Any,
    Letters,  ///< no letter, digit or "_" beside it
    Blanks    ///< nothing but blanks or the line's ends beside it
};

struct FindRules {
    std::string text;  ///< UTF-8
    FindSyntax syntax = FindSyntax::Literal;
    WordRule word = WordRule::Any;
    bool match_case = false;
    friend bool operator==(const FindRules&, const FindRules&) = default;
};

}  // namespace zorvane
