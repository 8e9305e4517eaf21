#include "common/choose_language.h"

#include <algorithm>
#include <filesystem>

#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

std::vector<std::string> NamesOfLanguageFiles(const ProcessState& process) {
    const std::string behind = ToUpper("-" + process.translator.gsProductName + ".txt");
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entries(NativePath(LanguageFolder(process)), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        const std::size_t place = ToUpper(name).find(behind);
        if (place != std::string::npos && place > 0)
            names.push_back(name.substr(0, place));
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

LanguageList FillLanguageList(const ProcessState& process) {
    LanguageList list;
    list.languages.emplace_back(kEnglish);
    for (std::string& name : NamesOfLanguageFiles(process)) {
        if (name == process.translator.gsLanguage)
            list.selected = list.languages.size();
        list.languages.push_back(std::move(name));
    }
    return list;
}

bool ChooseLanguage(ProcessState& process, LanguageQuestions& questions, bool& bNotifyUser) {
    modTranslator& translator = process.translator;
    if (process.gbCommandLineRunning) {
        translator.gsLanguage = kEnglish;
        return false;
    }
    const LanguageChoice choice =
        questions.AskLanguage(FillLanguageList(process), translator.gsLanguageFont);
    if (choice.language.empty())
        return false;
    const bool other_language = choice.language != translator.gsLanguage;
    const bool other_font = !choice.font.empty() && choice.font != translator.gsLanguageFont;
    if (other_language)
        SetLanguageCode(process, choice.language);
    else
        bNotifyUser = false;
    if (other_font)
        SetLanguageFont(process, choice.font);
    if (bNotifyUser) {
        // The blank belongs to the key.
        questions.ShowInformation(
            process.Translate("Your changes will take effect next time you run ") +
                translator.gsProductName,
            translator.gsProductName);
        return other_language || other_font;
    }
    translator.gsLanguage = choice.language;
    if (other_font)
        translator.gsLanguageFont = choice.font;
    return other_language || other_font;
}

void EditLanguageFile(ProcessState& process, const std::string& language) {
    if (language == kEnglish)
        return;
    const Status opened = process.platform.shell->EditText(GetLanguageFileName(process, language));
    if (!opened.ok())
        LogMessage(process.telling, opened.failure().reason, "", true);
}

}  // namespace zorvane
