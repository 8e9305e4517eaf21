// How a failed load tells that it wants a password.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// Stands in one of the reasons, whichever reader gave up, in the language of the process.
constexpr std::string_view kPasswordWanted =
    "the document is protected and the password is missing or wrong";

/// Begins what follows for who types commands.
constexpr std::string_view kPasswordAdvice = "; give it with --";

/// `wanted`: `kPasswordWanted` in the language of the reasons.
inline bool WantsPassword(const std::vector<std::string>& reasons, std::string_view wanted) {
    return std::any_of(reasons.begin(), reasons.end(), [wanted](const std::string& reason) {
        return reason.find(wanted) != std::string::npos;
    });
}

/// As who types no commands reads it.
inline std::string WithoutAdvice(std::string reason) {
    return reason.erase(std::min(reason.find(kPasswordAdvice), reason.size()));
}

}  // namespace zorvane
