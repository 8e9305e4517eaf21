#include "reports/json_report.h"

#include <fmt/format.h>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

void AppendString(std::string_view text, std::string& out) {
    if (!IsValidUtf8(text)) {
        AppendString(ToUtf8(ToUtf16(text)), out);
        return;
    }
    out += '"';
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            out.append({'\\', character});
        else if (byte < 0x20 || byte == 0x7F)
            fmt::format_to(std::back_inserter(out), "\\u{:04x}", byte);
        else
            out += character;
    }
    out += '"';
}

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

void AppendCounts(const DetailCounts& counts, std::string& out) {
    fmt::format_to(std::back_inserter(out), "\"changes\":{},\"additions\":{},\"deletions\":{}",
                   counts.changes, counts.additions, counts.deletions);
}

class JsonWriter {
  public:
    explicit JsonWriter(const ComparisonModel& model)
        : model_(model), engine_(model.engine), detail_(model.detail) {}

    std::string Write() {
        std::string records;
        std::int32_t number = 0;
        for (const DifferenceRecord& record : engine_.Records())
            Record(++number, record, records);
        std::string out = "{\"schema\":\"zorvane-compare/1\",\n";
        Side("original", model_.original_name, engine_.MasterLineCount(), out);
        Side("modified", model_.modified_name, engine_.SourceLineCount(), out);
        fmt::format_to(std::back_inserter(out), "\"counts\":{{\"records\":{},", number);
        AppendCounts(CountRecords(engine_), out);
        out += ",\"sections\":{";
        AppendCounts(detail_.SectionCounts(), out);
        out += "},\"characters\":{";
        AppendCounts(detail_.CharacterCounts(), out);
        out += "}},\n\"records\":[" + records + (number == 0 ? "]}\n" : "\n]}\n");
        return out;
    }

  private:
    static void Side(const char* name, const std::string& path, std::int32_t paragraphs,
                     std::string& out) {
        fmt::format_to(std::back_inserter(out), "\"{}\":{{\"path\":", name);
        AppendString(path, out);
        fmt::format_to(std::back_inserter(out), ",\"paragraphs\":{}}},\n", paragraphs);
    }

    void Record(std::int32_t number, const DifferenceRecord& record, std::string& out) {
        fmt::format_to(std::back_inserter(out), "{}\n{{\"number\":{},\"type\":\"{}\",",
                       number == 1 ? "" : ",", number, Letter(record.type));
        Lines("original", record.first_original, record.last_original, record.OriginalCount(),
              &VestrelX::MasterLine, out);
        out += ',';
        Lines("modified", record.first_modified, record.last_modified, record.ModifiedCount(),
              &VestrelX::SourceLine, out);
        out += ",\"sections\":[";
        if (record.type == DifferenceType::Change)
            Sections(record, out);
        out += "]}";
    }

    void Lines(const char* side, std::int32_t first, std::int32_t last, std::int32_t count,
               std::string_view (VestrelX::*line)(std::int32_t) const, std::string& out) {
        fmt::format_to(std::back_inserter(out), "\"{}\":{{\"first\":{},\"last\":{},\"text\":[",
                       side, first, last);
        for (std::int32_t i = 0; i < count; ++i) {
            if (i > 0)
                out += ',';
            AppendString((engine_.*line)(first + i), out);
        }
        out += "]}";
    }

    void Sections(const DifferenceRecord& record, std::string& out) {
        const std::u16string original = OriginalText(engine_, record);
        const std::u16string modified = ModifiedText(engine_, record);
        detail_.Find(original, modified);
        bool first = true;
        for (const SectionDetail& section : detail_.Sections()) {
            out += first ? "" : ",";
            first = false;
            Detail(section, original, modified, out);
            out += ",\"characters\":[";
            bool first_letter = true;
            for (const DetailRecord& letters : section.characters) {
                out += first_letter ? "" : ",";
                first_letter = false;
                Detail(letters, PlaceText(original, section.original),
                       PlaceText(modified, section.modified), out);
                out += '}';
            }
            out += "]}";
        }
    }

    static std::u16string_view PlaceText(std::u16string_view text, const DetailPlace& place) {
        return text.substr(static_cast<std::size_t>(place.begin),
                           static_cast<std::size_t>(place.Length()));
    }

    // Leaves the object open.
    static void Detail(const DetailRecord& record, std::u16string_view original,
                       std::u16string_view modified, std::string& out) {
        fmt::format_to(std::back_inserter(out), "{{\"type\":\"{}\",", Letter(record.type));
        Place("original", record.original, original, out);
        out += ',';
        Place("modified", record.modified, modified, out);
    }

    static void Place(const char* side, const DetailPlace& place, std::u16string_view text,
                      std::string& out) {
        fmt::format_to(std::back_inserter(out), "\"{}\":{{\"first\":{},\"last\":{},\"text\":", side,
                       place.first, place.last);
        AppendString(ToUtf8(PlaceText(text, place)), out);
        out += '}';
    }

    const ComparisonModel& model_;
    const VestrelX& engine_;
    ChangeDetail detail_;
};

}  // namespace

std::string WriteJsonReport(const ComparisonModel& model) {
    return JsonWriter(model).Write();
}

}  // namespace zorvane
