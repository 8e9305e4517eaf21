#include "compare/engine/comparison_model.h"

#include "common/base/text_encoding.h"

namespace zorvane {

DetailCounts CountRecords(const VestrelX& engine) {
    DetailCounts counts;
    for (const DifferenceRecord& record : engine.Records())
        counts.Add(record.type);
    return counts;
}

std::u16string OriginalText(const VestrelX& engine, const DifferenceRecord& record) {
    std::string text;
    for (std::int32_t line = 0; line < record.OriginalCount(); ++line)
        text.append(line == 0 ? "" : "\r\n")
            .append(engine.MasterLine(record.first_original + line));
    return ToUtf16(text);
}

std::u16string ModifiedText(const VestrelX& engine, const DifferenceRecord& record) {
    std::string text;
    for (std::int32_t line = 0; line < record.ModifiedCount(); ++line)
        text.append(line == 0 ? "" : "\r\n")
            .append(engine.SourceLine(record.first_modified + line));
    return ToUtf16(text);
}

std::string CountText(std::int64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

std::string SummaryText(const DetailCounts& counts) {
    const std::int32_t all = counts.changes + counts.additions + counts.deletions;
    if (all == 0)
        return "No differences.";
    return CountText(all, "difference", "differences") + ": " +
           CountText(counts.changes, "change", "changes") + ", " +
           CountText(counts.additions, "addition", "additions") + ", " +
           CountText(counts.deletions, "deletion", "deletions") + ".";
}

std::string DescribeRecord(const DifferenceRecord& record) {
    const auto place = std::to_string(record.first_original);
    switch (record.type) {
        case DifferenceType::Addition:
            return "Addition of " + CountText(record.ModifiedCount(), "paragraph", "paragraphs") +
                   (record.first_original == 0 ? " at the beginning"
                                               : " behind paragraph " + place);
        case DifferenceType::Deletion:
            return "Deletion of " + CountText(record.OriginalCount(), "paragraph", "paragraphs") +
                   " at paragraph " + place;
        case DifferenceType::Change:
            break;
    }
    if (record.OriginalCount() == 1 && record.ModifiedCount() == 1)
        return "Change at paragraph " + place;
    return "Change of " + CountText(record.OriginalCount(), "paragraph", "paragraphs") + " to " +
           std::to_string(record.ModifiedCount()) + " at paragraph " + place;
}

}  // namespace zorvane
