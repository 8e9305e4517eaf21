#include "folders/folder_report.h"

#include "common/platform/files.h"
#include "folders/pieces_at_once.h"

namespace zorvane {
namespace {

constexpr const char* kHeader =
    "Record\tFileName\tDirMaster\tDirSource\tIsFile\tOnlyInSource\tOnlyInMaster\tSizeDifferent\t"
    "DateDifferent\tContentDifferent\r\n";

// Bytes that are no UTF-8 stay as they are.
std::string Cell(const std::string& text) {
    std::string cell;
    for (const char character : text) {
        if (character == '\t')
            cell += "\xE2\x90\x89";  // the pictures of these characters
        else if (character == '\n')
            cell += "\xE2\x90\x8A";
        else if (character == '\r')
            cell += "\xE2\x90\x8D";
        else
            cell += character;
    }
    return cell;
}

std::string LastField(const FolderReport& report, const FolderRecord& record) {
    if (record.ContentDifferent == kContentSame)
        return "0";
    // Kept: an error has one tab more behind it, and readers of these tables know it.
    if (record.ContentDifferent != kContentDifferent)
        return report.error_word + "\t";
    const std::optional<bool> differ =
        report.words_differ ? report.words_differ(record.Record) : std::nullopt;
    return differ.value_or(true) ? "1" : "0";
}

void AddRow(const FolderReport& report, const FolderRecord& record, std::string& out) {
    for (const std::string& text : {std::to_string(record.Record), Cell(record.FileName),
                                    Cell(record.DirMaster), Cell(record.DirSource)})
        out.append(text) += '\t';
    for (const std::int32_t number : {record.IsFile, record.OnlyInSource, record.OnlyInMaster,
                                      record.SizeDifferent, record.DateDifferent})
        out.append(std::to_string(number)) += '\t';
    out.append(LastField(report, record)) += "\r\n";
}

}  // namespace

Status WriteFolderReport(const FolderReport& report, const std::string& file,
                         const WritingWatch& watch) {
    Result<FileReplacement> target = FileReplacement::Begin(file);
    if (!target.ok())
        return target.failure();
    std::string out = kHeader;
    const std::int32_t count = report.engine.getRecordCount();
    for (std::int32_t index = 0; index < count; ++index) {
        const std::optional<FolderRecord> found = report.engine.GetFolderRecord(index);
        if (!found)
            break;
        AddRow(report, *found, out);
        if (out.size() < kBytesAtOnce)
            continue;
        if (watch.stop())
            return Failure{"stopped"};
        watch.progress(static_cast<int>(std::int64_t{100} * index / count));
        if (Status written = target.value().Write(out); !written.ok())
            return written;
        out.clear();
    }
    if (Status written = target.value().Write(out); !written.ok())
        return written;
    return target.value().Finish();
}

}  // namespace zorvane
