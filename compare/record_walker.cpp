#include "compare/record_walker.h"

#include <array>
#include <cstdio>

namespace zorvane {
namespace {

void Dispatch(RecordIndex index, const DifferenceRecord& record, RecordMarker& marker) {
    switch (record.type) {
        case DifferenceType::Addition:
            marker.Addition(index, record);
            return;
        case DifferenceType::Deletion:
            marker.Deletion(index, record);
            return;
        case DifferenceType::Change:
            marker.Change(index, record);
            return;
    }
}

}  // namespace

std::string PercentText(double percent) {
    std::array<char, 32> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.1f", percent);
    const std::string_view digits(text.data(), static_cast<std::size_t>(size));
    return std::string(digits.starts_with("0.") ? digits.substr(1) : digits);
}

WalkEnd WalkRecords(const Comparison& comparison, RecordMarker& marker, RunMonitor& monitor) {
    const auto count = static_cast<std::int32_t>(comparison.records.size());
    for (RecordIndex index{count - 1}; index >= RecordIndex{0}; --index) {
        if (!monitor.KeepGoing())
            return WalkEnd::Aborted;
        Dispatch(index, comparison.records[static_cast<std::size_t>(index.value)], marker);
        marker.Progress(100.0 - 100.0 * index.value / count);
    }
    return WalkEnd::Finished;
}

}  // namespace zorvane
