#include "options/recent_items.h"

#include <algorithm>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kDone = "MRU_DONE";
constexpr std::string_view kMissing = "+-!#";

}  // namespace

void clsMRU::Setup(std::int32_t lMaxItems, IniProfile& file, const std::string& sKeyPrefix,
                   std::string_view initialItems) {
    max_items_ = lMaxItems;
    file_ = &file;
    key_prefix_ = sKeyPrefix;
    items_.clear();
    ReadIniFileIntoCollection();
    if (items_.empty() && initialItems != "-1") {
        while (!initialItems.empty()) {
            const std::size_t comma = initialItems.find(',');
            AddUniqueItemToCollection(std::string(initialItems.substr(0, comma)));
            initialItems.remove_prefix(comma == std::string_view::npos ? initialItems.size()
                                                                       : comma + 1);
        }
    }
    dirty_ = false;
}

void clsMRU::ShutDown() {
    WriteCollectionToIniFile();
    items_.clear();
    dirty_ = false;  // or a second end would write the empty list over this one
}

bool clsMRU::bItemExistsInMRU(std::string_view item, bool ignoreCase) const {
    const std::string wanted = ignoreCase ? ToUpper(item) : std::string(item);
    return std::any_of(items_.begin(), items_.end(), [&](const std::string& candidate) {
        return wanted == (ignoreCase ? ToUpper(candidate) : candidate);
    });
}

void clsMRU::AddUniqueItemToCollection(const std::string& item) {
    if (item.empty())
        return;
    dirty_ = true;
    const std::string upper = ToUpper(item);
    std::erase_if(items_, [&](const std::string& old) { return ToUpper(old) == upper; });
    if (Count() == max_items_ && !items_.empty())
        items_.erase(items_.begin());
    items_.push_back(item);
}

void clsMRU::WriteCollectionToIniFile() {
    if (bHistoryOff || !dirty_ || file_ == nullptr)
        return;
    std::int32_t number = 1;
    for (const std::string& item : items_)
        file_->Write(key_prefix_, key_prefix_ + std::to_string(number++), item);
    file_->Write(key_prefix_, key_prefix_ + std::to_string(number), kDone);
}

void clsMRU::ReadIniFileIntoCollection() {
    if (bHistoryOff || file_ == nullptr)
        return;
    ClearAllItemsInList();
    std::vector<std::string> read;
    for (std::int32_t number = 1; number <= max_items_; ++number) {
        std::string value =
            file_->Read(key_prefix_, key_prefix_ + std::to_string(number), kMissing);
        if (value == kMissing || value == kDone)
            break;
        read.push_back(std::move(value));
    }
    for (auto item = read.rbegin(); item != read.rend(); ++item)
        AddUniqueItemToCollection(*item);
}

void clsMRU::ClearAllItemsInList() {
    items_.clear();
    dirty_ = true;
}

}  // namespace zorvane
