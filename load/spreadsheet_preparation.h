// A spreadsheet as the one comma-delimited file that is compared: its sheets converted, trimmed,
// padded, cropped, headed by their names, joined.
#pragma once

#include <string>

#include "common/base/side.h"
#include "load/grid_bridge.h"
#include "load/load_context.h"
#include "load/trellis_grid.h"

namespace zorvane {

class SpreadsheetPreparation {
  public:
    explicit SpreadsheetPreparation(LoadContext& context);

    /// True when `sTempFile` holds the text. A failure has been logged; files made before it stay.
    /// A binary workbook turns `bExcelQuickTextExtraction` off for good.
    bool bPrepareExcelFileForComparing(const std::string& sFile, const std::string& sTempFile,
                                       Side side);

  private:
    /// The options of one side.
    struct SideOptions {
        std::string sheets;
        std::string rows;
        std::string cols;
        bool use_rows = false;
        bool use_cols = false;
        std::string password;
        std::string password_to_write;
    };
    SideOptions OptionsOf(Side side) const;
    bool AnyPassword() const;
    bool bPrepareExcelFileForComparingGridBridge(const std::string& sFile,
                                                 const std::string& sTempFile, Side side);
    bool bPrepareExcelFileForComparingTrellisGrid(const std::string& sFile,
                                                  const std::string& sTempFile, Side side);
    bool PrepareCommaDelimited(const std::string& sFile, const std::string& sTempFile, Side side);
    /// Each sheet, then all of them with their headers as one file.
    bool PrepareAll(const SheetFiles& made, const SideOptions& options);
    bool PrepareOne(const std::string& file, const SideOptions& options);
    bool AddHeaders(const SheetFiles& made);
    bool JoinAll(const SheetFiles& made);
    bool AddStringToTopOfTextFile(const std::string& sFile, const std::string& sText);
    bool CheckVersion() const;
    bool Fail(std::string_view tag, std::string_view text);
    void LogLoadFailure(const std::string& text, const std::string& sFile);

    LoadContext& context_;
    TrellisGrid grid_;
    ConversionObserver observer_;
};

}  // namespace zorvane
