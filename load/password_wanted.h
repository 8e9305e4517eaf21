// How a failed load tells that it wants a password.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// Stands in one of the reasons, whichever reader gave up.
constexpr std::string_view kPasswordWanted =
    "the document is protected and the password is missing or wrong";

/// Begins what follows for who types commands.
constexpr std::string_view kPasswordAdvice = "; give it with --";

inline bool WantsPassword(const std::vector<std::string>& reasons) {
    return std::any_of(reasons.begin(), reasons.end(), [](const std::string& reason) {
        return reason.find(kPasswordWanted) != std::string::npos;
    });
}

}  // namespace zorvane
