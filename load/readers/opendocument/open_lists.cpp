#include "load/readers/opendocument/open_lists.h"

#include <algorithm>

#include "common/base/parse_number.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargestNumber = 1'000'000'000;

}  // namespace

std::string OpenCounters::Next(const OpenListStyle& style, std::size_t level,
                               std::optional<std::int32_t> start) {
    std::optional<std::int32_t>& number = numbers_[level];
    if (start)
        number = *start;
    else
        number = number ? *number + 1 : style[level].start;
    number = std::clamp(*number, -kLargestNumber, kLargestNumber);
    for (std::size_t deeper = level + 1; deeper < kListLevels; ++deeper)
        numbers_[deeper].reset();
    return LabelOf(style, level);
}

std::string OpenCounters::NumberOfLevel(const OpenListStyle& style, std::size_t level) const {
    const OpenListLevel& at = style[level];
    return at.kind == OpenListLevel::Kind::Number
               ? NumberText(numbers_[level].value_or(at.start), at.number, at.repeat_letters)
               : std::string();
}

std::string OpenCounters::LabelOf(const OpenListStyle& style, std::size_t level) const {
    const OpenListLevel& at = style[level];
    if (at.kind == OpenListLevel::Kind::Bullet)
        return at.bullet;
    if (at.kind == OpenListLevel::Kind::None && at.pattern.empty())
        return {};
    std::string label;
    if (!at.pattern.empty()) {
        std::string_view pattern = at.pattern;
        while (!pattern.empty()) {
            const auto number = ReadNumber<std::size_t>(pattern.substr(1));
            const std::size_t length = 1 + number.size;
            const std::size_t shown = number.value.value_or(0);
            if (pattern.front() == '%' && shown >= 1 && shown <= kListLevels &&
                length < pattern.size() && pattern[length] == '%') {
                label += NumberOfLevel(style, shown - 1);
                pattern.remove_prefix(length + 1);
            } else {
                label += pattern.front();
                pattern.remove_prefix(1);
            }
        }
        return label;
    }
    const auto shown = std::min(static_cast<std::size_t>(at.shown_levels), level + 1);
    for (std::size_t outer = level + 1 - shown; outer <= level; ++outer) {
        const std::string number = NumberOfLevel(style, outer);
        if (!label.empty() && !number.empty())
            label += '.';
        label += number;
    }
    return at.prefix + label + at.suffix;
}

OpenCounters& OpenLists::Begin(std::string_view style, std::string_view id,
                               std::string_view continued_id, bool goes_on) {
    std::shared_ptr<OpenCounters> counters;
    if (const auto found = by_id_.find(std::string(continued_id));
        !continued_id.empty() && found != by_id_.end())
        counters = found->second;
    else if (const auto last = by_style_.find(std::string(style));
             goes_on && last != by_style_.end())
        counters = last->second;
    else
        counters = std::make_shared<OpenCounters>();
    if (!id.empty())
        by_id_[std::string(id)] = counters;
    by_style_[std::string(style)] = counters;
    return *counters;
}

void OpenListPlace::EnterList(const pugi::xml_node& list, OpenStyles& styles, OpenLists& lists) {
    const std::string_view name = Attribute(list, "style-name");
    if (counters == nullptr) {
        level = 0;
        style = styles.List(name);
        counters = &lists.Begin(name, Attribute(list, "id"), Attribute(list, "continue-list"),
                                Attribute(list, "continue-numbering") == "true");
        return;
    }
    level = std::min(level + 1, kListLevels - 1);
    if (const OpenListStyle* own = name.empty() ? nullptr : styles.List(name))
        style = own;
}

bool OpenListPlace::EnterItem(const pugi::xml_node& item) {
    const bool counted = Is(item, "list-item");
    if (!counted && !Is(item, "list-header"))
        return false;
    label_waits = counted;
    start.reset();
    if (const std::string_view number = Attribute(item, "start-value"); !number.empty())
        start = NumberOf(number, 1);
    return true;
}

}  // namespace zorvane
