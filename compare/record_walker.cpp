#include "compare/record_walker.h"

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

WalkEnd WalkRecords(const Comparison& comparison, RecordMarker& marker, RunMonitor& monitor) {
    const auto count = static_cast<std::int32_t>(comparison.records.size());
    for (RecordIndex index{count - 1}; index >= RecordIndex{0}; --index) {
        if (!monitor.KeepGoing())
            return WalkEnd::Aborted;
        Dispatch(index, comparison.records[static_cast<std::size_t>(index.value)], marker);
        monitor.Progress(marker.Step(), 1.0 - static_cast<double>(index.value) / count);
    }
    // A stop inside the last one is seen here.
    return monitor.KeepGoing() ? WalkEnd::Finished : WalkEnd::Aborted;
}

}  // namespace zorvane
