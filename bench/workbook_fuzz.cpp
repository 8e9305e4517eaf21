// Any bytes as a workbook: each sheet is read, with values and with formulas.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "load/readers/sheets/workbook.h"

namespace {

class Patient : public zorvane::ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::unique_ptr<zorvane::Workbook> workbook;
    if (!zorvane::OpenWorkbook(bytes, "", workbook).ok())
        return 0;
    Patient monitor;
    // A small file can tell of a million empty rows; a few thousand prove as much.
    constexpr int kRows = 5000;
    for (std::size_t i = 0; i < workbook->Sheets().size() && i < 4; ++i) {
        for (const bool formulas : {false, true}) {
            int rows = 0;
            const zorvane::RowSink sink = [&rows](const std::vector<std::string_view>&) {
                return ++rows < kRows;
            };
            (void)workbook->ReadSheet(i, {formulas, formulas}, sink, monitor);
        }
    }
    return 0;
}
