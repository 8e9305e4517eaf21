// What kind of file a name denotes, and what a side of a compare therefore is.
#pragma once

#include <string>
#include <string_view>

#include "load/file_types.h"

namespace zorvane {

class clsCompareFileOptions;
class clsMRU;

/// What one side is: decided once, when its file enters a load, and carried from there.
struct SideType {
    const FileType* type = nullptr;  ///< the row of its name; nullptr: no row
    LoadRoad road = LoadRoad::AsItIs;
    bool as_text = false;  ///< shown letter by letter, whatever it holds

    bool IsSheets() const { return road == LoadRoad::Sheets; }
    /// A page, a message or the like, of whose letters people see others.
    bool IsRendered() const { return type != nullptr && type->form != TextForm::None; }
};

/// By the name; by the first bytes where the name says nothing or they must agree. `extensions` are
/// the user's own text extensions.
SideType TypeOfSide(const std::string& sFile, const clsCompareFileOptions& options,
                    const clsMRU& extensions);

/// The code of the viewer's options button. A text file is told to be Unicode by its bytes.
FileKind lFileType(const std::string& sFile, bool bRemoveFormatting, const clsMRU& extensions);
/// By equality, not by containment.
bool bIsFileText(std::string_view sFile, const clsMRU& extensions);
bool bIsFileTextOrExcel(std::string_view sFile, const clsMRU& extensions);
/// A web name that a word processor of version 15 or later opens by itself.
bool bLoadingFromSkyDrive(std::string_view sFile, double word_version);
/// UTF-16, by its byte-order mark or its look.
bool IsFileUnicode(const std::string& sFile);

}  // namespace zorvane
