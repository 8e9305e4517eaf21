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
        if (!process.gbCommandLineRunning && restart_time_count)
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
    switch (result) {
        case WordResult::SourceInvalid:
            LogMessage(telling, process.Translate("Source file is invalid") + " \n  " + sFile);
            return;
        case WordResult::NotInstalled:
            LogMessage(telling,
                       process.Translate("Failed to Convert.  Check that MS Word is installed"));
            return;
        case WordResult::PathEmpty:
            LogMessage(telling, process.Translate("Source or Target file path is empty"));
            return;
        case WordResult::Protected:
            LogMessage(telling, process.Translate("File is password protected"));
            return;
        case WordResult::Other:
            LogMessage(telling, page.ErrorString());
            return;
        case WordResult::Ok:
            return;
    }
}

}  // namespace zorvane
