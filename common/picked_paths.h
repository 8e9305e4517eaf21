// What the dialogs for files and folders begin with, and what they give back.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

class SpecialFolders;

/// Where a choice of a folder begins: tokens are expanded, and a name with wildcards is one of a
/// folder all the same.
std::string sFolderDialogStart(SpecialFolders& folders, std::string_view sStart);
/// A chosen folder ends in a separator; the empty text of a cancelled dialog stays empty.
std::string sFolderDialogResult(std::string_view sChosen);
/// True when a title asks for a name to save to, by the word "save" of the language in force.
bool bIsSaveTitle(std::string_view sTitle, std::string_view sSave);

}  // namespace zorvane
