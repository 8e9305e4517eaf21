#include "load/spreadsheet_preparation.h"

#include <algorithm>
#include <fmt/format.h>

#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/process_state.h"
#include "load/file_types.h"

namespace zorvane {
namespace {

ConversionObserver Quietly(const LoadContext& context) {
    return [&context](std::int32_t) { return context.KeepGoing(); };
}

}  // namespace

SpreadsheetPreparation::SpreadsheetPreparation(LoadContext& context)
    : context_(context),
      grid_(context.service, Quietly(context), context.watcher),
      observer_(Quietly(context)) {}

SpreadsheetPreparation::SideOptions SpreadsheetPreparation::OptionsOf(Side side) const {
    const clsCompareFileOptions& options = context_.options;
    if (side == Side::Original) {
        return {options.sExcelSheetNumberMaster.Data(),  options.sExcelRowsMaster.Data(),
                options.sExcelColsMaster.Data(),         options.bExcelUseRowsMaster.Data(),
                options.bExcelUseColsMaster.Data(),      options.sExcelPasswordOriginal.Data(),
                options.sExcelPasswordOriginal_TW.Data()};
    }
    return {options.sExcelSheetNumberSource.Data(),  options.sExcelRowsSource.Data(),
            options.sExcelColsSource.Data(),         options.bExcelUseRowsSource.Data(),
            options.bExcelUseColsSource.Data(),      options.sExcelPasswordModified.Data(),
            options.sExcelPasswordModified_TW.Data()};
}

// The four are tested together: a password of one side decides for both.
bool SpreadsheetPreparation::AnyPassword() const {
    const clsCompareFileOptions& options = context_.options;
    return !(options.sExcelPasswordOriginal.Data().empty() &&
             options.sExcelPasswordModified.Data().empty() &&
             options.sExcelPasswordOriginal_TW.Data().empty() &&
             options.sExcelPasswordModified_TW.Data().empty());
}

void SpreadsheetPreparation::LogLoadFailure(const std::string& text, const std::string& sFile) {
    LogMessage(context_.telling, "LoadFileIntoEditor(): " + text + "\n\n" + sFile);
}

bool SpreadsheetPreparation::Fail(std::string_view tag, std::string_view text) {
    if (!context_.KeepGoing())
        return false;  // a user's own stop is no error
    LogMessage(context_.telling, std::string(tag) + ": " + context_.process.Translate(text));
    return false;
}

bool SpreadsheetPreparation::bPrepareExcelFileForComparing(const std::string& sFile,
                                                           const std::string& sTempFile,
                                                           Side side) {
    const ScopedNamedMutex lock(*context_.process.platform.mutexes, "Zorvane_Global_Mutex");
    const FileType* type = TypeNamed(sFile);
    if (type == nullptr || type->kind != FileKind::Spreadsheet)
        return PrepareCommaDelimited(sFile, sTempFile, side);
    const bool installed = grid_.ExcelIsInstalled();
    if (type->needs_office) {
        if (!installed) {
            LogLoadFailure(context_.process.Translate("Please install correct version of Excel."),
                           sFile);
            const ConversionResult missing = FailedConversion(ReadError::NeedsOffice);
            context_.service.NoteFailure(missing, sFile);
            LogMessage(context_.telling, context_.service.Explain(missing, sFile));
            return false;
        }
        context_.options.bExcelQuickTextExtraction.SetData(false);
    }
    const bool use_library =
        (context_.options.bExcelQuickTextExtraction.Data() && !AnyPassword()) || !installed;
    if (!use_library && bPrepareExcelFileForComparingTrellisGrid(sFile, sTempFile, side))
        return true;
    return bPrepareExcelFileForComparingGridBridge(sFile, sTempFile, side);
}

bool SpreadsheetPreparation::bPrepareExcelFileForComparingGridBridge(const std::string& sFile,
                                                                     const std::string& sTempFile,
                                                                     Side side) {
    const SideOptions options = OptionsOf(side);
    const clsCompareFileOptions& all = context_.options;
    GridBridge bridge(context_.service, observer_);
    bridge.OptSheetsSet(options.sheets);
    bridge.OptXLSExportTypeSet(all.bExcelCompareFormulas.Data() ? 1 : 0);
    bridge.OptXLSExportDataAlwaysSet(all.bExcelIncludeValues.Data() ? 1 : 0);
    bridge.OptInputFileSet(sFile);
    bridge.OptOutputFileSet(sTempFile);
    bridge.OptPasswordSet(options.password.empty() ? options.password_to_write : options.password);
    if (bridge.ConvertFile() != 0) {
        LogLoadFailure(context_.process.Translate("Unable to convert spreadsheet."), sFile);
        LogLoadFailure(bridge.GetErrorString(), sFile);
        return false;
    }
    return PrepareAll(bridge.JustMade(), options);
}

bool SpreadsheetPreparation::CheckVersion() const {
    constexpr double kInTenths = 80;
    constexpr double kNewestVersion = 16.1;
    const double read = grid_.ExcelVersion();
    if ((read >= kInTenths ? read / 10 : read) <= kNewestVersion)
        return true;
    LogMessage(context_.telling, context_.process.Translate("Error 20: Version of MS Excel") +
                                     fmt::format(" : Version ({})", read));
    return false;
}

bool SpreadsheetPreparation::bPrepareExcelFileForComparingTrellisGrid(const std::string& sFile,
                                                                      const std::string& sTempFile,
                                                                      Side side) {
    const SideOptions options = OptionsOf(side);
    grid_.InputFile_PassWord = options.password;
    grid_.InputFile_PassWord_TW = options.password_to_write;
    if (!CheckVersion())
        return false;
    const clsCompareFileOptions& all = context_.options;
    if (grid_.OpenXLSSaveAs(sFile, sTempFile, options.sheets, all.bExcelCompareFormulas.Data(),
                            all.bExcelIncludeValues.Data()) != 0)
        return false;  // without a message: the library has its try next
    return PrepareAll(grid_.JustMade(), options);
}

bool SpreadsheetPreparation::PrepareCommaDelimited(const std::string& sFile,
                                                   const std::string& sTempFile, Side side) {
    constexpr std::uint32_t kUsualMode = 0666;
    const Status copied = CopyFileReplacingReadOnly(sFile, sTempFile, kUsualMode, context_.watcher);
    if (!copied.ok() && !context_.KeepGoing())
        return false;
    if (!copied.ok()) {
        LogLoadFailure(context_.process.Translate("Unable to copy file."),
                       sFile + "\n" + copied.failure().reason);
        return false;
    }
    if (grid_.csvRecogniseFile(sTempFile, sTempFile,
                               context_.process.platform.locale->EncodingName()) != 0)
        return Fail("SP_TRIM_CSV_FILE", "Unable to trim CSV file.");
    return PrepareOne(sTempFile, OptionsOf(side));
}

bool SpreadsheetPreparation::PrepareOne(const std::string& file, const SideOptions& options) {
    constexpr std::int32_t kWidest = 1000;
    constexpr std::string_view kUnable = "Unable to process CSV file.";
    if (grid_.csvTrimCSVFile(file, file) != 0)
        return Fail("SP_TRIM_CSV_FILE", "Unable to trim CSV file.");
    const std::int32_t width = context_.options.lPadLength.Data();
    const bool fixed = width >= 1 && width <= kWidest;
    if ((fixed ? grid_.csvPadForFixedLengthFields(file, file, width)
               : grid_.csvPadWithSpaces(file, file)) != 0)
        return Fail("SP_PAD_CSV_FILE_WITH_SPACES", kUnable);
    if (grid_.csvRemoveControlCharactersFromFile(file, file) != 0)
        return Fail("SP_REMOVE_CTRL_CHARS_FROM_FILE", kUnable);
    if (options.use_rows && grid_.csvCropCSVFileRows(file, file, options.rows) != 0)
        return Fail("SP_CROP_CSV_TO_ROWS", kUnable);
    if (options.use_cols && grid_.csvCropCSVFileCols(file, file, options.cols) != 0)
        return Fail("SP_CROP_CSV_TO_COLUMNS", kUnable);
    return true;
}

bool SpreadsheetPreparation::PrepareAll(const SheetFiles& made, const SideOptions& options) {
    return std::all_of(made.files.begin(), made.files.end(),
                       [&](const std::string& file) { return PrepareOne(file, options); }) &&
           AddHeaders(made) && JoinAll(made);
}

bool SpreadsheetPreparation::AddHeaders(const SheetFiles& made) {
    for (std::size_t i = 0; i < made.files.size(); ++i) {
        std::string text;
        if (i > 0 && context_.options.bExcelAddNewLineBetweenSheets.Data())
            text = "\r\n";
        if (context_.options.bExcelAddSheetNameBetweenSheets.Data())
            text += "============= " + made.names[i] + " =============";
        if (!AddStringToTopOfTextFile(made.files[i], text))
            return false;
    }
    return true;
}

bool SpreadsheetPreparation::AddStringToTopOfTextFile(const std::string& sFile,
                                                      const std::string& sText) {
    if (sText.empty())
        return true;
    const std::string scratch = sFile + "_append";
    return WriteWholeFile(scratch, sText + "\r\n").ok() &&
           grid_.ConcatenateTwoTextFilesEx(sFile, scratch) == 0 &&
           MoveFileByCopy(scratch, sFile).ok();
}

// The first of them is the target itself.
bool SpreadsheetPreparation::JoinAll(const SheetFiles& made) {
    for (std::size_t i = 1; i < made.files.size(); ++i) {
        if (grid_.ConcatenateTwoTextFilesEx(made.files[i], made.files[0]) != 0 ||
            !DeleteFileWithRetry(*context_.process.platform.clock, made.files[i]))
            return Fail("SP_CONCATENATE_ALL", "Unable to process CSV file.");
    }
    return true;
}

}  // namespace zorvane
