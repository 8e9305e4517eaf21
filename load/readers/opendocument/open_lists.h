// Numbers of the lists and headings of an OpenDocument text.
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

}  // namespace zorvane
