#include "load/document_loader.h"

#include <sys/stat.h>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "compare/document/rtf_reader.h"
#include "load/csv_operations.h"
#include "load/easy_converter.h"
#include "load/file_kind.h"
#include "load/loaded_beside.h"
#include "load/pdf_conversion.h"
#include "load/spreadsheet_preparation.h"
#include "load/text_preparation.h"
#include "load/trellis_slide.h"

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

clsVarString& FileOption(clsCompareFileOptions& options, Side side) {
    return side == Side::Original ? options.sFileOriginal : options.sFileModified;
}

std::string LooksOf(const std::string& sFile, bool rich) {
    return rich ? UpperExtension(sFile) : std::string();
}

// A sheet whose blank lines go loses its formats with them.
bool RemovesBlankLines(clsCompareFileOptions& options, bool side, bool sheets) {
    const bool removes = side && options.bRemoveBlankLines.Data();
    if (removes && sheets)
        options.bRemoveFormatting.SetData(true);
    return removes;
}

void ShowSoftHyphens(clsRTBDocument& document, const ProcessState& process) {
    if (!process.translator.gbDoubleByteLocale)
        document.FindAndReplaceString({&kSoftHyphen, 1}, u"-", true);
}

std::optional<LoadedFileIdentity> IdentityOf(const std::string& sFile) {
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

}  // namespace

bool IsAsItWasLoaded(const clsCompareFileOptions& options, const LoadMemory& memory, Side side,
                     const std::string& sFile) {
    if (!options.bOptimizeFileLoading.Data() || memory.bForceReload[side])
        return false;
    const std::optional<LoadedFileIdentity> identity = IdentityOf(sFile);
    return identity && *identity == memory.loaded[side];
}

DocumentLoader::DocumentLoader(LoaderParts parts)
    : parts_(std::move(parts)),
      own_service_(parts_.service == nullptr ? std::make_unique<ConversionService>(parts_.process)
                                             : nullptr),
      service_(parts_.service == nullptr ? *own_service_ : *parts_.service),
      page_(parts_.process.platform, service_, [this](std::int32_t) { return KeepGoing(); }),
      context_{parts_.process, parts_.telling,     parts_.options, parts_.settings,
               service_,       parts_.show_detail, parts_.watcher},
      word_{parts_.process, parts_.telling, page_, parts_.restart_time_count} {}

bool DocumentLoader::SelectFile(Side side, std::string& sFile) {
    if (parts_.telling.manner.bSilent || !Trim(sFile).empty())
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

void DocumentLoader::RememberFile(Side side, const std::string& sFile) {
    FileOption(parts_.options, side).SetData(sFile);
    parts_.recent_files[side].AddUniqueItemToCollection(sFile);
}

bool DocumentLoader::LoadSide(Side side, std::string& sFile, Reload reload) {
    if (!SelectFile(side, sFile))
        return false;
    if (!bLoadingFromSkyDrive(sFile, page_.WordVersion()) && !bFileExists(sFile))
        return ReportMissing(sFile);
    if (IsAsItWasLoaded(side, sFile, reload))
        return true;
    RememberFile(side, sFile);
    if (!LoadFileIntoEditor(sFile, TargetOf(side)))
        return false;
    if (const auto identity = IdentityOf(sFile);
        identity && parts_.options.bOptimizeFileLoading.Data())
        kept_.loaded[side] = *identity;
    return true;
}

bool DocumentLoader::IsAsItWasLoaded(Side side, const std::string& sFile, Reload reload) const {
    return reload != Reload::Forced && zorvane::IsAsItWasLoaded(parts_.options, kept_, side, sFile);
}

void DocumentLoader::Expect(Side side, const std::string& sFile, Reload reload) {
    service_.SetInSandbox(!parts_.process.bWithoutSandbox);
    if (!bFileExists(sFile) || IsAsItWasLoaded(side, sFile, reload))
        return;
    const LoadRoad road = TypeOf(sFile).road;
    if (road == LoadRoad::Word) {
        const bool plain = parts_.options.bRemoveFormatting.Data();
        word_.TakePasswords(PasswordsOf(parts_.options, side));
        page_.Expect(sFile, plain ? WordFormat::PlainText : WordFormat::RichText);
    } else if (road == LoadRoad::Pdf && !parts_.settings.bDoQuickTextExtraction &&
               !parts_.settings.bBCLUsingPageRange) {
        EasyConverter(service_, parts_.settings, {})
            .Expect(sFile, parts_.settings.sBCLPasswordUser);
    }
}

bool DocumentLoader::LoadFileIntoEditor(const std::string& sFile, EditorTarget target) {
    const Hourglass hourglass(parts_.questions);
    service_.SetInSandbox(!parts_.process.bWithoutSandbox);
    parts_.questions.PumpEvents();
    if (sFile.empty()) {
        LogMessage(parts_.telling, "Unable to load file. Filename empty");
        return false;
    }
    const SideType type = TypeOf(sFile);
    std::optional<std::string> bytes =
        IsSide(target) ? ConvertFileIfNecessary(sFile, type, SideOf(target)) : ReadForView(sFile);
    if (!bytes)
        return false;
    if (IsSide(target))
        RememberFile(SideOf(target), sFile);
    FillEditor(sFile, type, std::move(*bytes), target);
    return KeepGoing();
}

std::optional<std::string> DocumentLoader::ReadForView(const std::string& sFile) {
    if (ExtensionContains(sFile, kCopiedAsIs) ||
        parts_.TextFileExtensions.bItemExistsInMRU(UpperExtension(sFile), true))
        return Read(sFile);
    return ConvertWord(sFile, {});
}

std::u16string DocumentLoader::Decode(const std::string& bytes) const {
    const DetectedEncoding encoding =
        DetectEncoding(bytes, parts_.process.platform.locale->EncodingName());
    return KeepGoing() ? DecodeText(bytes, encoding, parts_.watcher) : std::u16string();
}

// As it was decoded, in no format yet.
RichText DocumentLoader::PlainText(const SideType& type, const std::string& bytes,
                                   bool remove_blank_lines, std::vector<BesideItem>& beside) const {
    RichText text;
    if (KeepGoing())
        text.text = Decode(bytes);
    if (remove_blank_lines && KeepGoing())
        RemoveBlankLines(type, text.text, beside);
    return text;
}

void DocumentLoader::FillEditor(const std::string& sFile, const SideType& type, std::string bytes,
                                EditorTarget target) {
    clsCompareFileOptions& options = parts_.options;
    const bool side = IsSide(target);
    const bool remove_blank_lines = RemovesBlankLines(options, side, type.IsSheets());
    const bool plain = options.bRemoveFormatting.Data();
    bLoadedAsPlainText = plain || type.as_text;
    clsRTBDocument& document = parts_.document(target);
    const ProgrammeEdit load(document.RichTB());
    std::vector<BesideItem> unused;
    std::vector<BesideItem>& beside = side ? kept_.beside[SideOf(target)] : unused;
    const bool rich = !(side && bLoadedAsPlainText) && LooksLikeRtf(bytes);
    if (side)
        kept_.looks[SideOf(target)] = LooksOf(sFile, rich);
    if (rich && side && options.bModifyOriginalDocuments.Data() && !type.IsSheets())
        RewriteRichText(sFile, bytes);
    RichText text = rich ? ReadFormatted(bytes, remove_blank_lines, beside, parts_.watcher)
                         : PlainText(type, bytes, remove_blank_lines, beside);
    if (!KeepGoing())
        return;
    std::string().swap(bytes);  // a text can be large
    if (side)
        TakeNoText(sFile, type, text.text, SideOf(target));
    if (!rich)
        text = RichText::PlainFrom(std::move(text.text), document.RichTB().DefaultFormat(),
                                   parts_.watcher);
    if (!KeepGoing())
        return;
    document.RichTB().SetRich(std::move(text));
    if (!KeepGoing())
        return;
    if (!side) {
        ShowSoftHyphens(document, parts_.process);
        return;
    }
    if (!plain)
        ShowSoftHyphens(document, parts_.process);
    KeepBesideInText(document.RichTB(), beside);
    kept_.bForceReload[SideOf(target)] = false;
    if (std::exchange(bSpaceAddedToTextFile, false))
        RemoveFirstSpaceOfRichTextBox(document.RichTB());
}

// The rewriting is done in a temporary file, which is made only when there is something to do.
void DocumentLoader::RewriteRichText(const std::string& sFile, std::string& bytes) {
    if (!HasNumberedList(bytes))
        return;
    ProcessState& process = parts_.process;
    const std::string temp_file = GetTempNameWithDocExtension(*process.platform.temp_files, "RTF");
    if (temp_file.empty() || !WriteWholeFile(temp_file, bytes).ok())
        return;  // the document stays as it came; a rewriting never fails a load
    RemoveNumberedListAndEmptyLines(Wait(), parts_.telling, parts_.options,
                                    parts_.TextFileExtensions, temp_file, sFile);
    Result<std::string> rewritten = ReadWholeFile(temp_file);
    if (rewritten.ok())
        bytes = std::move(rewritten).value();
    DeleteFileWithRetry(*process.platform.clock, temp_file);
}

void DocumentLoader::RemoveBlankLines(const SideType& type, std::u16string& text,
                                      std::vector<BesideItem>& beside) const {
    if (type.IsSheets()) {
        text = NormalizeBreaks(ToUtf16(csvRemoveEmptyLines(ToUtf8(text), {{}, parts_.watcher})));
        return;
    }
    NumberWithoutEmptyLines(text, beside);
    DeleteEmptyLinesFromText(text);
}

// Runs a road with a temporary file to fill, and reads what it left there. After a failure the file
// stays in the temporary folder.
std::optional<std::string> DocumentLoader::Converted(
    const std::function<bool(const std::string&)>& road, const std::string& sFile) {
    const std::string sTempFile =
        GetTempNameWithDocExtension(*parts_.process.platform.temp_files, "RTF");
    if (sTempFile.empty()) {
        const Result<std::string> folder = parts_.process.platform.temp_files->Folder();
        LogFailure("Unable to copy file.", sFile,
                   folder.ok() ? "no temporary file can be made" : folder.failure().reason);
        return std::nullopt;
    }
    if (!road(sTempFile))
        return std::nullopt;
    std::optional<std::string> bytes;
    if (bFileExists(sTempFile))
        bytes = Read(sTempFile);
    else
        bytes.emplace();  // a road that says it went well and left nothing: an empty document
    DeleteFileWithRetry(*parts_.process.platform.clock, sTempFile);
    return bytes;
}

std::optional<std::string> DocumentLoader::ConvertWord(const std::string& sFile,
                                                       const WordPasswords& passwords) {
    const bool plain = parts_.options.bRemoveFormatting.Data();
    return Converted(
        [&](const std::string& sTempFile) {
            if (word_.ConverterWordDoc(sFile, sTempFile,
                                       plain ? WordFormat::PlainText : WordFormat::RichText,
                                       passwords))
                return true;
            LogFailure("Unable to convert Word file.", sFile, word_.UnsaidReason());
            return false;
        },
        sFile);
}

std::optional<std::string> DocumentLoader::ConvertPdf(const std::string& sFile, Side side) {
    PdfConversion pdf(context_, [this](const std::string& text) {
        return parts_.questions.ShowNotice(text, parts_.process.Translate("Conversion Failed"));
    });
    return Converted(
        [&](const std::string& sTempFile) {
            return pdf.Convert(sFile, sTempFile, side, word_, PasswordsOf(parts_.options, side));
        },
        sFile);
}

std::optional<std::string> DocumentLoader::PrepareSpreadsheet(const std::string& sFile, Side side) {
    SpreadsheetPreparation sheets(context_);
    return Converted(
        [&](const std::string& sTempFile) {
            return sheets.bPrepareExcelFileForComparing(sFile, sTempFile, side);
        },
        sFile);
}

std::optional<std::string> DocumentLoader::PrepareSlides(const std::string& sFile, Side side) {
    return Converted(
        [&](const std::string& sTempFile) {
            const bool prepared =
                bPreparePowerPointFileForComparing(context_, sFile, sTempFile, side);
            kept_.bSlidesFailed[side] = !bFileExists(sTempFile);
            return prepared;
        },
        sFile);
}

std::optional<std::string> DocumentLoader::ReadText(const std::string& sFile) {
    std::optional<std::string> bytes = Read(sFile);
    if (!bytes)
        return std::nullopt;
    if (LooksLikeUtf16(*bytes))
        bytes = ToUtf8(Decode(*bytes));
    bSpaceAddedToTextFile = AddSpaceToTextFileIfNecessary(*bytes);
    return bytes;
}

std::optional<std::string> DocumentLoader::RunConversion(const std::string& sFile,
                                                         const SideType& type, Side side) {
    switch (type.road) {
        case LoadRoad::Sheets:
            return PrepareSpreadsheet(sFile, side);
        case LoadRoad::Word:
            return ConvertWord(sFile, PasswordsOf(parts_.options, side));
        case LoadRoad::Pdf:
            return ConvertPdf(sFile, side);
        case LoadRoad::Slides:
            return PrepareSlides(sFile, side);
        case LoadRoad::Text:
            return ReadText(sFile);
        case LoadRoad::AsItIs:
            return Read(sFile);
    }
    return std::nullopt;
}

std::optional<std::string> DocumentLoader::ConvertFileIfNecessary(const std::string& sFile,
                                                                  const SideType& type, Side side) {
    bSpaceAddedToTextFile = false;
    kept_.bSlidesFailed[side] = false;
    service_.TakeBeside();  // of another load
    std::optional<std::string> bytes = parts_.telling.manner.bTellsPlainly
                                           ? RunTellingPlainly(sFile, type, side)
                                           : RunConversion(sFile, type, side);
    kept_.beside[side] = DecodeBesideList(service_.TakeBeside());
    if (!bytes)
        kept_.bForceReload = {true, true};
    return bytes;
}

}  // namespace zorvane
