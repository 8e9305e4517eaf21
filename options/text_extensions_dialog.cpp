#include "options/text_extensions_dialog.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostEntries = 15;
const std::vector<std::string>& DefaultEntries() {
    static const std::vector<std::string> kEntries = {"txt", "log", "csv"};
    return kEntries;
}

bool IsLetterOrDigit(char character) {
    return IsAsciiDigit(character) || IsAsciiLetter(character);
}

}  // namespace

frmAdvancedOptionsTEXT::frmAdvancedOptionsTEXT(const clsMRU& extensions)
    : entries_(extensions.Count() == 0 ? DefaultEntries() : extensions.Items()) {}

bool frmAdvancedOptionsTEXT::bIsValidExtension(std::string& text) const {
    text = std::string(Trim(text));
    std::erase_if(text, [](char character) { return character == '-' || character == '_'; });
    if (text.empty() || !std::all_of(text.begin(), text.end(), IsLetterOrDigit))
        return false;
    const std::string upper = ToUpper(text);
    return std::none_of(entries_.begin(), entries_.end(),
                        [&](const std::string& entry) { return ToUpper(entry) == upper; });
}

std::optional<std::size_t> frmAdvancedOptionsTEXT::Selected() const {
    const std::string upper = ToUpper(Text);
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return ToUpper(entry) == upper; });
    if (found == entries_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - entries_.begin());
}

bool frmAdvancedOptionsTEXT::CanAdd() const {
    return entries_.size() < kMostEntries && !Text.empty() && !Selected();
}

bool frmAdvancedOptionsTEXT::CanDelete() const {
    return !Text.empty() && Selected().has_value();
}

bool frmAdvancedOptionsTEXT::cmdAdd_Click() {
    if (!CanAdd())
        return false;
    std::string text = Text;
    if (!bIsValidExtension(text))
        return false;
    entries_.push_back(text);
    Text = text;
    changed_ = true;
    return true;
}

bool frmAdvancedOptionsTEXT::cmdDelete_Click() {
    const std::optional<std::size_t> selected = Selected();
    if (!selected || entries_.size() < 2)
        return false;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(*selected));
    Text.clear();
    changed_ = true;
    return true;
}

void frmAdvancedOptionsTEXT::RestoreDefaults() {
    changed_ = changed_ || entries_ != DefaultEntries();
    entries_ = DefaultEntries();
    Text.clear();
}

void frmAdvancedOptionsTEXT::cmdApply_Click(clsMRU& extensions) const {
    if (!changed_)
        return;
    extensions.ClearAllItemsInList();
    for (const std::string& entry : entries_)
        extensions.AddUniqueItemToCollection(entry);
}

}  // namespace zorvane
