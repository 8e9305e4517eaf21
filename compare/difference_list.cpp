#include "compare/difference_list.h"

#include <algorithm>
#include <utility>

#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::size_t kExcerptLength = 100;

std::int32_t LinesOf(const DifferenceRecord& record) {
    return std::max(record.Count(Side::Original), record.Count(Side::Modified));
}

// In half paragraphs, so that a place between two has one too.
std::int64_t Distance(const DifferenceRecord& record, Side side, std::int32_t number) {
    const std::int64_t at = std::int64_t{2} * number;
    const std::int64_t first = std::int64_t{2} * record.paragraphs[side].first.value;
    if (record.Count(side) == 0)
        return std::abs(at - first - 1);
    const std::int64_t last = std::int64_t{2} * record.paragraphs[side].last.value;
    return std::max({std::int64_t{0}, first - at, at - last});
}

}  // namespace

void DifferenceList::Show(const Comparison& comparison, TranslateText translate) {
    comparison_ = &comparison;
    translate_ = std::move(translate);
}

void DifferenceList::Clear() {
    comparison_ = nullptr;
}

std::int32_t DifferenceList::Count() const {
    return comparison_ == nullptr ? 0 : static_cast<std::int32_t>(comparison_->records.size());
}

const DifferenceRecord* DifferenceList::RecordAt(std::int32_t index) const {
    if (index < 0 || index >= Count())
        return nullptr;
    return &comparison_->records[static_cast<std::size_t>(index)];
}

std::string DifferenceList::Excerpt(const DifferenceRecord& record) const {
    const Side side = record.type == DifferenceType::Addition ? Side::Modified : Side::Original;
    std::u16string buffer;
    std::u16string_view text =
        comparison_->Lines(side).Text(record.paragraphs[side].first.value - 1, buffer);
    if (text.size() > kExcerptLength)
        text = text.substr(0, kExcerptLength - (IsHighSurrogate(text[kExcerptLength - 1]) ? 1 : 0));
    return "\"" + ToUtf8(text) + "\"";
}

std::string DifferenceList::Line(std::int32_t index) const {
    const DifferenceRecord* record = RecordAt(index);
    if (record == nullptr)
        return {};
    const std::int32_t lines = LinesOf(*record);
    const std::string number = "[" + std::to_string(index + 1) + "] ";
    const std::string place = std::to_string(record->paragraphs.original.first.value);
    if (record->type == DifferenceType::Change)
        return number + std::to_string(lines) + " " +
               translate_(lines == 1 ? "change at paragraph" : "changes at paragraph") + " (" +
               place + ") :" + Excerpt(*record);
    const bool addition = record->type == DifferenceType::Addition;
    return number + translate_(addition ? "Addition of" : "Deletion of") + " " +
           std::to_string(lines) +
           translate_(lines == 1 ? " line at paragraph (" : " lines at paragraph (") + place +
           ") : " + Excerpt(*record);
}

std::string DifferenceList::Status(std::int32_t index) const {
    const DifferenceRecord* record = RecordAt(index);
    if (record == nullptr)
        return {};
    const std::string number = "[" + std::to_string(index + 1) + "] ";
    const std::string place = ": " + std::to_string(record->paragraphs.original.first.value);
    if (record->type == DifferenceType::Change)
        return number + translate_("Change at paragraph") + place;
    const bool addition = record->type == DifferenceType::Addition;
    const std::int32_t lines = LinesOf(*record);
    return number + translate_(addition ? "Addition of" : "Deletion of") + " " +
           std::to_string(lines) + " " +
           translate_(lines == 1 ? "line at paragraph" : "lines at paragraph") + place;
}

std::optional<std::int32_t> DifferenceList::Nearest(Side side, ParagraphNumber number) const {
    if (Count() == 0)
        return std::nullopt;
    const std::vector<DifferenceRecord>& records = comparison_->records;
    const auto distance = [&](std::ptrdiff_t index) {
        return Distance(records[static_cast<std::size_t>(index)], side, number.value);
    };
    // The first that does not end in front of the paragraph: it or the one in front is the nearest.
    const auto behind =
        std::partition_point(records.begin(), records.end(), [&](const DifferenceRecord& record) {
            return record.paragraphs[side].last.value < number.value;
        });
    std::ptrdiff_t nearest = behind - records.begin();
    if (behind == records.end() || (nearest > 0 && distance(nearest - 1) <= distance(nearest)))
        --nearest;
    while (nearest > 0 && distance(nearest - 1) == distance(nearest))  // additions at one place
        --nearest;
    return static_cast<std::int32_t>(nearest);
}

NavigationButtons NavigationFor(std::int32_t current, std::int32_t count) {
    if (count <= 1)
        return {};
    const bool at_first = current <= 1;
    const bool at_last = current >= count;
    return {!at_first, !at_first, !at_last, !at_last, true};
}

}  // namespace zorvane
