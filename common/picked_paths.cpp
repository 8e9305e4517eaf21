#include "common/picked_paths.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/path_tokens.h"

namespace zorvane {

std::string sFolderDialogStart(SpecialFolders& folders, std::string_view sStart) {
    std::string path = sExpandPathTokens(folders, sStart);
    std::replace(path.begin(), path.end(), '*', 'A');
    // The root is a separator and nothing else.
    return path.size() > 1 ? sStripTrailingBackslash(path) : path;
}

std::string sFolderDialogResult(std::string_view sChosen) {
    std::string path(sChosen.substr(0, sChosen.find('\0')));
    if (path.empty() || path.ends_with('/') || path.ends_with('\\'))
        return path;
    const bool by_slash = path.find('/') != std::string::npos;
    return path + (by_slash ? '/' : '\\');
}

bool bIsSaveTitle(std::string_view sTitle, std::string_view sSave) {
    return !sSave.empty() && ToUpper(sTitle).find(ToUpper(sSave)) != std::string::npos;
}

}  // namespace zorvane
