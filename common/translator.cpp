#include "common/translator.h"

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr const char* kSection = "Language";
constexpr const char* kCodeKey = "Language_Code";
constexpr const char* kFontKey = "Language_Font";
constexpr const char* kEnglish = "English";
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

std::string FirstLanguage(std::int32_t locale_id,
                          const std::function<std::string()>& choose_language) {
    constexpr std::int32_t kUnitedStates = 1033;
    constexpr std::int32_t kUnitedKingdom = 2057;
    if (locale_id == kUnitedStates || locale_id == kUnitedKingdom || !choose_language)
        return kEnglish;
    const std::string chosen = choose_language();
    return chosen.empty() ? kEnglish : chosen;
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
    const auto found = gdicLanguage_.find(key);
    if (found != gdicLanguage_.end())
        return found->second;
    gdicLanguage_.emplace(key, key);
    if (gsLanguage != kEnglish)
        AddToLanguageFile(key);
    return key;
}

bool modTranslator::LoadLanguageTable() {
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
    if (Trim(sEnglish).empty() || gsLanguageFile.empty())
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

std::string GetLanguageFileName(const ProcessState& process, const std::string& sLanguage) {
    return sExpandPathTokens(*process.platform.folders,
                             "%appdata%\\Tarnwick, Inc\\Zorvane\\Languages\\") +
           sLanguage + "-Zorvane.txt";
}

void InitializeLocale(ProcessState& process) {
    modTranslator& translator = process.translator;
    translator.glLocaleID = process.platform.locale->LocaleId();
    translator.gbDoubleByteLocale = IsDoubleByteLocale(translator.glLocaleID);
}

void InitializeTranslator(ProcessState& process,
                          const std::function<std::string()>& choose_language) {
    InitializeLocale(process);
    modTranslator& translator = process.translator;
    translator.gsLanguage = GetLanguageCode(process);
    if (translator.gsLanguage.empty()) {
        translator.gsLanguage = FirstLanguage(translator.glLocaleID, choose_language);
        SetLanguageCode(process, translator.gsLanguage);
    }
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
