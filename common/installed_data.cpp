#include "common/installed_data.h"

#include <unistd.h>

#include "common/platform/native_path.h"
#include "common/platform/services.h"

namespace zorvane {

std::string InstalledData(SpecialFolders& folders, std::string_view name) {
    const std::string program = folders.ProgramFolder();
    std::string installed = JoinPath(JoinPath(ParentOf(program), "share/zorvane"), name);
    for (const std::string& path :
         {installed, JoinPath(JoinPath(program, "share/zorvane"), name), JoinPath(program, name)}) {
        if (access(NativePath(path).c_str(), F_OK) == 0)
            return path;
    }
    return installed;
}

}  // namespace zorvane
