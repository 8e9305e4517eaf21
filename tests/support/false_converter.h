// Puts the converter that lies (compile definition ZORVANE_FALSE_CONVERTER) in the place of
// zorvane-convert.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "load/conversion_service.h"

namespace zorvane {

/// It will say `first` and then, unless it is empty, `again` for ever.
inline void InstallFalseConverter(const std::string& folder, std::string_view first,
                                  std::string_view again) {
    namespace fs = std::filesystem;
    const std::string program = folder + "/zorvane-convert";
    fs::remove(program);
    fs::create_symlink(ZORVANE_FALSE_CONVERTER, program);
    std::ofstream(program + ".first", std::ios::binary) << first;
    std::ofstream(program + ".again", std::ios::binary) << again;
}

}  // namespace zorvane
