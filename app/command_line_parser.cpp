#include "app/command_line_parser.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "app/command_line_runs.h"
#include "app/output_check.h"
#include "app/settings_location.h"
#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "common/string_utilities.h"

namespace zorvane {
namespace {

using Request = CommandLineRequest;

std::string Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string SlashesToBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string Absolute(std::string_view name) {
    return SlashesToBackslashes(AbsolutePath(Trimmed(sStripQuotes(name))));
}

// ---- the switches of one letter ----

enum class SwitchValue { Flag, Number, Text, InputPath, OutputPath, LogPath, SettingsPath, Help };

struct SwitchRow {
    char letter = 0;
    SwitchValue kind = SwitchValue::Flag;
    bool Request::*flag = nullptr;
    std::int32_t Request::*number = nullptr;
    std::string Request::*text = nullptr;
};
constexpr SwitchRow Flag(char letter, bool Request::*member) {
    return {letter, SwitchValue::Flag, member, nullptr, nullptr};
}
constexpr SwitchRow Text(char letter, SwitchValue kind, std::string Request::*member) {
    return {letter, kind, nullptr, nullptr, member};
}
constexpr SwitchRow Value(char letter, std::int32_t Request::*member) {
    return {letter, SwitchValue::Number, nullptr, member, nullptr};
}
constexpr SwitchRow kSwitches[] = {
    Text('M', SwitchValue::InputPath, &Request::sMaster),
    Text('S', SwitchValue::InputPath, &Request::sSource),
    Flag('D', &Request::bCompareFolders),
    Flag('C', &Request::bIncludeSubfolders),
    Text('U', SwitchValue::Text, &Request::sFileFilter),
    Text('T', SwitchValue::OutputPath, &Request::sReportFile),
    Value('R', &Request::lReportType),
    Value('F', &Request::lViewFormat),
    Flag('I', &Request::bIgnoreCase),
    Flag('W', &Request::bIgnoreWhitespace),
    Flag('Q', &Request::bCompareFaster),
    Flag('B', &Request::bBeepWhenDone),
    Flag('N', &Request::bRemoveFormatting),
    Flag('P', &Request::bRemoveBlankLines),
    Flag('A', &Request::bExcelCompareFormulas),
    Flag('H', &Request::bHTMLCompareSource),
    Text('Y', SwitchValue::Text, &Request::sExcelSheetMaster),
    Text('Z', SwitchValue::Text, &Request::sExcelSheetSource),
    Text('1', SwitchValue::Text, &Request::sRowsMaster),
    Text('2', SwitchValue::Text, &Request::sColsMaster),
    Text('3', SwitchValue::Text, &Request::sRowsSource),
    Text('4', SwitchValue::Text, &Request::sColsSource),
    Text('5', SwitchValue::Text, &Request::sMasterLabel),
    Text('6', SwitchValue::Text, &Request::sSourceLabel),
    Text('7', SwitchValue::Text, &Request::sReportTitle),
    Text('8', SwitchValue::Text, &Request::sPdfUserPassword),
    Text('9', SwitchValue::Text, &Request::sPdfOwnerPassword),
    Flag('K', &Request::bSkipIfSame),
    Flag('O', &Request::bOpenReport),
    Flag('X', &Request::bExitWhenDone),
    Flag('G', &Request::bExitCodeIsCount),
    Flag('V', &Request::bShowMessages),
    Flag('E', &Request::bLegacyE),
    Text('L', SwitchValue::LogPath, &Request::sLogFile),
    Text('+', SwitchValue::SettingsPath, &Request::sSettingsOverride),
    {'?', SwitchValue::Help},
};

// A value with a "\" stands as it is; one without is looked for in the current folder.
std::string OutputPath(const std::string& value) {
    if (value.find('\\') == std::string::npos)
        return Absolute(value);
    return SlashesToBackslashes(sStripQuotes(value));
}

// And, when it is not there, in the program's own folder.
std::string InputPath(SpecialFolders& folders, const std::string& value) {
    std::string path = OutputPath(value);
    if (value.find('\\') != std::string::npos || bFileExists(path) || bDirectoryExists(path))
        return path;
    const std::string beside = folders.ProgramFolder() + "\\" + Trimmed(sStripQuotes(value));
    return SlashesToBackslashes(beside);
}

std::string SettingsPath(SpecialFolders& folders, const std::string& value) {
    std::string path = sExpandPathTokens(folders, value);
    if (path.find('\\') == std::string::npos && !path.starts_with('/'))
        path = Absolute(path);
    return sStripQuotes(path);
}

// What one line says, token by token; nothing is done to the process.
struct LineReader {
    SpecialFolders& folders;
    Request& request;
    LineEffects& effects;

    // False when parsing is to end.
    bool Take(const SwitchRow& row, const std::string& value) {
        switch (row.kind) {
            case SwitchValue::Flag:
                request.*row.flag = true;
                return true;
            case SwitchValue::Number:
                request.*row.number = ParseTypedNumber(value).value_or(request.*row.number);
                return true;
            case SwitchValue::Text:
                request.*row.text = sStripQuotes(value);
                return true;
            case SwitchValue::InputPath:
                request.*row.text = InputPath(folders, value);
                return true;
            case SwitchValue::OutputPath:
                request.*row.text = OutputPath(value);
                return true;
            case SwitchValue::LogPath:
                request.*row.text = OutputPath(value);
                effects.log_files.push_back(request.*row.text);
                return true;
            case SwitchValue::SettingsPath:
                request.*row.text = SettingsPath(folders, value);
                effects.settings_files.push_back(request.*row.text);
                return true;
            case SwitchValue::Help:
                break;
        }
        effects.help = true;
        return false;
    }

    bool TakeTokens(const std::string& line) {
        const std::int16_t count = CountSwitchTokens(line, '/');
        std::string letter;
        for (std::int32_t index = 2; index <= count; ++index) {
            const std::string value = GetSwitchToken(index, line, '/', letter);
            const std::string upper = ToUpper(letter);
            for (const SwitchRow& row : kSwitches) {
                if (upper.size() == 1 && upper[0] == row.letter && !Take(row, value))
                    return false;
            }
        }
        return true;
    }
};

// ---- the positional form ----

std::string PositionalPath(std::string_view text) {
    std::string path;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool messages =
            text[at] == '/' && at + 1 < text.size() && (text[at + 1] == 'v' || text[at + 1] == 'V');
        if (messages)
            ++at;
        else
            path += text[at];
    }
    return SlashesToBackslashes(Trimmed(sStripQuotes(path)));
}

bool TakePositional(const std::string& line, Request& request) {
    const std::size_t colon = line.rfind(':');
    if (colon == std::string::npos)
        return false;
    const std::size_t blank = line.rfind(' ', colon);
    if (blank == std::string::npos)
        return false;
    request.sSource = PositionalPath(std::string_view(line).substr(blank));
    request.sMaster = PositionalPath(std::string_view(line).substr(0, blank));
    return !request.sSource.empty() && !request.sMaster.empty();
}

// ---- checks ----

// All are made, so that each failure is told.
bool Check(const Request& request, std::vector<std::string>& failures) {
    const std::size_t before = failures.size();
    const auto require = [&](bool holds, const char* words) {
        if (!holds)
            failures.emplace_back(words);
    };
    if (request.bCompareFolders) {
        require(bDirectoryExists(request.sSource), "Invalid Source folder specified");
        require(bDirectoryExists(request.sMaster), "Invalid Master folder specified");
    } else {
        require(bFileExists(request.sSource), "Invalid Source file specified");
        require(bFileExists(request.sMaster), "Invalid Master file specified");
    }
    require(request.lViewFormat != 2 || request.lReportType != 4,
            "Document report type is only available for ALL IN ONE format (use /F1).");
    return failures.size() == before;
}

// A log in the place of a document would be the end of it.
bool KeepApart(Request& request, LineEffects& effects) {
    Status apart = CheckOutputs({request.sMaster, request.sSource}, {{"/L", request.sLogFile}});
    if (apart.ok())
        apart = CheckOutputs({}, {{"/T", request.sReportFile}, {"/L", request.sLogFile}});
    if (apart.ok())
        return true;
    effects.failures.push_back(apart.failure().reason);
    effects.log_files.clear();
    request.sLogFile.clear();
    return false;
}

struct LongRow {
    std::string_view name;
    std::string Request::*text;
};
// In this order: a name that another one begins with comes later only if the other is gone by then.
constexpr LongRow kLongSwitches[] = {
    {"/XPOO", &Request::sXlsPasswordOpenMaster},
    {"/XPWO", &Request::sXlsPasswordWriteMaster},
    {"/XPOM", &Request::sXlsPasswordOpenSource},
    {"/XPWM", &Request::sXlsPasswordWriteSource},
    {"/WPOO", &Request::sDocPasswordOpenMaster},
    {"/WPWO", &Request::sDocPasswordWriteMaster},
    {"/WPOTO", &Request::sDocPasswordTemplateOpenMaster},
    {"/WPOTWO", &Request::sDocPasswordTemplateWriteMaster},
    {"/WPOM", &Request::sDocPasswordOpenSource},
    {"/WPWM", &Request::sDocPasswordWriteSource},
    {"/WPOTM", &Request::sDocPasswordTemplateOpenSource},
    {"/WPOTWM", &Request::sDocPasswordTemplateWriteSource},
};

std::string Cleaned(const std::string& value) {
    return Trimmed(sStripQuotes(value));
}

void RemoveAll(std::string& line, std::string_view text) {
    for (std::size_t at = 0; (at = line.find(text, at)) != std::string::npos;)
        line.erase(at, text.size());
}

void TakeExpression(std::string& line, Request& request) {
    constexpr std::string_view kName = "/J";
    const std::size_t at = line.rfind(kName);
    if (at == std::string::npos)
        return;
    request.sIgnoreRegEx = line.substr(at + kName.size());
    line.erase(at + kName.size());
    RemoveAll(line, kName);
}

std::string LogHeader(ProcessState& process) {
    return std::string(29, '-') + "Zorvane" + std::string(7, '-') + "\r\n" +
           process.Translate("Date") + ": " + sMakeTimeStamp(process.platform.clock->Now());
}

bool TakeActions(std::string& line, Request& request) {
    std::string value;
    while (TakeLongSwitch(line, "/AA", value)) {
        const std::string cleaned = Cleaned(value);
        if (cleaned.empty())
            continue;
        const auto number = ParseTypedNumber(cleaned);
        if (!number)
            return false;
        request.colAdvancedActions.push_back(*number);
    }
    return true;
}

}  // namespace

std::string GetSwitchToken(std::int32_t index, std::string_view line, char delimiter,
                           std::string& letter) {
    const std::string scanned = std::string(line) + " ";
    std::size_t begin = 0;
    for (std::int32_t token = 1;; ++token) {
        const std::size_t end = scanned.find(delimiter, begin);
        if (token == index) {
            const std::string text = scanned.substr(
                begin, end == std::string::npos ? scanned.size() - 1 - begin : end - begin);
            if (text.empty())
                return {};
            letter = Trimmed(text.substr(0, 1));
            return Trimmed(std::string_view(text).substr(1));
        }
        if (end == std::string::npos)
            return {};
        begin = end + 1;
    }
}

std::int16_t CountSwitchTokens(std::string_view line, char delimiter) {
    const auto count = std::count(line.begin(), line.end(), delimiter) + 1;
    return static_cast<std::int16_t>(
        std::min<std::ptrdiff_t>(count, std::numeric_limits<std::int16_t>::max()));
}

bool TakeLongSwitch(std::string& line, std::string_view name, std::string& value) {
    const std::size_t at = line.rfind(name);
    if (at == std::string::npos)
        return false;
    const std::size_t end = line.find('/', at + 1);
    const std::string taken = line.substr(at, end == std::string::npos ? end : end - at);
    value = Trimmed(std::string_view(taken).substr(name.size()));
    RemoveAll(line, taken);
    return true;
}

bool ExtractLongSwitches(std::string& line, CommandLineRequest& request) {
    TakeExpression(line, request);
    std::string value;
    request.bClearHistory = TakeLongSwitch(line, "/CLEARHISTORY", value);
    if (TakeLongSwitch(line, "/WS", value)) {
        const auto number = ParseTypedNumber(Cleaned(value));
        if (!number)
            return false;
        request.lWindowState = *number;
    }
    for (const LongRow& row : kLongSwitches) {
        if (TakeLongSwitch(line, row.name, value))
            request.*row.text = Cleaned(value);
    }
    return TakeActions(line, request);
}

std::string JoinedLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + argument;
    return line;
}

bool ReadCommandLine(SpecialFolders& folders, std::string& line, const std::string& process_line,
                     CommandLineRequest& request, LineEffects& effects) {
    if (line.empty())
        line = process_line;
    request = CommandLineRequest{};
    effects = LineEffects{};
    if (!ExtractLongSwitches(line, request))
        return false;
    if (!LineReader{folders, request, effects}.TakeTokens(line))
        return false;
    bool good = true;
    if (Trim(request.sMaster).empty() || Trim(request.sSource).empty())
        good = TakePositional(process_line, request);
    good = Check(request, effects.failures) && good;
    return KeepApart(request, effects) && good;
}

bool ParseCommandLine(ProcessState& process, std::string& line, const std::string& process_line,
                      CommandLineRequest& request) {
    LineEffects effects;
    const bool good =
        ReadCommandLine(*process.platform.folders, line, process_line, request, effects);
    for (const std::string& file : effects.log_files)
        LogMessage(process.telling, LogHeader(process), file, false);
    for (const std::string& file : effects.settings_files)
        OverrideSettingsFile(process, file);
    if (effects.help)
        IgnoreFailure(process.platform.shell->Open(process.sHelpFile), "there may be no desktop");
    for (const std::string& words : effects.failures)
        LogMessage(process.telling, words, request.sLogFile, ShowsFailures(process, request));
    return good;
}

}  // namespace zorvane
