// Environment-style tokens such as %APPDATA% in settings and report paths.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

class SpecialFolders;

/// The trimmed path with one kind of token replaced, all its occurrences, found without regard to
/// case. Kept: %HOMEPATH% alone stays as it was, since its branch replaces only %USERPROFILE%. A
/// folder that cannot be found leaves the path unchanged.
std::string sExpandPathTokens(SpecialFolders& folders, std::string_view path);

}  // namespace zorvane
