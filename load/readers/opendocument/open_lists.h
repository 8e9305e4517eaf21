// Lists of OpenDocument texts and slides: the walk through them, and the numbers of these and of
// headings.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "load/readers/opendocument/open_styles.h"

namespace zorvane {

/// How far each level has counted; nothing: not begun.
class OpenCounters {
  public:
    /// Counts one item of `level` (0-based) and returns its label.
    std::string Next(const OpenListStyle& style, std::size_t level,
                     std::optional<std::int32_t> start = std::nullopt);

  private:
    std::string LabelOf(const OpenListStyle& style, std::size_t level) const;
    std::string NumberOfLevel(const OpenListStyle& style, std::size_t level) const;

    std::array<std::optional<std::int32_t>, kListLevels> numbers_;
};

/// Which lists go on with the numbers of earlier ones.
class OpenLists {
  public:
    /// The counters of a list that is not inside another.
    OpenCounters& Begin(std::string_view style, std::string_view id, std::string_view continued_id,
                        bool goes_on);

  private:
    std::unordered_map<std::string, std::shared_ptr<OpenCounters>> by_id_;
    std::unordered_map<std::string, std::shared_ptr<OpenCounters>> by_style_;
};

/// Where in a list a walk is.
struct OpenListPlace {
    const OpenListStyle* style = nullptr;
    OpenCounters* counters = nullptr;  ///< nothing: in no list
    std::size_t level = 0;
    bool label_waits = false;  ///< the next paragraph begins an item
    std::optional<std::int32_t> start;

    /// Into the list, which may lie inside the one at this place.
    void EnterList(const pugi::xml_node& list, OpenStyles& styles, OpenLists& lists);
    /// Into a child of the list; false for what is none of its items.
    bool EnterItem(const pugi::xml_node& item);
};

/// Calls `walk` for each item of a list, with `place` in it; behind that `place` is what it was.
template <class Walk>
void ForOpenItems(const pugi::xml_node& list, OpenStyles& styles, OpenLists& lists,
                  OpenListPlace& place, Walk&& walk) {
    const OpenListPlace outer = place;
    place.EnterList(list, styles, lists);
    for (const pugi::xml_node& item : list.children()) {
        if (!place.EnterItem(item))
            continue;
        const OpenListPlace entered = place;
        walk(item);
        place = entered;
    }
    place = outer;
}

}  // namespace zorvane
