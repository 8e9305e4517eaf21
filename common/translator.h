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

/// The language that needs no file.
inline constexpr const char* kEnglish = "English";

/// The dictionary of the language in force. Before it is started, and in English, every text is its
/// own translation. Several runs may translate at once; the fields are set while none goes on.
class modTranslator {
  public:
    std::string gsLanguage;  ///< empty: not started
    std::string gsLanguageFile;
    std::string sLanguageFileOverride;  ///< used in place of the file that the language names
    LanguageFileFormat glLanguageFileFormat = LanguageFileFormat::Ansi;
    std::string gsLanguageFont;
    std::int32_t glLocaleID = 1033;
    bool gbDoubleByteLocale = false;
    std::string gsProductName = "Zorvane";  ///< also a part of the language files' names
    /// Told when a text cannot be appended to the language file, on the thread that asked for it.
    std::function<void(const std::string& message)> show_message;

    /// `sEnglish` in the language in force. A text that the language file lacks is appended to it,
    /// once in a run. Blank texts come back as they are. Safe from any thread once it is started.
    std::string Translate(std::string_view sEnglish);
    /// A text of several lines, each line a text of its own, since no line of a language file can
    /// hold them together. Line ends and blank lines stay.
    std::string TranslateLines(std::string_view sEnglish);
    void EmptyLanguageTable();
    /// Fills the dictionary from `gsLanguageFile`; false when it cannot be read.
    bool LoadLanguageTable();
    /// Appends one lone-string line; does nothing for a blank text, one that could not be read back
    /// from a line, or without a file.
    void AddToLanguageFile(std::string_view sEnglish);

  private:
    std::mutex guard_;  ///< over the dictionary
    std::unordered_map<std::string, std::string> gdicLanguage_;
};

/// True for the default locales in which an editor counts selected characters in two bytes.
bool IsDoubleByteLocale(std::int32_t locale_id);

class LanguageQuestions;

/// The locale and what follows from it; the first step of the next, and all that a run without
/// language files needs.
void InitializeLocale(ProcessState& process);
/// Reads the language and starts the dictionary. A language file that is missing or unusable is
/// told, and the program goes on in English, which is then the stored language. At the first start
/// of a user whose locale is not English `questions` is asked; where there is none, the language is
/// English until somebody can be asked.
void InitializeTranslator(ProcessState& process, LanguageQuestions* questions = nullptr);

std::string GetLanguageCode(ProcessState& process);
void SetLanguageCode(ProcessState& process, const std::string& sLanguage);
std::string GetLanguageFont(ProcessState& process);
void SetLanguageFont(ProcessState& process, const std::string& sFont);
/// The user's folder of language files, with a separator behind.
std::string LanguageFolder(const ProcessState& process);
/// Full path of a language's file, "<data folder>/Languages/<language>-Zorvane.txt".
std::string GetLanguageFileName(const ProcessState& process, const std::string& sLanguage);

}  // namespace zorvane
