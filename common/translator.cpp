#include "common/translator.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/choose_language.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr const char* kSection = "Language";
constexpr const char* kCodeKey = "Language_Code";
constexpr const char* kFontKey = "Language_Font";
constexpr std::size_t kValueBytes = 128;

void Store(ProcessState& process, const char* key, const std::string& value) {
    process.settings->Write(kSection, key, value);
    IgnoreFailure(process.settings->Flush(), "an unusable settings file is not reported");
}

// The reason why the language file cannot be used; empty when it can.
std::string StartLanguage(const ProcessState& process, modTranslator& translator) {
    translator.gsLanguageFile = GetLanguageFileName(process, translator.gsLanguage);
    const std::string behind = ": \n" + translator.gsLanguageFile;
    if (!bFileExists(translator.gsLanguageFile))
        return "Unable to locate Language file" + behind;
    translator.glLanguageFileFormat = GetFileFormat(translator.gsLanguageFile);
    if (translator.glLanguageFileFormat == LanguageFileFormat::Neither)
        return "Unable to read Language file" + behind;
    if (!translator.LoadLanguageTable())
        return "Unable to process Language file" + behind;
    return {};
}

bool IsEnglishLocale(std::int32_t locale_id) {
    constexpr std::int32_t kUnitedStates = 1033;
    constexpr std::int32_t kUnitedKingdom = 2057;
    return locale_id == kUnitedStates || locale_id == kUnitedKingdom;
}

// At the first start of a user.
void PickFirstLanguage(ProcessState& process, LanguageQuestions* questions) {
    modTranslator& translator = process.translator;
    translator.gsLanguage = kEnglish;
    const bool asks = !IsEnglishLocale(translator.glLocaleID);
    if (asks && questions == nullptr)
        return;
    bool notify_user = false;
    if (asks)
        ChooseLanguage(process, *questions, notify_user);
    SetLanguageCode(process, translator.gsLanguage);
}

}  // namespace

bool IsDoubleByteLocale(std::int32_t locale_id) {
    switch (locale_id) {
        case 1041:
        case 1042:
        case 4100:
        case 1028:
        case 3076:
        case 2052:
        case 5124:
            return true;
        default:
            return false;
    }
}

std::string modTranslator::Translate(std::string_view sEnglish) {
    if (Trim(sEnglish).empty() || Trim(gsLanguage).empty())
        return std::string(sEnglish);
    std::string key(sEnglish);
    {
        const std::lock_guard lock(guard_);
        const auto [found, added] = gdicLanguage_.emplace(key, key);
        if (!added)
            return found->second;
    }
    if (gsLanguage != kEnglish)
        AddToLanguageFile(key);
    return key;
}

std::string modTranslator::TranslateLines(std::string_view sEnglish) {
    std::string lines;
    while (!sEnglish.empty()) {
        const std::size_t end = std::min(sEnglish.find_first_of("\r\n"), sEnglish.size());
        lines += Translate(sEnglish.substr(0, end));
        sEnglish.remove_prefix(end);
        const std::size_t next = std::min(sEnglish.find_first_not_of("\r\n"), sEnglish.size());
        lines += sEnglish.substr(0, next);
        sEnglish.remove_prefix(next);
    }
    return lines;
}

void modTranslator::EmptyLanguageTable() {
    const std::lock_guard lock(guard_);
    gdicLanguage_.clear();
}

bool modTranslator::LoadLanguageTable() {
    const std::lock_guard lock(guard_);
    gdicLanguage_.clear();
    const Result<std::string> text = ReadLanguageFile(gsLanguageFile, glLanguageFileFormat);
    if (!text.ok())
        return false;
    std::string_view rest = text.value();
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (EndsLanguageTable(line))
            break;
        if (const auto entry = ParseLanguageLine(line))
            gdicLanguage_.emplace(entry->english, entry->translation);
    }
    return true;
}

void modTranslator::AddToLanguageFile(std::string_view sEnglish) {
    if (Trim(sEnglish).empty() || gsLanguageFile.empty() || !CanStandInLanguageFile(sEnglish))
        return;
    const Status added = AppendLanguageLine(gsLanguageFile, glLanguageFileFormat, sEnglish);
    if (!added.ok() && show_message)
        show_message(Translate("Unable to add to Language file"));
}

std::string GetLanguageCode(ProcessState& process) {
    return process.settings->Read(kSection, kCodeKey, "", kValueBytes);
}
void SetLanguageCode(ProcessState& process, const std::string& sLanguage) {
    Store(process, kCodeKey, sLanguage);
}
std::string GetLanguageFont(ProcessState& process) {
    return process.settings->Read(kSection, kFontKey, "", kValueBytes);
}
void SetLanguageFont(ProcessState& process, const std::string& sFont) {
    Store(process, kFontKey, sFont);
}

std::string LanguageFolder(const ProcessState& process) {
    return sExpandPathTokens(*process.platform.folders,
                             "%appdata%\\Tarnwick, Inc\\Zorvane\\Languages\\");
}

std::string GetLanguageFileName(const ProcessState& process, const std::string& sLanguage) {
    const modTranslator& translator = process.translator;
    if (!translator.sLanguageFileOverride.empty())
        return translator.sLanguageFileOverride;
    return LanguageFolder(process) + sLanguage + "-" + translator.gsProductName + ".txt";
}

void InitializeLocale(ProcessState& process) {
    modTranslator& translator = process.translator;
    translator.glLocaleID = process.platform.locale->LocaleId();
    translator.gbDoubleByteLocale = IsDoubleByteLocale(translator.glLocaleID);
}

void InitializeTranslator(ProcessState& process, LanguageQuestions* questions) {
    InitializeLocale(process);
    modTranslator& translator = process.translator;
    if (!translator.show_message)
        translator.show_message = [&process](const std::string& text) {
            LogMessage(process.telling, text);
        };
    translator.EmptyLanguageTable();
    translator.gsLanguage = GetLanguageCode(process);
    if (translator.gsLanguage.empty())
        PickFirstLanguage(process, questions);
    if (translator.gsLanguage != kEnglish) {
        const std::string reason = StartLanguage(process, translator);
        if (!reason.empty()) {
            LogMessage(process.telling, reason + "\nDefaulting to English", "", true);
            translator.gsLanguage = kEnglish;
            translator.gsLanguageFile.clear();
            SetLanguageCode(process, kEnglish);
            return;
        }
    }
    translator.gsLanguageFont = GetLanguageFont(process);
}

}  // namespace zorvane
