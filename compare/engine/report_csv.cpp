// The comma-delimited report (RFC 4180): a header row, then a record a line.
#include "common/base/text_encoding.h"
#include "compare/engine/comparison_model.h"

namespace zorvane {
namespace {

constexpr std::string_view kByteOrderMark =
    "\xEF\xBB\xBF";  // spreadsheets take the file for UTF-8 by it
constexpr std::string_view kHeader =
    "Number,Type,Original first,Original last,Modified first,Modified last,Original text,"
    "Modified text\r\n";

// Cell marks as tabs, line breaks as line feeds; what no spreadsheet takes is replaced.
std::u16string Clean(std::u16string text) {
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

void AppendText(const std::u16string& text, std::string& out) {
    const std::string utf8 = ToUtf8(Clean(text));
    out += ",\"";
    // A spreadsheet would run these as a formula; the apostrophe makes them text.
    if (!utf8.empty() && std::string_view("=+-@\t\n").find(utf8.front()) != std::string_view::npos)
        out += '\'';
    for (const char character : utf8) {
        if (character == '"')
            out += '"';
        out += character;
    }
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

std::string WriteCsvReport(const ComparisonModel& model) {
    std::string out(kByteOrderMark);
    out += kHeader;
    std::int32_t number = 0;
    for (const DifferenceRecord& record : model.engine.Records()) {
        out += std::to_string(++number) + "," + TypeText(record.type);
        for (const std::int32_t line : {record.first_original, record.last_original,
                                        record.first_modified, record.last_modified})
            out += "," + std::to_string(line);
        AppendText(OriginalText(model.engine, record), out);
        AppendText(ModifiedText(model.engine, record), out);
        out += "\r\n";
    }
    return out;
}

}  // namespace zorvane
