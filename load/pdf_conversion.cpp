#include "load/pdf_conversion.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "load/easy_converter.h"
#include "load/trellis_port.h"

namespace zorvane {
namespace {

constexpr const char* kTookTooLong = ": reading the document took too long and was stopped";

// The user's password first; the owner's where that one opens nothing.
template <class Convert>
EasyError WithEitherPassword(const CompareFilesSettings& settings, const Convert& convert) {
    const EasyError error = convert(settings.sBCLPasswordUser);
    const bool refused = error == EasyError::CannotOpenInput || error == EasyError::NoPermission;
    return refused && !settings.sBCLPasswordOwner.empty() ? convert(settings.sBCLPasswordOwner)
                                                          : error;
}

}  // namespace

PageRange NormalisedRange(PageRange range, std::int32_t pages) {
    if (range.to < range.from)
        std::swap(range.from, range.to);
    if (range.from < 1 || range.from > pages)
        range.from = 1;
    if (range.to < 1 || range.to > pages)
        range.to = pages;
    return range;
}

PageRange PdfConversion::RangeOf(Side side) const {
    const CompareFilesSettings& settings = context_.settings;
    if (side == Side::Original)
        return {settings.lBCLPageFrom, settings.lBCLPageTo};
    return {settings.lBCLPageFromModified, settings.lBCLPageToModified};
}

std::string PdfConversion::FailedText(Side side) const {
    ProcessState& process = context_.process;
    return process.Translate(side == Side::Original ? "Original File" : "Modified File") + " " +
           process.Translate("Conversion Failed");
}

// A file of some megabytes holds that much more to read; pages that are none do not.
void PdfConversion::StartTime(const std::string& sFile) {
    constexpr std::uint32_t kLimit = 8000;
    constexpr std::uint64_t kBytesPerMillisecond = 200;
    constexpr std::uint64_t kLongest = 3'600'000;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(NativePath(sFile), error);
    const std::uint64_t more = error ? 0 : std::uint64_t{size} / kBytesPerMillisecond;
    limit_ = kLimit + static_cast<std::uint32_t>(std::min(more, kLongest));
    started_ = context_.process.platform.clock->TickMilliseconds();
    out_of_time_ = false;
    percent_ = -1;
}

// Behind the limit, pages that still follow one another briskly are given some more: the machine
// has other things to do. The reader itself counts the time of the processor.
bool PdfConversion::OutOfTime(std::int32_t percent) {
    constexpr std::uint32_t kBrisk = 700;  // milliseconds for one in a hundred
    constexpr std::uint32_t kMost = 3;
    const std::uint32_t now = context_.process.platform.clock->TickMilliseconds();
    if (percent != percent_) {
        percent_ = percent;
        moved_ = now;
    }
    const std::uint32_t elapsed = now - started_;
    return limit_ > 0 && elapsed > limit_ &&
           (percent <= 0 || now - moved_ > kBrisk || elapsed / kMost > limit_);
}

// What took one road most of the time leaves too little for the other.
bool PdfConversion::SecondRoadHasTime() const {
    return !out_of_time_ &&
           context_.process.platform.clock->TickMilliseconds() - started_ <= limit_ / 2;
}

// Before each page: the progress, and the chance to end.
ConversionObserver PdfConversion::Observer() {
    return [this](std::int32_t percent) {
        out_of_time_ = out_of_time_ || OutOfTime(percent);
        if (out_of_time_)
            return false;
        if (percent >= 0) {
            constexpr double kPercent = 100;
            TellProgress(context_.watcher, RunStep::ImportPdf, percent / kPercent);
        }
        return context_.KeepGoing();
    };
}

bool PdfConversion::ConverterPDFToTxt(const std::string& sFile, const std::string& sTempFile,
                                      Side side, std::string& sError) {
    sError.clear();
    constexpr double kTenths = 10.0;
    const CompareFilesSettings& settings = context_.settings;
    TrellisPort port(context_.service, Observer());
    port.InputFile = sFile;
    port.OutputFile = sTempFile;
    port.PasswordOwner = settings.sBCLPasswordOwner;
    port.PasswordUser = settings.sBCLPasswordUser;
    port.tsSetDupMaxDeltaX = settings.lDupMaxDeltaX / kTenths;
    std::int32_t code = 0;
    if (settings.bBCLUsingPageRange) {
        const std::int32_t pages = port.GetNumberOfPages();
        const PageRange range = NormalisedRange(RangeOf(side), pages);
        port.FirstPage = range.from;
        port.LastPage = range.to;
        code = pages <= 0 ? pages : 0;
    }
    if (code == 0)
        code = port.ConvertPDFToFile();
    constexpr std::int32_t kDamaged = -6;  // as for any time that ran out
    if (port.Cancelled() && out_of_time_)
        code = kDamaged;
    else
        aborted_ = aborted_ || port.Cancelled();
    if (code == 0)
        return true;
    sError = FailedText(side) + ". " +
             context_.process.translator.TranslateLines(ReportTrellisPortError(code));
    detail_ = out_of_time_ ? sFile + kTookTooLong : port.ErrorDetail();
    LogMessage(context_.telling, sError, context_.telling.manner.sLogFile, false);
    return false;
}

bool PdfConversion::ConverterPDFToRTF(const std::string& sFile, const std::string& sTempFile,
                                      Side side, std::string& sError) {
    sError.clear();
    const CompareFilesSettings& settings = context_.settings;
    EasyConverter converter(context_.service, settings, Observer());
    const std::string rich = sTempFile + ".RtF";
    const auto convert = [&](const std::string& password) {
        if (!settings.bBCLUsingPageRange)
            return converter.Convert(sFile, rich, password, 0, 0);
        std::int32_t pages = 0;
        if (const EasyError error = converter.CountPages(sFile, password, pages);
            error != EasyError::None)
            return error;
        const PageRange range = NormalisedRange(RangeOf(side), pages);
        return converter.Convert(sFile, rich, password, range.from, range.to);
    };
    EasyError error = WithEitherPassword(settings, convert);
    if (error == EasyError::Stopped && out_of_time_)
        error = EasyError::TimedOut;
    aborted_ = aborted_ || error == EasyError::Stopped;
    ProcessState& process = context_.process;
    if (error == EasyError::None && !MoveFileByCopy(rich, sTempFile).ok())
        error = EasyError::CannotCreateOutput;
    if (aborted_)
        sError = process.Translate("Compare aborted");
    else if (error != EasyError::None)
        sError = FailedText(side) +
                 ". LCCBB:" + process.translator.TranslateLines(ReportBCLError(error));
    if (sError.empty())
        return true;
    detail_ = out_of_time_ ? sFile + kTookTooLong : converter.ErrorDetail();
    LogMessage(context_.telling, sError, context_.telling.manner.sLogFile, false);
    return false;
}

bool PdfConversion::RunRoad(const std::string& sFile, const std::string& sTempFile, Side side,
                            std::string& sError) {
    return context_.settings.bDoQuickTextExtraction
               ? ConverterPDFToTxt(sFile, sTempFile, side, sError)
               : ConverterPDFToRTF(sFile, sTempFile, side, sError);
}

// The second stage of the robust road. When it fails the rich text stays.
void PdfConversion::ToPlainText(const std::string& sTempFile, WordConversion& word,
                                const WordPasswords& passwords, const std::string& sFile) {
    const std::string plain = sTempFile + "2";
    if (!word.ConverterWordDoc(sTempFile, plain, WordFormat::PlainText, passwords)) {
        LogMessage(context_.telling,
                   "LoadFileIntoEditor(): Unable to convert Word file.\n\n" + sFile);
        return;
    }
    DeleteFileWithRetry(*context_.process.platform.clock, sTempFile);
    IgnoreFailure(MoveFileByCopy(plain, sTempFile), "an empty text is told by the compare");
}

void PdfConversion::TellOfOtherRoad(const std::string& sFile) {
    bool& warned = context_.settings.bWarnedAboutSwitchingPDFConversionMethods;
    if (context_.telling.manner.bSilent || warned || !notice_)
        return;
    ProcessState& process = context_.process;
    warned = notice_(process.Translate("Could not load the PDF file: ") +
                     std::string(FileNameOf(sFile)) +
                     process.Translate(", we will try an alternate approach and try again ('Quick "
                                       "Extraction' vs. 'Robust Extraction'). See 'Compare "
                                       "Options'\\PDF for more details."));
}

bool PdfConversion::Convert(const std::string& sFile, const std::string& sTempFile, Side side,
                            WordConversion& word, const WordPasswords& passwords) {
    bool& quick = context_.settings.bDoQuickTextExtraction;
    const bool chosen = quick;
    aborted_ = false;
    StartTime(sFile);
    std::string sError;
    bool converted = RunRoad(sFile, sTempFile, side, sError);
    if (!converted && !aborted_ && SecondRoadHasTime()) {
        TellOfOtherRoad(sFile);
        quick = !quick;
        converted = RunRoad(sFile, sTempFile, side, sError);
    }
    if (converted && !quick && context_.options.bRemoveFormatting.Data())
        ToPlainText(sTempFile, word, passwords, sFile);
    quick = chosen;
    if (!converted && !context_.telling.manner.bSilent)
        context_.show_detail(sError);
    // The log has it already; who waits at a terminal hears it now, with what to do.
    if (!converted)
        LogMessage(context_.telling, sError + "\n" + detail_, {},
                   context_.telling.manner.bShowMessages);
    return converted;
}

}  // namespace zorvane
