#include "compare/engine/report_model.h"

#include <utility>

#include "common/base/free_aside.h"
#include "common/platform/files.h"

namespace zorvane {
namespace {

std::string DescribeMove(const Comparison& comparison, const DifferenceRecord& record,
                         const Move& move) {
    const bool here = record.type == DifferenceType::Deletion;
    return CountText(here ? record.Count(Side::Original) : record.Count(Side::Modified),
                     "paragraph", "paragraphs") +
           " moved " +
           (here ? "to " + MovedPlace(comparison, move, Side::Modified)
                 : "from " + MovedPlace(comparison, move, Side::Original));
}

}  // namespace

std::string CountText(std::int64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

std::string MovedPlace(const Comparison& comparison, const Move& move, Side side) {
    const DifferenceRecord& record =
        comparison.Record(side == Side::Original ? move.deletion : move.addition);
    const std::string first = std::to_string(record.paragraphs[side].first.value);
    if (record.Count(side) == 1)
        return "paragraph " + first;
    return "paragraphs " + first + " to " + std::to_string(record.paragraphs[side].last.value);
}

std::string SummaryText(const Comparison& comparison) {
    if (comparison.Same())
        return "No differences.";
    const auto moves = static_cast<std::int32_t>(comparison.moves.size());
    const DifferenceCounts& counts = comparison.record_counts;
    std::string text = CountText(counts.All() - moves, "difference", "differences") + ": " +
                       CountText(counts.changes, "change", "changes") + ", " +
                       CountText(counts.additions - moves, "addition", "additions") + ", " +
                       CountText(counts.deletions - moves, "deletion", "deletions");
    if (moves > 0)
        text += ", " + CountText(moves, "move", "moves");
    return text + ".";
}

std::string VerdictText(const Comparison& comparison) {
    if (comparison.same_files)
        return "The files are identical.";
    if (comparison.beside_sentence.empty())
        return SummaryText(comparison);
    const std::string words =
        comparison.Same() ? "No differences in the words." : SummaryText(comparison);
    return words + " " + comparison.beside_sentence;
}

std::string DescribeBeside(const BesideNote& note) {
    std::string text = note.what + " " + note.change;
    if (note.paragraphs.modified.value > 0)
        text += ", paragraph " + std::to_string(note.paragraphs.modified.value);
    else if (note.paragraphs.original.value > 0)
        text +=
            ", paragraph " + std::to_string(note.paragraphs.original.value) + " of the original";
    if (note.old_text.empty() && note.new_text.empty())
        return text;
    text += ": " + note.old_text;
    if (note.old_text != note.new_text && !note.new_text.empty())
        text += (note.old_text.empty() ? "" : " \u2192 ") + note.new_text;
    return text;
}

std::string DescribeRecord(const Comparison& comparison, std::size_t index) {
    const DifferenceRecord& record = comparison.records[index];
    if (const Move* move = comparison.MoveOf(index))
        return DescribeMove(comparison, record, *move);
    const auto place = std::to_string(record.paragraphs.original.first.value);
    switch (record.type) {
        case DifferenceType::Addition:
            return "Addition of " +
                   CountText(record.Count(Side::Modified), "paragraph", "paragraphs") +
                   (record.paragraphs.original.first.value == 0 ? " at the beginning"
                                                                : " behind paragraph " + place);
        case DifferenceType::Deletion:
            return "Deletion of " +
                   CountText(record.Count(Side::Original), "paragraph", "paragraphs") +
                   " at paragraph " + place;
        case DifferenceType::Change:
            break;
    }
    if (record.Count(Side::Original) == 1 && record.Count(Side::Modified) == 1)
        return "Change at paragraph " + place;
    return "Change of " + CountText(record.Count(Side::Original), "paragraph", "paragraphs") +
           " to " + std::to_string(record.Count(Side::Modified)) + " at paragraph " + place;
}

namespace {

Status WritePage(const ReportModel& model, const std::string& path, std::int32_t style) {
    Result<FileReplacement> file = FileReplacement::Begin(path, model.file_mode);
    if (!file.ok())
        return file.failure();
    const Status written = WriteHtmlReport(
        model, style, [&](std::string_view part) { return file.value().Write(part); });
    return written.ok() ? file.value().Finish() : written;
}

Status WriteWhole(const ReportModel& model, const std::string& path, std::string report) {
    constexpr std::size_t kLong = std::size_t{1} << 24;
    const Status written = KeepGoing(model.watcher)
                               ? ReplaceFile(path, report, model.file_mode, model.watcher)
                               : Status(Failure{std::string(kReportStopped)});
    if (report.size() > kLong)
        FreeAside(std::move(report));
    return written.ok() || KeepGoing(model.watcher) ? written
                                                    : Status(Failure{std::string(kReportStopped)});
}

}  // namespace

void ReserveForReport(const Comparison& comparison, std::string& out) {
    constexpr std::size_t kLong = std::size_t{1} << 20;
    std::size_t bytes = 0;
    for (const Side side : kBothSides)
        bytes += comparison.Lines(side).AllBytes().size();
    bytes += comparison.sections.size() * 64;
    if (!comparison.records.empty() && bytes > kLong)
        out.reserve(bytes * 2);
}

Status WriteEngineReport(const ReportModel& model, const std::string& file, ReportType type,
                         std::int32_t style) {
    switch (type) {
        case ReportType::Html:
            return WritePage(model, file, style);
        case ReportType::Text:
            return WriteWhole(model, file, WriteTextReport(model));
        case ReportType::Csv:
            return WriteWhole(model, file, WriteCsvReport(model));
        case ReportType::Document:
            break;
    }
    return Failure{file + ": a word-processor report is made from the marked text"};
}

}  // namespace zorvane
