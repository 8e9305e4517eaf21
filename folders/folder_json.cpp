
#include "common/base/append_format.h"
#include "common/base/json_text.h"
#include "common/base/text_encoding.h"
#include "folders/folder_findings.h"
#include "folders/pieces_at_once.h"

namespace zorvane {
namespace {

class FolderJson {
  public:
    FolderJson(const FolderFindings& findings, const TextTarget& target)
        : findings_(findings), target_(target) {}

    Status Write() {
        out_ = "{\"schema\":\"zorvane-folders/1\",\n";
        AppendJsonPath("original", findings_.roots.original, out_);
        out_ += ",\n";
        AppendJsonPath("modified", findings_.roots.modified, out_);
        out_ += ",\n";
        Counts();
        for (std::size_t index = 0; index < findings_.scan.Count(); ++index) {
            Record(static_cast<std::int32_t>(index));
            if (out_.size() < kBytesAtOnce)
                continue;
            if (Status written = target_(out_); !written.ok())
                return written;
            out_.clear();
        }
        out_ += "\n],\n\"renamed\":[";
        for (std::size_t place = 0; place < findings_.renamed.size(); ++place)
            Renamed(place);
        out_ += "\n],\n\"errors\":[";
        for (std::size_t index = 0; index < findings_.scan.Faults().size(); ++index)
            Fault(index);
        out_ += "\n]}\n";
        return target_(out_);
    }

  private:
    void Counts() {
        const FolderCounts counts = findings_.Count();
        out_ += "\"counts\":{";
        for (const FolderVerdict verdict :
             {FolderVerdict::Changed, FolderVerdict::OnlyOriginal, FolderVerdict::OnlyModified,
              FolderVerdict::Renamed, FolderVerdict::Date, FolderVerdict::SameWords,
              FolderVerdict::Failed, FolderVerdict::Same})
            AppendFormat(out_, "\"{}\":{},", NameOf(verdict), counts.Of(verdict));
        AppendFormat(out_, "\"folders\":{}}},\n\"records\":[", counts.folders);
    }

    void Record(std::int32_t record) {
        const auto index = static_cast<std::size_t>(record);
        const ScannedEntry& entry = findings_.scan.Entry(index);
        AppendFormat(out_, "{}\n{{\"record\":{},\"verdict\":\"{}\",", record == 0 ? "" : ",",
                     record, NameOf(findings_.VerdictOf(record)));
        AppendJsonPath("path", findings_.scan.PathBelow(index), out_);
        OneSide("original", entry, Side::Original);
        OneSide("modified", entry, Side::Modified);
        if (const RenamedEntry* renamed = findings_.RenamedOf(record))
            AppendFormat(out_, ",\"renamed\":{}", renamed - findings_.renamed.data());
        const std::optional<TextCheck> check =
            findings_.text ? findings_.text(record) : std::nullopt;
        if (check)
            Text(*check);
        out_ += '}';
    }

    void OneSide(const char* name, const ScannedEntry& entry, Side side) {
        constexpr const char* kKinds[] = {"none", "file", "folder", "link", "special", "unknown"};
        if (!entry.Has(side)) {
            AppendFormat(out_, ",\"{}\":null", name);
            return;
        }
        const EntryKind kind = side == Side::Original ? entry.original : entry.modified;
        AppendFormat(out_, ",\"{}\":{{\"kind\":\"{}\"", name,
                     kKinds[static_cast<std::size_t>(kind)]);
        if (kind != EntryKind::Folder)
            AppendFormat(out_, ",\"size\":{},\"changed\":{}", entry.sizes[side],
                         entry.seconds[side]);
        out_ += '}';
    }

    void Text(const TextCheck& check) {
        AppendFormat(out_,
                     ",\"text\":{{\"compared\":{},\"changes\":{},\"additions\":{},\"deletions\":{},"
                     "\"beside\":{}",
                     check.end == TextCheckEnd::Compared, check.changed, check.added, check.deleted,
                     check.beside);
        if (!check.report.empty()) {
            out_ += ',';
            AppendJsonPath("report", check.report, out_);
        }
        if (!check.reason.empty()) {
            out_ += ",\"reason\":";
            AppendJsonString(check.reason, out_);
        }
        out_ += '}';
    }

    void Renamed(std::size_t place) {
        const RenamedEntry& entry = findings_.renamed[place];
        AppendFormat(out_, "{}\n{{\"original\":{},\"modified\":{},\"percent\":{},\"folder\":{},",
                     place == 0 ? "" : ",", entry.original, entry.modified, entry.percent,
                     entry.folder);
        AppendJsonPath("from", findings_.scan.PathBelow(static_cast<std::size_t>(entry.original)),
                       out_);
        out_ += ',';
        AppendJsonPath("to", findings_.scan.PathBelow(static_cast<std::size_t>(entry.modified)),
                       out_);
        out_ += '}';
    }

    void Fault(std::size_t index) {
        const FolderFault& fault = findings_.scan.Faults()[index];
        AppendFormat(out_, "{}\n{{\"code\":{},\"message\":", index == 0 ? "" : ",", fault.code);
        AppendJsonString(fault.message, out_);
        out_ += '}';
    }

    const FolderFindings& findings_;
    const TextTarget& target_;
    std::string out_;
};

}  // namespace

Status WriteFolderJson(const FolderFindings& findings, const TextTarget& target) {
    return FolderJson(findings, target).Write();
}

}  // namespace zorvane
