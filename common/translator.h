// The language layer: English text in, the text to show out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "common/base/result.h"

namespace zorvane {

struct ProcessState;

/// The dictionary of the language in force. Before it is started, and in English, every text is its
/// own translation.
class modTranslator {
  public:
    std::string gsLanguage;                  ///< empty: not started
    std::string gsLanguageFile;
    std::int16_t glLanguageFileFormat = 0;   ///< 0 ANSI (read as UTF-8 where it is), -1 UTF-16
    std::string gsLanguageFont;
    std::int32_t glLocaleID = 1033;
    bool gbDoubleByteLocale = false;

    /// `sEnglish` in the language in force. A text that the language file lacks is appended to it.
    std::string Translate(std::string_view sEnglish);

    // The rest of the class (start, table, file growth) is for the translator's helper to lay out.

  private:
    std::unordered_map<std::string, std::string> gdicLanguage_;
};

}  // namespace zorvane
