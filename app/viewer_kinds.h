// The three kinds of viewers, with what the frame stores and says of each.
#pragma once

#include <cstdint>
#include <string>

#include "compare/viewer.h"

namespace zorvane {

struct ViewerKindRow {
    ViewerKind kind;
    const char* suffix;
    const char* count_key;
    std::int32_t restored_at_first;
    const char* words;
    const char* saved_key;  ///< stands in the section of each viewer that was ever saved
};
constexpr ViewerKindRow kViewerKinds[] = {
    {ViewerKind::CompareFiles, "_CompareFile", "numCFForms", 1, "Compare Files", "dFontSize"},
    {ViewerKind::CompareFolders, "_CompareDir", "numCDForms", 0, "Compare Folders", "FontSize"},
    {ViewerKind::FindText, "_FindText", "numFTForms", 0, "Find Text In Files", "FontSize"},
};
inline const ViewerKindRow& RowOf(ViewerKind kind) {
    return kViewerKinds[static_cast<std::size_t>(kind)];
}

inline std::string NameOf(ViewerKind kind, std::int32_t number) {
    return std::to_string(number) + RowOf(kind).suffix;
}

}  // namespace zorvane
