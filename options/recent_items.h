// A list of recently used texts, kept in the settings file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/platform/ini_profile.h"

namespace zorvane {

/// Oldest first. Each list has a section of its own, named as its keys' prefix; the key behind the
/// last item holds "MRU_DONE", since keys of a longer older list stay in the file.
class clsMRU {
  public:
    bool bHistoryOff = false;  ///< neither read nor written; set before `Setup`

    /// Reads the list; when it comes back empty the pieces of `initialItems` between commas are
    /// added, unless that is "-1". They are only written after a further change. `file` outlives
    /// this object.
    void Setup(std::int32_t lMaxItems, IniProfile& file, const std::string& sKeyPrefix,
               std::string_view initialItems);
    /// Writes the list and drops it.
    void ShutDown();
    bool bItemExistsInMRU(std::string_view item, bool ignoreCase) const;
    /// A used item moves to the end, its old spelling going; a full list loses its oldest. An empty
    /// item is ignored.
    void AddUniqueItemToCollection(const std::string& item);
    void WriteCollectionToIniFile();
    /// Kept: the order comes out reversed against the file; the list is shown from its end.
    void ReadIniFileIntoCollection();
    void ClearAllItemsInList();
    std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
    const std::vector<std::string>& Items() const { return items_; }

  private:
    std::vector<std::string> items_;
    std::int32_t max_items_ = 0;
    IniProfile* file_ = nullptr;
    std::string key_prefix_;
    bool dirty_ = false;
};

}  // namespace zorvane
