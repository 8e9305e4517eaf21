#include "load/sheet_names.h"

#include "common/file_utilities.h"
#include "load/grid_bridge.h"

namespace zorvane {

Result<std::vector<std::string>> ReadSheetNames(
    GridBridge& bridge, const std::string& sFile,
    const std::function<std::string(std::string_view)>& translate) {
    if (!bFileExists(sFile))
        return Failure{translate("Source file does not exist: ") + sFile};
    if (bridge.OptInputFileSet(sFile) != 0)
        return Failure{translate("Unable to Set Input File")};
    if (bridge.ExcelGetProperties() != 0) {
        const std::string why = bridge.GetErrorString();
        return Failure{translate("Unable to Get Excel Properties") +
                       (why.empty() ? "" : "\n\n" + why)};
    }
    const std::int32_t count = bridge.GetNumberOfSheets();
    if (count <= 0)
        return Failure{translate("Unable to Get Number Of Sheets")};
    std::vector<std::string> names;
    for (std::int32_t index = 1; index <= count; ++index) {
        std::string name;
        if (bridge.GetSheetName(index, name) != 0)
            return Failure{translate("Unable to GetSheetName(") + std::to_string(index) + ")"};
        names.push_back(std::move(name));
    }
    return names;
}

std::string JoinedSheetNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names)
        joined += (joined.empty() ? "" : ",") + name;
    return joined;
}

}  // namespace zorvane
