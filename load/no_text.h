// A document in which no text was found is not an empty one: who is told "no differences" about two
// scans would believe it.
#pragma once

#include <string>
#include <string_view>

#include "common/base/side.h"
#include "load/file_kind.h"

namespace zorvane {

class clsCompareFileOptions;
struct CompareFilesSettings;

/// What was asked of a file, and what came of it.
struct LoadedText {
    const SideType& type;
    std::string_view shown_name;
    const std::string& file;
    std::u16string_view text;
    const clsCompareFileOptions& options;
    const CompareFilesSettings& settings;
    Side side = Side::Original;
};

/// In a user's words, what was looked for in vain and what to do about it; empty when there is
/// text, and for a file that holds nothing but white space.
std::string WhyNoText(const LoadedText& loaded);

}  // namespace zorvane
