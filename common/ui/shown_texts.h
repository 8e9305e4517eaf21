// What English texts became on the windows, so that they can be shown in another language.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zorvane {

class ShownTexts {
  public:
    /// `english` is shown as `shown`.
    void Note(std::string_view english, const std::string& shown);
    /// What was translated to this; nothing where nobody asked for it: a path, a number, a text
    /// with either in it. Of two texts with one translation, the one that was asked for first.
    std::optional<std::string> EnglishOf(const std::string& shown) const;
    /// All that was asked for, in the language of now.
    template <class Translate>
    ShownTexts InLanguageOf(const Translate& translate) const {
        ShownTexts now;
        for (const auto& [shown, english] : english_)
            now.Note(english, translate(english));
        return now;
    }

  private:
    std::unordered_map<std::string, std::string> english_;
};

}  // namespace zorvane
