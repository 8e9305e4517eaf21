#include "load/word_conversion.h"

#include <fmt/format.h>

#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {

bool WordConversion::CheckVersion() const {
    constexpr double kNewestVersion = 16.1;
    const double version = page.WordVersion();
    if (version <= kNewestVersion)
        return true;
    LogMessage(telling, process.Translate("Error 20: Version of MS Word") +
                            fmt::format(" : Version ({})", version));
    return false;
}

void WordConversion::TakePasswords(const WordPasswords& passwords) {
    page.InputFile_PassWord = passwords[0];
    page.InputFile_PassWord_TW = passwords[1];
    page.InputFileTemplate_PassWord = passwords[2];
    page.InputFileTemplate_PassWord_TW = passwords[3];
}

bool WordConversion::ConverterWordDoc(const std::string& sFile, const std::string& sTarget,
                                      WordFormat lFormat, const WordPasswords& passwords) {
    if (!CheckVersion())
        return false;
    page.putOptimizeForSpeed(true);
    if (!page.OptimizeForSpeed()) {  // it has just been started for this run
        page.putOptimizeForSpeed(true);
        if (restart_time_count)
            restart_time_count();
    }
    TakePasswords(passwords);
    const WordResult result = page.OpenWordSaveAs(sFile, sTarget, lFormat);
    page.HideWordIfVisible();
    ReportTrellisPageError(result, sFile);
    return result == WordResult::Ok;
}

void WordConversion::ReportTrellisPageError(WordResult result, const std::string& sFile) {
    told_whole_reason = result == WordResult::Other;
    if (result != WordResult::Ok)
        LogMessage(telling, ReasonOf(result, sFile));
}

std::string WordConversion::ReasonOf(WordResult result, const std::string& sFile) const {
    switch (result) {
        case WordResult::SourceInvalid:
            return process.Translate("Source file is invalid") + " \n  " + sFile;
        case WordResult::NotInstalled:
            return process.Translate("Failed to Convert.  Check that MS Word is installed");
        case WordResult::PathEmpty:
            return process.Translate("Source or Target file path is empty");
        case WordResult::Protected:
            return process.Translate("File is password protected");
        case WordResult::Other:
            return page.ErrorString();
        case WordResult::Ok:
            break;
    }
    return {};
}

}  // namespace zorvane
