// The comma-delimited report (RFC 4180): a header row, then a record a line.
#include "common/base/text_encoding.h"
#include "compare/engine/report_model.h"

namespace zorvane {
namespace {

constexpr std::string_view kByteOrderMark =
    "\xEF\xBB\xBF";  // spreadsheets take the file for UTF-8 by it
constexpr std::string_view kHeader =
    "Number,Type,Original first,Original last,Modified first,Modified last,Original text,"
    "Modified text,Moved with\r\n";

// Cell marks as tabs, line breaks as line feeds; what no spreadsheet takes is replaced.
std::u16string Clean(std::u16string_view part) {
    std::u16string text(part);
    std::erase(text, u'\r');
    for (char16_t& unit : text) {
        if (unit == 7)
            unit = u'\t';
        else if (unit == 11)
            unit = u'\n';
        else if ((unit < 0x20 && unit != u'\t' && unit != u'\n') || (unit >= 0x7F && unit < 0xA0))
            unit = u'\uFFFD';
    }
    return text;
}

void AppendText(std::u16string_view text, std::string& out, StopCheck& stop) {
    out += ",\"";
    bool first = true;
    WriteInParts(text, stop, [&](std::u16string_view part) {
        const std::string utf8 = ToUtf8(Clean(part));
        // A spreadsheet would run these as a formula; the apostrophe makes them text.
        if (first && !utf8.empty() &&
            std::string_view("=+-@\t\n").find(utf8.front()) != std::string_view::npos)
            out += '\'';
        first = first && utf8.empty();
        for (const char character : utf8) {
            if (character == '"')
                out += '"';
            out += character;
        }
    });
    out += '"';
}

const char* TypeText(DifferenceType type) {
    switch (type) {
        case DifferenceType::Addition:
            return "Addition";
        case DifferenceType::Deletion:
            return "Deletion";
        case DifferenceType::Change:
            break;
    }
    return "Change";
}

}  // namespace

std::string WriteCsvReport(const ReportModel& model) {
    const Comparison& comparison = model.comparison;
    std::string out(kByteOrderMark);
    out += kHeader;
    ReserveForReport(comparison, out);
    StopCheck stop(model.watcher, kUnitsBetweenStops);
    PerSide<std::u16string> buffers;
    for (std::size_t i = 0; i < comparison.records.size() && stop.KeepGoing(kUnitsOfRecord); ++i) {
        const DifferenceRecord& record = comparison.records[i];
        out += std::to_string(i + 1) + "," + TypeText(record.type);
        for (const std::int32_t line :
             {record.paragraphs.original.first.value, record.paragraphs.original.last.value,
              record.paragraphs.modified.first.value, record.paragraphs.modified.last.value})
            out += "," + std::to_string(line);
        for (const Side side : kBothSides)
            AppendText(comparison.Text(side, record, buffers[side]), out, stop);
        out += ",";
        if (const Move* move = comparison.MoveOf(i))
            out += std::to_string(PartnerOf(*move, record.type).value + 1);
        out += "\r\n";
    }
    // What lies beside the words has no number, since it is no record.
    for (const BesideNote& note : comparison.beside) {
        out += ",Beside";
        for (const std::int32_t line :
             {note.paragraphs.original.value, note.paragraphs.original.value,
              note.paragraphs.modified.value, note.paragraphs.modified.value})
            out += "," + std::to_string(line);
        const std::string what = note.what + " " + note.change + ": ";
        AppendText(ToUtf16(what + note.old_text), out, stop);
        AppendText(ToUtf16(what + note.new_text), out, stop);
        out += ",\r\n";
    }
    return out;
}

}  // namespace zorvane
