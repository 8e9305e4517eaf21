#include "common/ui/shown_texts.h"

namespace zorvane {

void ShownTexts::Note(std::string_view english, const std::string& shown) {
    if (!shown.empty())
        english_.emplace(shown, english);
}

std::optional<std::string> ShownTexts::EnglishOf(const std::string& shown) const {
    const auto found = english_.find(shown);
    return found == english_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace zorvane
