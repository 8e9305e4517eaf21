// The operations on comma-delimited files, and workbooks to such files by the road that may use an
// office suite.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "common/base/run_watcher.h"
#include "load/conversion_service.h"
#include "load/csv_operations.h"

namespace zorvane {

/// Files that a conversion made, one for each sheet, and the sheets' names.
struct SheetFiles {
    std::vector<std::string> files;
    std::vector<std::string> names;
};

/// Results are 0 on success. A file may be worked on in place.
class TrellisGrid {
  public:
    /// `service` and `watcher` are borrowed. What the watcher stops fails and leaves the file as it
    /// was.
    TrellisGrid(ConversionService& service, ConversionObserver observer,
                RunWatcher* watcher = nullptr)
        : service_(service), observer_(std::move(observer)), watcher_(watcher) {}

    bool ExcelIsInstalled() { return service_.OfficeInstalled(); }
    double ExcelVersion() const { return 16.0; }
    std::string InputFile_PassWord;
    std::string InputFile_PassWord_TW;
    bool OptimizeForSpeed() const { return service_.OfficeStays(); }
    void putOptimizeForSpeed(bool keep) { service_.SetOfficeStays(keep); }

    /// Comma-delimited files from a workbook, through an office suite where only that reads it.
    /// `bValues`: with formulas, the values too.
    std::int32_t OpenXLSSaveAs(const std::string& sFile, const std::string& sTarget,
                               const std::string& sSheets, bool bFormulas, bool bValues = false);
    std::int32_t FilesJustCreatedCount() const {
        return static_cast<std::int32_t>(made_.files.size());
    }
    const SheetFiles& JustMade() const { return made_; }
    /// Why the last conversion failed, for a user.
    const std::string& ErrorString() const { return error_; }

    /// A user's file in any encoding and with any delimiter becomes UTF-8 with commas, which the
    /// other operations want. `sLocaleEncoding` is for bytes that tell no encoding.
    std::int32_t csvRecogniseFile(const std::string& sIn, const std::string& sOut,
                                  const std::string& sLocaleEncoding);
    std::int32_t csvTrimCSVFile(const std::string& sIn, const std::string& sOut);
    std::int32_t csvPadWithSpaces(const std::string& sIn, const std::string& sOut);
    std::int32_t csvPadForFixedLengthFields(const std::string& sIn, const std::string& sOut,
                                            std::int32_t lLength);
    std::int32_t csvRemoveControlCharactersFromFile(const std::string& sIn,
                                                    const std::string& sOut);
    std::int32_t csvCropCSVFileRows(const std::string& sIn, const std::string& sOut,
                                    const std::string& sRows);
    std::int32_t csvCropCSVFileCols(const std::string& sIn, const std::string& sOut,
                                    const std::string& sCols);
    std::int32_t csvRemoveEmptyLines(const std::string& sIn, const std::string& sOut);
    /// Appends the first file to the end of the second.
    std::int32_t ConcatenateTwoTextFilesEx(const std::string& sFirst, const std::string& sSecond);

  private:
    /// One operation from file to file.
    std::int32_t Rewrite(const std::string& sIn, const std::string& sOut,
                         const std::function<std::string(const std::string&)>& operation) const;
    CsvInput Input() const { return {{}, watcher_}; }

    ConversionService& service_;
    ConversionObserver observer_;
    RunWatcher* watcher_;
    SheetFiles made_;
    std::string error_;
};

}  // namespace zorvane
