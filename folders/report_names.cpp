#include "folders/report_names.h"

#include "common/file_patterns.h"
#include "common/file_utilities.h"
#include "common/platform/native_path.h"

namespace zorvane {

std::string ReportExtensionOf(ReportType type) {
    switch (type) {
        case ReportType::Html:
            return ".htm";
        case ReportType::Text:
            return ".txt";
        case ReportType::Csv:
            return ".csv";
        case ReportType::Document:
            break;
    }
    return ".doc";
}

std::string ReportFileName(const ReportNaming& naming, std::string_view file) {
    const std::string root = sStripTrailingBackslash(naming.original_root);
    const std::string folder = sStripTrailingBackslash(sGetFolderPart(file));
    const std::string below =
        folder.size() > root.size() ? folder.substr(root.size()) : std::string();
    const std::string_view name = FileNameOf(file);
    const std::string_view extension = ExtensionOf(file);
    std::string base(name.substr(0, name.size() - extension.size() - (extension.empty() ? 0 : 1)));
    if (FilePatterns(naming.file_types).MatchesAll())
        base.append("_").append(extension);
    const std::string target = sStripTrailingBackslash(naming.report_folder) + below;
    return JoinPath(target, base + naming.extension);
}

}  // namespace zorvane
