#include "common/path_tokens.h"

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "common/platform/services.h"

namespace zorvane {
namespace {

struct TokenRow {
    std::string_view token;
    std::string_view replaced;
    std::int32_t folder;
};
// In the order of the tests: the first token that occurs ends the expansion.
constexpr TokenRow kTokens[] = {
    {"%USERPROFILE%", "%USERPROFILE%", 40},
    {"%HOMEPATH%", "%USERPROFILE%", 40},
    {"%APPDATA%", "%APPDATA%", 26},
    {"%LOCALAPPDATA%", "%LOCALAPPDATA%", 28},
    {"%WINDIR%", "%WINDIR%", 36},
    {"%PROGRAMFILES(X86)%", "%PROGRAMFILES(X86)%", 42},
    {"%PROGRAMFILES%", "%PROGRAMFILES%", 38},
    {"%MYDOCUMENTS%", "%MYDOCUMENTS%", 5},
};

std::string ReplaceAll(std::string path, std::string_view token, const std::string& folder) {
    std::string upper = AsciiUpper(path);
    std::size_t at = 0;
    while ((at = upper.find(token, at)) != std::string::npos) {
        path.replace(at, token.size(), folder);
        upper.replace(at, token.size(), folder);
        at += folder.size();
    }
    return path;
}

}  // namespace

std::string sExpandPathTokens(SpecialFolders& folders, std::string_view path) {
    std::string trimmed(Trim(path));
    const std::string upper = AsciiUpper(trimmed);
    for (const TokenRow& row : kTokens) {
        if (upper.find(row.token) == std::string::npos)
            continue;
        const std::string folder = folders.GetSpecialFolder(row.folder);
        return folder == "(error)" ? trimmed : ReplaceAll(trimmed, row.replaced, folder);
    }
    return trimmed;
}

}  // namespace zorvane
