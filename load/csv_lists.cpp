#include <algorithm>
#include <optional>

#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "load/csv_operations.h"

namespace zorvane {
namespace {

std::optional<std::int64_t> Natural(std::string_view text) {
    const auto number = ParseNumber<std::int64_t>(text);
    return number && *number >= 0 ? number : std::nullopt;
}

std::optional<NumberRange> ParseItem(std::string_view item) {
    item = Trim(item);
    if (item == "*")
        return NumberRange{};
    const std::size_t dash = item.find('-');
    if (dash == std::string_view::npos) {
        const auto number = Natural(item);
        return number ? std::optional(NumberRange{*number, *number}) : std::nullopt;
    }
    const std::string_view left = Trim(item.substr(0, dash));
    const std::string_view right = Trim(item.substr(dash + 1));
    NumberRange range;
    if (left.empty() && right.empty())
        return std::nullopt;
    if (!left.empty()) {
        const auto number = Natural(left);
        if (!number)
            return std::nullopt;
        range.first = *number;
    }
    if (!right.empty()) {
        const auto number = Natural(right);
        if (!number)
            return std::nullopt;
        range.last = *number;
    }
    if (range.first > range.last)
        std::swap(range.first, range.last);
    return range;
}

// The longest name at the begin of the list; its size in bytes tells how far it reaches.
struct NameMatch {
    std::size_t index = 0;
    std::size_t size = 0;
};

std::optional<NameMatch> NameAt(std::string_view list, const std::vector<std::string>& names) {
    std::optional<NameMatch> best;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = names[i];
        if (name.empty() || !list.starts_with(name) || (best && best->size >= name.size()))
            continue;
        const std::string_view behind = Trim(list.substr(name.size()));
        if (behind.empty() || behind.front() == ',')
            best = NameMatch{i, name.size()};
    }
    return best;
}

// Takes one sheet after the other, each once.
class SheetPicker {
  public:
    explicit SheetPicker(std::size_t count) : taken_(count) { selected_.reserve(count); }
    void Take(std::size_t index) {
        if (!taken_[index])
            selected_.push_back(index);
        taken_[index] = true;
    }
    void Take(const NumberRange& range) {
        const auto last = std::min(range.last, static_cast<std::int64_t>(taken_.size()));
        for (std::int64_t number = std::max<std::int64_t>(range.first, 1); number <= last; ++number)
            Take(static_cast<std::size_t>(number - 1));
    }
    std::vector<std::size_t> Selected() { return std::move(selected_); }

  private:
    std::vector<std::size_t> selected_;
    std::vector<bool> taken_;
};

}  // namespace

std::vector<NumberRange> ParseNumberList(std::string_view list) {
    std::vector<NumberRange> ranges;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        if (const auto range = ParseItem(list.substr(0, comma)))
            ranges.push_back(*range);
        if (comma == std::string_view::npos)
            break;
        list.remove_prefix(comma + 1);
    }
    std::sort(ranges.begin(), ranges.end(), [](const NumberRange& one, const NumberRange& other) {
        return one.first < other.first;
    });
    std::vector<NumberRange> joined;
    for (const NumberRange& range : ranges) {
        if (!joined.empty() && range.first <= joined.back().last)
            joined.back().last = std::max(joined.back().last, range.last);
        else
            joined.push_back(range);
    }
    return joined;
}

bool IsNumberList(std::string_view list) {
    while (true) {
        const std::size_t comma = list.find(',');
        const auto range = ParseItem(list.substr(0, comma));
        if (!range || range->first < 1)
            return false;
        if (comma == std::string_view::npos)
            return true;
        list.remove_prefix(comma + 1);
    }
}

std::vector<std::size_t> SelectSheets(std::string_view list,
                                      const std::vector<std::string>& names) {
    std::vector<std::string> lower_names;
    lower_names.reserve(names.size());
    for (const std::string& name : names)
        lower_names.push_back(ToLower(name));
    const std::string lower_list = ToLower(list);
    SheetPicker picker(names.size());
    std::string_view rest = Trim(lower_list);
    while (!rest.empty()) {
        const auto name = NameAt(rest, lower_names);
        const std::size_t comma = rest.find(',', name ? name->size : 0);
        if (name)
            picker.Take(name->index);
        else if (const auto range = ParseItem(rest.substr(0, comma)))
            picker.Take(*range);
        rest = comma == std::string_view::npos ? std::string_view() : Trim(rest.substr(comma + 1));
    }
    return picker.Selected();
}

}  // namespace zorvane
