#include "load/document_loader.h"

#include <cstring>
#include <sys/stat.h>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "compare/document/rtf_reader.h"
#include "load/file_kind.h"
#include "load/text_preparation.h"

namespace zorvane {
namespace {

// Extensions that the diff editors take as they stand. By containment "C" is met by any extension
// with that letter, DOC included.
constexpr std::string_view kCopiedAsIs =
    "DAT ASP JS VB VBS LOG MOD BAS FRM C CPP TXT RTF JHTM XHTM PHP HTM";
constexpr char16_t kSoftHyphen = 0xAD;

// Puts the pointer back when a load ends, by whatever road.
class Hourglass {
  public:
    explicit Hourglass(LoadQuestions& questions) : questions_(questions) {
        questions_.SetHourglass(true);
    }
    ~Hourglass() { questions_.SetHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    LoadQuestions& questions_;
};

std::string TimeText(const timespec& time) {
    return std::to_string(time.tv_sec) + "." + std::to_string(time.tv_nsec);
}

WordPasswords PasswordsOf(const clsCompareFileOptions& options, Side side) {
    if (side == Side::Original) {
        return {options.sDOCPassword_TO_Original.Data(), options.sDOCPassword_TOTW_Original.Data(),
                options.sDOCPasswordTemplate_TO_Original.Data(),
                options.sDOCPasswordTemplate_TOTW_Original.Data()};
    }
    return {options.sDOCPassword_TO_Modified.Data(), options.sDOCPassword_TOTW_Modified.Data(),
            options.sDOCPasswordTemplate_TO_Modified.Data(),
            options.sDOCPasswordTemplate_TOTW_Modified.Data()};
}

bool NamesContain(const PerSide<std::string>& files, std::string_view part) {
    return ToUpper(files.original).find(part) != std::string::npos ||
           ToUpper(files.modified).find(part) != std::string::npos;
}

bool IsSide(EditorTarget target) {
    return target == EditorTarget::Original || target == EditorTarget::Modified;
}
Side SideOf(EditorTarget target) {
    return target == EditorTarget::Original ? Side::Original : Side::Modified;
}

clsVarString& FileOption(clsCompareFileOptions& options, Side side) {
    return side == Side::Original ? options.sFileOriginal : options.sFileModified;
}

}  // namespace

DocumentLoader::DocumentLoader(LoaderParts parts)
    : parts_(std::move(parts)), word_(parts_.process.platform.locale->EncodingName()) {}

// The reason in front is the contract's; what the system said follows on a line of its own.
void DocumentLoader::LogFailure(const std::string& text, const std::string& sFile,
                                const std::string& reason) {
    std::string message = "LoadFileIntoEditor(): " + text + "\n\n" + sFile;
    if (!reason.empty())
        message += "\n" + reason;
    LogMessage(parts_.process, message);
}

bool DocumentLoader::SelectFile(Side side, std::string& sFile) {
    if (parts_.process.gbCommandLineRunning || !Trim(sFile).empty())
        return true;
    const char* question = side == Side::Original
                               ? "No original file has been selected. Select now?"
                               : "No modified file has been selected. Select now?";
    ProcessState& process = parts_.process;
    if (!parts_.questions.AskYesNo(process.Translate(question), process.Translate("Error")))
        return false;
    sFile = parts_.questions.BrowseFor(side);
    return bFileExists(sFile);
}

bool DocumentLoader::ReportMissing(const std::string& sFile) {
    ProcessState& process = parts_.process;
    const Result<std::string> bytes = ReadWholeFile(sFile);  // for the system's own words
    std::string message = process.Translate("File does not exist") + ":\r\n\r\n" + sFile;
    if (!bytes.ok() && bDirectoryExists(sFile))
        message += "\r\n" + bytes.failure().reason;
    if (process.gbCommandLineRunning)
        LogMessage(process, message);
    else
        parts_.questions.ShowMessage(message, process.Translate("Error"));
    return false;
}

std::optional<LoadedFileIdentity> DocumentLoader::IdentityOf(const std::string& sFile) const {
    struct stat facts {};
    if (stat(NativePath(sFile).c_str(), &facts) != 0)
        return std::nullopt;
    return LoadedFileIdentity{sFile,
                              TimeText(facts.st_mtim),
                              TimeText(facts.st_atim),
                              TimeText(facts.st_ctim),
                              static_cast<std::int64_t>(facts.st_mode),
                              static_cast<std::int64_t>(facts.st_size)};
}

void DocumentLoader::RememberFile(Side side, const std::string& sFile) {
    FileOption(parts_.options, side).SetData(sFile);
    parts_.recent_files[side].AddUniqueItemToCollection(sFile);
}

bool DocumentLoader::LoadSide(Side side, std::string& sFile, Reload reload) {
    if (!SelectFile(side, sFile))
        return false;
    if (!bLoadingFromSkyDrive(sFile, word_.WordVersion()) && !bFileExists(sFile))
        return ReportMissing(sFile);
    const bool optimize = parts_.options.bOptimizeFileLoading.Data();
    if (optimize && reload == Reload::WhenChanged && !bForceReload[side]) {
        const auto identity = IdentityOf(sFile);
        if (identity && *identity == loaded_[side])
            return true;
    }
    RememberFile(side, sFile);
    if (!LoadFileIntoEditor(
            sFile, side == Side::Original ? EditorTarget::Original : EditorTarget::Modified))
        return false;
    if (const auto identity = IdentityOf(sFile); identity && optimize)
        loaded_[side] = *identity;
    return true;
}

bool DocumentLoader::LoadFileIntoEditor(const std::string& sFile, EditorTarget target) {
    const Hourglass hourglass(parts_.questions);
    parts_.questions.PumpEvents();
    if (sFile.empty()) {
        LogMessage(parts_.process, "Unable to load file. Filename empty");
        return false;
    }
    const std::string temp_file =
        GetTempNameWithDocExtension(*parts_.process.platform.temp_files, "RTF");
    if (temp_file.empty()) {
        LogFailure("Unable to copy file.", sFile, "There is no temporary folder to write to.");
        return false;
    }
    if (!FillTempFile(sFile, temp_file, target))
        return false;
    const bool filled = FillEditor(sFile, temp_file, target);
    DeleteFileWithRetry(*parts_.process.platform.clock, temp_file);
    return filled;
}

bool DocumentLoader::FillTempFile(const std::string& sFile, const std::string& sTempFile,
                                  EditorTarget target) {
    if (IsSide(target)) {
        if (!ConvertFileIfNecessary(sFile, sTempFile, SideOf(target)))
            return false;
        RememberFile(SideOf(target), sFile);
        return true;
    }
    if (ExtensionContains(sFile, kCopiedAsIs) ||
        parts_.TextFileExtensions.bItemExistsInMRU(UpperExtension(sFile), true))
        return Copy(sFile, sTempFile);
    const bool plain = parts_.options.bRemoveFormatting.Data();
    return ConvertWord(sFile, sTempFile, plain ? WordFormat::PlainText : WordFormat::RichText, {});
}

bool DocumentLoader::FillEditor(const std::string& sFile, const std::string& sTempFile,
                                EditorTarget target) {
    clsCompareFileOptions& options = parts_.options;
    const bool spreadsheet = ExtensionContains(sFile, "CSV XLS");
    if (IsSide(target) && options.bRemoveBlankLines.Data()) {
        IgnoreFailure(DeleteEmptyLinesFromTextFile(sTempFile),
                      "the lines stay, and the read below reports what is wrong with the file");
        if (spreadsheet)
            options.bRemoveFormatting.SetData(true);
    }
    const bool plain = options.bRemoveFormatting.Data();
    bLoadedAsPlainText = bIsFileText(sFile, parts_.TextFileExtensions) || plain;
    if (IsSide(target) && options.bModifyOriginalDocuments.Data() && !plain && !spreadsheet)
        RemoveNumberedListAndEmptyLines(parts_.process, options, parts_.TextFileExtensions,
                                        sTempFile, sFile);
    const Result<std::string> bytes = ReadWholeFile(sTempFile);
    if (!bytes.ok()) {
        LogFailure("Unable to copy file.", sFile, bytes.failure().reason);
        return false;
    }
    clsRTBDocument& document = parts_.document(target);
    Editor& editor = document.RichTB();
    const bool as_plain_text = IsSide(target) && bLoadedAsPlainText;
    if (!as_plain_text && LooksLikeRtf(bytes.value()))
        editor.SetRich(ReadRtf(bytes.value()));
    else
        editor.SetText(DecodeText(
            bytes.value(),
            DetectEncoding(bytes.value(), parts_.process.platform.locale->EncodingName())));
    if (!parts_.process.translator.gbDoubleByteLocale && !(IsSide(target) && plain))
        document.FindAndReplaceString({&kSoftHyphen, 1}, u"-", true);
    if (!IsSide(target))
        return true;
    bForceReload[SideOf(target)] = false;
    if (bSpaceAddedToTextFile) {
        bSpaceAddedToTextFile = false;
        RemoveFirstSpaceOfRichTextBox(editor);
    }
    return true;
}

bool DocumentLoader::ConvertWord(const std::string& sFile, const std::string& sTempFile,
                                 WordFormat format, const WordPasswords& passwords) {
    const Status converted = word_.Convert(sFile, sTempFile, format, passwords);
    if (!converted.ok())
        LogFailure("Unable to convert Word file.", sFile, converted.failure().reason);
    return converted.ok();
}

bool DocumentLoader::Copy(const std::string& sFile, const std::string& sTempFile) {
    const Status copied = CopyFileReplacingReadOnly(sFile, sTempFile);
    if (!copied.ok())
        LogFailure("Unable to copy file.", sFile, copied.failure().reason);
    return copied.ok();
}

bool DocumentLoader::CopyText(const std::string& sFile, const std::string& sTempFile) {
    const bool copied = IsFileUnicode(sFile)
                            ? ConvertWord(sFile, sTempFile, WordFormat::PlainText, {})
                            : Copy(sFile, sTempFile);
    if (!copied)
        return false;
    const Result<bool> added = AddSpaceToTextFileIfNecessary(sTempFile);
    bSpaceAddedToTextFile = added.ok() && added.value();
    if (!added.ok())
        LogMessage(parts_.process, "AddSpaceToTextFileIfNecessary() Failed\n\n" + sFile);
    return added.ok();
}

bool DocumentLoader::RunConversion(const std::string& sFile, const std::string& sTempFile,
                                   Side side) {
    const clsCompareFileOptions& options = parts_.options;
    const bool plain = options.bRemoveFormatting.Data();
    const auto not_read = [&](const char* text) {
        LogFailure(text, sFile, sFile + ": this version reads text and RTF");
        return false;
    };
    // CSV is text too, and read as such until spreadsheets have a reader.
    if (ExtensionContains(sFile, "XLS"))
        return not_read("Unable to convert Excel file.");
    const bool rich_text = plain && ExtensionContains(sFile, "RTF");
    const bool html = !options.bHTMLCompareSource.Data() &&
                      ExtensionContains(sFile, "JHTM XHTM XML PHP HTML HTM");
    const bool word = ExtensionContains(sFile, "ODT BK TMP DOT REG WPD WPS MCW ANS ASC DOC") ||
                      sFile.find("=Word") != std::string::npos;
    if (rich_text || html || word)
        return ConvertWord(sFile, sTempFile, plain ? WordFormat::PlainText : WordFormat::RichText,
                           PasswordsOf(options, side));
    if (ExtensionContains(sFile, "PDF"))
        return not_read("Unable to convert PDF file.");
    if (ExtensionContains(sFile, "PPT"))
        return not_read("Unable to convert PowerPoint file.");
    if (bIsFileText(sFile, parts_.TextFileExtensions))
        return CopyText(sFile, sTempFile);
    return Copy(sFile, sTempFile);
}

bool DocumentLoader::ConvertFileIfNecessary(const std::string& sFile, const std::string& sTempFile,
                                            Side side) {
    bSpaceAddedToTextFile = false;
    if (RunConversion(sFile, sTempFile, side))
        return true;
    bForceReload = {true, true};
    return false;
}

void DocumentLoader::Advise(bool& warned, const std::string& question,
                            const std::string& done_text) {
    ProcessState& process = parts_.process;
    warned = true;
    if (!parts_.questions.AskYesNo(process.Translate(question), process.Translate("Compare")))
        return;
    parts_.options.bRemoveFormatting.SetData(true);
    parts_.questions.ShowMessage(process.Translate(done_text),
                                 process.Translate("Compare Options Updated"));
}

void DocumentLoader::WarnIfPPTAndRetainingFormatting(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutPPTAlready;
    if (warned || parts_.options.bRemoveFormatting.Data() || !NamesContain(files, ".PPT"))
        return;
    Advise(warned,
           "When comparing PPT, it is best to remove formatting and do a textual compare.  Remove "
           "formatting?",
           "Your compare options have been updated");
}

void DocumentLoader::WarnIfHTMLAndRetainingFormatting(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutHTMLAlready;
    // Kept: ".XML" is looked for in the modified name alone.
    const bool fits =
        NamesContain(files, ".HTM") || ToUpper(files.modified).find(".XML") != std::string::npos;
    if (warned || parts_.options.bRemoveFormatting.Data() ||
        parts_.options.bHTMLCompareSource.Data() || !fits)
        return;
    Advise(warned,
           "When comparing HTML/XML, it is best to remove formatting and do a textual compare.  "
           "Remove formatting?",
           "Your compare options have been updated");
}

void DocumentLoader::WarnIfXLSAndWordWrapIsTrue(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutXLSWordWrapAlready;
    if (warned || !parts_.settings.mnuWordWrap || !NamesContain(files, ".XLS"))
        return;
    warned = true;
    ProcessState& process = parts_.process;
    if (!parts_.questions.AskYesNo(
            process.Translate("When comparing XLS, it is best to turn the 'Word Wrap' view option "
                              "off.  Turn off 'Word Wrap'?"),
            process.Translate("Compare")))
        return;
    parts_.settings.mnuWordWrap = false;
    const std::string title = process.Translate("View Options Updated");
    parts_.questions.ShowMessage(process.Translate("Your view options have been updated"), title);
    parts_.questions.ShowMessage(
        process.Translate("You can restore 'Word Wrap' from the 'View' menu."), title);
}

void DocumentLoader::WarnIfDOCAndIsBigFile(const PerSide<std::string>& files, bool all_in_one,
                                           const std::function<void()>& switch_to_side_by_side) {
    bool& warned = parts_.settings.bWarnedAboutLargeWordDocAlready;
    if (warned || !all_in_one || !NamesContain(files, ".DOC"))
        return;
    warned = true;
    ProcessState& process = parts_.process;
    const std::string question =
        process.Translate(
            "For extremely large MS Word files you may want to do a 'Side By Side "
            "Comparison'.") +
        "\n\n" + process.Translate("Do a 'Side By Side' compare for faster results?");
    if (parts_.questions.AskYesNo(question, process.Translate("Compare")))
        switch_to_side_by_side();
}

}  // namespace zorvane
