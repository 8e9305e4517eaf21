#include "reports/json_report.h"

#include "common/base/append_format.h"
#include "common/base/json_text.h"
#include "common/base/text_encoding.h"
#include "compare/engine/place_text.h"

namespace zorvane {
namespace {

const char* Letter(DifferenceType type) {
    switch (type) {
        case DifferenceType::Addition:
            return "a";
        case DifferenceType::Deletion:
            return "d";
        case DifferenceType::Change:
            break;
    }
    return "c";
}

void AppendCounts(const DifferenceCounts& counts, std::string& out) {
    AppendFormat(out, "\"changes\":{},\"additions\":{},\"deletions\":{}", counts.changes,
                 counts.additions, counts.deletions);
}

class JsonWriter {
  public:
    explicit JsonWriter(const ReportModel& model) : model_(model), comparison_(model.comparison) {}

    std::string Write() {
        const std::size_t count = comparison_.records.size();
        ReserveForReport(comparison_, out_);
        out_ = "{\"schema\":\"zorvane-compare/1\",\n";
        WriteSide("original", Side::Original);
        WriteSide("modified", Side::Modified);
        AppendFormat(out_, "\"counts\":{{\"records\":{},\"moves\":{},", count,
                     comparison_.moves.size());
        AppendCounts(comparison_.record_counts, out_);
        out_ += ",\"sections\":{";
        AppendCounts(comparison_.section_counts, out_);
        out_ += "},\"characters\":{";
        AppendCounts(comparison_.character_counts, out_);
        out_ += "}},\n\"records\":[";
        for (std::size_t i = 0; i < count && stop_.KeepGoing(kUnitsOfRecord); ++i)
            Record(i);
        out_ += count == 0 ? "],\n\"moves\":[" : "\n],\n\"moves\":[";
        for (std::size_t i = 0; i < comparison_.moves.size(); ++i)
            WriteMove(i);
        out_ += comparison_.moves.empty() ? "],\n\"beside\":[" : "\n],\n\"beside\":[";
        for (std::size_t i = 0; i < comparison_.beside.size(); ++i)
            Beside(comparison_.beside[i], i == 0);
        out_ += comparison_.beside.empty() ? "],\n" : "\n],\n";
        out_ += "\"verdict\":";
        AppendJsonString(VerdictText(comparison_), out_);
        out_ += "}\n";
        return std::move(out_);
    }

  private:
    void WriteSide(const char* name, Side side) {
        AppendFormat(out_, "\"{}\":{{\"path\":", name);
        AppendJsonString(model_.names[side], out_);
        AppendFormat(out_, ",\"paragraphs\":{}}},\n", comparison_.Paragraphs(side));
    }

    void Record(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        AppendFormat(out_, "{}\n{{\"number\":{},\"type\":\"{}\",", index == 0 ? "" : ",", index + 1,
                     Letter(record.type));
        Lines("original", Side::Original, record);
        out_ += ',';
        Lines("modified", Side::Modified, record);
        if (const Move* move = comparison_.MoveOf(index))
            AppendFormat(out_, ",\"moved\":{}", PartnerOf(*move, record.type).value + 1);
        out_ += ",\"sections\":";
        Sections(comparison_.SectionsOf(index), record, record);
        out_ += '}';
    }

    void WriteMove(std::size_t index) {
        const Move& move = comparison_.moves[index];
        AppendFormat(out_,
                     "{}\n{{\"deletion\":{},\"addition\":{},\"sections\":", index == 0 ? "" : ",",
                     move.deletion.value + 1, move.addition.value + 1);
        Sections(comparison_.SectionsOf(move), comparison_.Record(move.deletion),
                 comparison_.Record(move.addition));
        out_ += '}';
    }

    void Beside(const BesideNote& note, bool first) {
        out_ += first ? "\n{\"kind\":" : ",\n{\"kind\":";
        AppendJsonString(note.kind, out_);
        out_ += ",\"change\":";
        AppendJsonString(note.change, out_);
        AppendFormat(out_,
                     ",\"original\":{{\"paragraph\":{},\"text\":", note.paragraphs.original.value);
        AppendJsonString(note.old_text, out_);
        AppendFormat(
            out_, "}},\"modified\":{{\"paragraph\":{},\"text\":", note.paragraphs.modified.value);
        AppendJsonString(note.new_text, out_);
        out_ += "}}";
    }

    void Lines(const char* name, Side side, const DifferenceRecord& record) {
        const std::int32_t first = record.paragraphs[side].first.value;
        std::u16string buffer;
        AppendFormat(out_, "\"{}\":{{\"first\":{},\"last\":{},\"text\":[", name, first,
                     record.paragraphs[side].last.value);
        for (std::int32_t i = 0; i < record.Count(side); ++i) {
            if (i > 0)
                out_ += ',';
            Text(comparison_.Lines(side).Text(first + i - 1, buffer));
        }
        out_ += "]}";
    }

    void Text(std::u16string_view text) {
        out_ += '"';
        WriteInParts(text, stop_,
                     [this](std::u16string_view part) { AppendJsonEscaped(ToUtf8(part), out_); });
        out_ += '"';
    }

    // In the texts of one record, or of the two records of a move.
    void Sections(std::span<const SectionDetail> sections, const DifferenceRecord& from,
                  const DifferenceRecord& to) {
        PerSide<std::u16string> buffers;
        const std::u16string_view original =
            comparison_.Text(Side::Original, from, buffers.original);
        const std::u16string_view modified = comparison_.Text(Side::Modified, to, buffers.modified);
        out_ += '[';
        bool first = true;
        for (const SectionDetail& section : sections) {
            if (!stop_.KeepGoing(kUnitsOfRecord))
                break;
            out_ += first ? "" : ",";
            first = false;
            Detail(section, original, modified);
            out_ += ",\"characters\":[";
            bool first_letter = true;
            for (const DetailRecord& letters : comparison_.CharactersOf(section)) {
                out_ += first_letter ? "" : ",";
                first_letter = false;
                Detail(letters, TextAt(section.places.original, original),
                       TextAt(section.places.modified, modified));
                out_ += '}';
            }
            out_ += "]}";
        }
        out_ += ']';
    }

    // Leaves the object open.
    void Detail(const DetailRecord& record, std::u16string_view original,
                std::u16string_view modified) {
        AppendFormat(out_, "{{\"type\":\"{}\",", Letter(record.type));
        Place("original", record.places.original, original);
        out_ += ',';
        Place("modified", record.places.modified, modified);
    }

    void Place(const char* side, const DetailPlace& place, std::u16string_view text) {
        AppendFormat(out_,
                     "\"{}\":{{\"first\":{},\"last\":{},\"begin\":{},\"end\":{},\"text\":", side,
                     place.first, place.last, place.begin, place.end);
        Text(TextAt(place, text));
        out_ += '}';
    }

    const ReportModel& model_;
    const Comparison& comparison_;
    StopCheck stop_{model_.watcher, kUnitsBetweenStops};
    std::string out_;
};

}  // namespace

std::string WriteJsonReport(const ReportModel& model) {
    return JsonWriter(model).Write();
}

std::string WithRedlines(std::string json, const std::vector<RedlineCertificate>& certificates) {
    std::string list;
    for (const RedlineCertificate& certificate : certificates)
        list += (list.empty() ? "\n" : ",\n") + CertificateJson(certificate);
    json.erase(json.rfind('}'));
    json += ",\n\"redlines\":[" + list + "\n]}\n";
    return json;
}

}  // namespace zorvane
