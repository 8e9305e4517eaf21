// A finished compare as the report writers see it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "compare/engine/change_detail.h"
#include "compare/engine/engine_report.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

/// Borrowed from the engine whose compare it shows.
struct ComparisonModel {
    const VestrelX& engine;
    std::string title;  ///< empty: none
    std::string original_name;
    std::string modified_name;
    bool high_detail = false;
    ReportLook look;
    DetailSwitches detail;
};

/// Records by kind.
DetailCounts CountRecords(const VestrelX& engine);

/// The paragraphs `first` to `last` of one side, joined by CR LF, in UTF-16. Empty for an empty
/// range.
std::u16string OriginalText(const VestrelX& engine, const DifferenceRecord& record);
std::u16string ModifiedText(const VestrelX& engine, const DifferenceRecord& record);

/// What a record is, for people: "Change at paragraph 3", "Addition of 2 paragraphs behind
/// paragraph 7".
std::string DescribeRecord(const DifferenceRecord& record);

/// "1 change", "3 changes".
std::string CountText(std::int64_t count, std::string_view singular, std::string_view plural);

/// "No differences.", or "5 differences: 3 changes, 1 addition, 1 deletion."
std::string SummaryText(const DetailCounts& counts);

std::string WriteHtmlReport(const ComparisonModel& model, std::int32_t style);
std::string WriteTextReport(const ComparisonModel& model);
std::string WriteCsvReport(const ComparisonModel& model);

}  // namespace zorvane
