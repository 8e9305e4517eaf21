// Where the files lie that are installed with the program: languages, quick start, help.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

class SpecialFolders;

/// Full path of an installed file or folder by its name in "share/zorvane", which lies beside the
/// program's folder, or in it where the program was only built, or is it. A name that is in none of
/// them gives the place where an installation would have put it.
std::string InstalledData(SpecialFolders& folders, std::string_view name);

}  // namespace zorvane
