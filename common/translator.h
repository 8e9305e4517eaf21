// The language layer: English text in, the text to show out.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "common/base/result.h"
#include "common/language_file.h"

namespace zorvane {

struct ProcessState;

/// The dictionary of the language in force. Before it is started, and in English, every text is its
/// own translation. Several runs may translate at once; the fields are set while none goes on.
class modTranslator {
  public:
    std::string gsLanguage;  ///< empty: not started
    std::string gsLanguageFile;
    LanguageFileFormat glLanguageFileFormat = LanguageFileFormat::Ansi;
    std::string gsLanguageFont;
    std::int32_t glLocaleID = 1033;
    bool gbDoubleByteLocale = false;
    /// Told when a text cannot be appended to the language file.
    std::function<void(const std::string& message)> show_message;

    /// `sEnglish` in the language in force. A text that the language file lacks is appended to it,
    /// once in a run. Blank texts come back as they are.
    std::string Translate(std::string_view sEnglish);
    /// Fills the dictionary from `gsLanguageFile`; false when it cannot be read.
    bool LoadLanguageTable();
    /// Appends one lone-string line; does nothing for a blank text or without a file.
    void AddToLanguageFile(std::string_view sEnglish);

  private:
    std::recursive_mutex lock_;  // recursive: a failed append is told in the language in force
    std::unordered_map<std::string, std::string> gdicLanguage_;
};

/// True for the default locales in which an editor counts selected characters in two bytes.
bool IsDoubleByteLocale(std::int32_t locale_id);

/// Reads the language and starts the dictionary. A language file that is missing or unusable is
/// told, and the program goes on in English, which is then the stored language. `choose_language`
/// is asked at the first start of a user whose locale is not English; a run without a window
/// answers "English".
/// The locale and what follows from it; the first step of the next, and all that a run without
/// language files needs.
void InitializeLocale(ProcessState& process);
void InitializeTranslator(ProcessState& process,
                          const std::function<std::string()>& choose_language = {});

std::string GetLanguageCode(ProcessState& process);
void SetLanguageCode(ProcessState& process, const std::string& sLanguage);
std::string GetLanguageFont(ProcessState& process);
void SetLanguageFont(ProcessState& process, const std::string& sFont);
/// Full path of a language's file, "<data folder>/Languages/<language>-Zorvane.txt".
std::string GetLanguageFileName(const ProcessState& process, const std::string& sLanguage);

}  // namespace zorvane
