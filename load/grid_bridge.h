// Workbooks to comma-delimited files without an office suite. The names are those of the library's
// functions; each setting gives back 0.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "load/conversion_service.h"
#include "load/trellis_grid.h"

namespace zorvane {

class GridBridge {
  public:
    /// `service` is borrowed.
    GridBridge(ConversionService& service, ConversionObserver observer)
        : service_(service), observer_(std::move(observer)) {}

    std::int32_t OptSheetsSet(const std::string& sSheets) { return Set(sheets_, sSheets); }
    /// 1: formulas in place of values.
    std::int32_t OptXLSExportTypeSet(std::int32_t lType) { return Set(formulas_, lType == 1); }
    /// 1: the values too.
    std::int32_t OptXLSExportDataAlwaysSet(std::int32_t lFlag) { return Set(values_, lFlag == 1); }
    std::int32_t OptInputFileSet(const std::string& sFile) { return Set(source_, sFile); }
    std::int32_t OptOutputFileSet(const std::string& sFile) { return Set(target_, sFile); }
    /// To open a protected workbook.
    std::int32_t OptPasswordSet(const std::string& sPassword) { return Set(password_, sPassword); }

    /// Non-zero is a failure, which `GetErrorString` tells. Leading zeros stay, the delimiter is a
    /// comma, an empty sheet makes an empty file, each sheet makes a file.
    std::int32_t ConvertFile();
    std::string GetErrorString() const { return error_; }
    const SheetFiles& JustMade() const { return made_; }

    /// Reads the names of the sheets; non-zero is a failure.
    std::int32_t ExcelGetProperties();
    std::int32_t GetNumberOfSheets() const {
        return static_cast<std::int32_t>(sheet_names_.size());
    }
    /// `lIndex` from 1; non-zero for an index without a sheet.
    std::int32_t GetSheetName(std::int32_t lIndex, std::string& sName) const;

  private:
    template <class T, class Value>
    static std::int32_t Set(T& member, const Value& value) {
        member = value;
        return 0;
    }

    ConversionService& service_;
    ConversionObserver observer_;
    std::string sheets_ = "1";
    std::string source_;
    std::string target_;
    std::string password_;
    bool formulas_ = false;
    bool values_ = false;
    std::string error_;
    SheetFiles made_;
    std::vector<std::string> sheet_names_;
};

}  // namespace zorvane
