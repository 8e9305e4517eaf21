#include "load/grid_bridge.h"

namespace zorvane {

std::int32_t GridBridge::ConvertFile() {
    const ConversionResult result = service_.Run({{"kind", "sheets"},
                                                  {"source", source_},
                                                  {"target", target_},
                                                  {"sheets", sheets_},
                                                  {"formulas", formulas_ ? "1" : "0"},
                                                  {"values", values_ ? "1" : "0"},
                                                  {"password", password_}},
                                                 observer_);
    made_ = {result.files, result.sheets};
    error_ = service_.Explain(result, source_);
    return static_cast<std::int32_t>(result.error);
}

std::int32_t GridBridge::ExcelGetProperties() {
    const ConversionResult result = service_.Run(
        {{"kind", "sheetnames"}, {"source", source_}, {"password", password_}}, observer_);
    sheet_names_ = result.sheets;
    error_ = service_.Explain(result, source_);
    return static_cast<std::int32_t>(result.error);
}

std::int32_t GridBridge::GetSheetName(std::int32_t lIndex, std::string& sName) const {
    if (lIndex < 1 || lIndex > GetNumberOfSheets())
        return 1;
    sName = sheet_names_[static_cast<std::size_t>(lIndex - 1)];
    return 0;
}

}  // namespace zorvane
