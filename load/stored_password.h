// The password to open a side's document, among those that options and settings keep by type.
#pragma once

#include <string>

#include "common/base/side.h"
#include "load/file_type_options.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {

/// Empty where there is none. PDF documents share two, and each is tried on both sides.
inline const std::string& StoredPassword(FileTypeOptions type, Side side,
                                         const clsCompareFileOptions& options,
                                         const CompareFilesSettings& settings) {
    const bool original = side == Side::Original;
    if (type == FileTypeOptions::Pdf)
        return original || settings.sBCLPasswordOwner.empty() ? settings.sBCLPasswordUser
                                                              : settings.sBCLPasswordOwner;
    if (type == FileTypeOptions::Spreadsheet)
        return (original ? options.sExcelPasswordOriginal : options.sExcelPasswordModified).Data();
    return (original ? options.sDOCPassword_TO_Original : options.sDOCPassword_TO_Modified).Data();
}

}  // namespace zorvane
