#include "load/csv_operations.h"

#include <algorithm>

#include "common/base/append_in_parts.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

bool IsBlank(char character) {
    return character == ' ' || character == '\t';
}

std::string_view TrimField(std::string_view field) {
    while (!field.empty() && IsBlank(field.front()))
        field.remove_prefix(1);
    while (!field.empty() && IsBlank(field.back()))
        field.remove_suffix(1);
    return field;
}

bool IsEmptyRecord(const std::vector<std::string_view>& fields) {
    return std::all_of(fields.begin(), fields.end(),
                       [](std::string_view field) { return TrimField(field).empty(); });
}

// Characters, not bytes; CR LF is one, as it becomes one blank.
std::size_t WidthOf(std::string_view field) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const bool second = field[i] == '\n' && i > 0 && field[i - 1] == '\r';
        width += !IsContinuation(field[i]) && !second ? std::size_t{1} : 0;
    }
    return width;
}

void WriteRecord(const std::vector<std::string_view>& fields, CsvWriter& writer) {
    for (const std::string_view field : fields)
        writer.Field(field);
    writer.EndRecord();
}

// Asks for ascending numbers, so that a long list costs no search.
class ListCursor {
  public:
    explicit ListCursor(const std::vector<NumberRange>& ranges) : ranges_(ranges) {}
    bool Contains(std::int64_t number) {
        while (next_ < ranges_.size() && ranges_[next_].last < number)
            ++next_;
        return next_ < ranges_.size() && ranges_[next_].first <= number;
    }

  private:
    const std::vector<NumberRange>& ranges_;
    std::size_t next_ = 0;
};

}  // namespace

std::string csvTrim(std::string_view utf8, const CsvInput& input) {
    std::string out;
    out.reserve(utf8.size());
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    std::size_t filled_end = 0;
    while (reader.Next(fields)) {
        for (std::string_view& field : fields)
            field = TrimField(field);
        while (!fields.empty() && fields.back().empty())
            fields.pop_back();
        const bool filled = !fields.empty();
        WriteRecord(fields, writer);
        if (filled)
            filled_end = out.size();
    }
    out.resize(filled_end);
    return out;
}

std::string csvPadWithSpaces(std::string_view utf8, const CsvInput& input) {
    std::vector<std::string_view> fields;
    std::string out;
    out.reserve(utf8.size() * 2);  // only what is written takes memory
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::string padded;
    while (reader.Next(fields)) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            padded = fields[i];
            if (i + 1 < fields.size())
                padded += ' ';
            writer.Field(padded);
        }
        writer.EndRecord();
    }
    return out;
}

std::string csvPadForFixedLengthFields(std::string_view utf8, std::size_t length, char fill,
                                       bool left_aligned, std::string_view columns,
                                       const CsvInput& input) {
    const std::vector<NumberRange> list = ParseNumberList(columns);
    std::string out;
    out.reserve(utf8.size() * 4);  // only what is written takes memory
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    std::string padded;
    while (reader.Next(fields)) {
        ListCursor cursor(list);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const std::size_t width = WidthOf(fields[i]);
            const bool pads = cursor.Contains(static_cast<std::int64_t>(i) + 1) && width < length;
            const std::size_t missing = pads ? length - width : 0;
            padded.clear();
            if (!left_aligned)
                padded.append(missing, fill);
            padded += fields[i];
            if (left_aligned)
                padded.append(missing, fill);
            writer.Field(padded);
        }
        writer.EndRecord();
    }
    return out;
}

namespace {

bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 && character != '\t';
}

constexpr std::int64_t kLineWork = 64;  // bytes, more or less

// True for text that the operations themselves wrote and that holds no quoted field: no control
// character but whole line ends.
bool HasNothingToRemove(std::string_view utf8, StopCheck& stop) {
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (utf8[i] == '"')
            return false;
        if (!IsControl(utf8[i]))
            continue;
        if (utf8[i] != '\r' || i + 1 == utf8.size() || utf8[i + 1] != '\n')
            return false;
        ++i;
        if (!stop.KeepGoing(kLineWork))
            return false;
    }
    return utf8.empty() || utf8.back() == '\n';
}

// A break becomes one blank, other control characters go.
void CleanField(std::string_view field, std::string& clean) {
    clean.clear();
    for (std::size_t i = 0; i < field.size(); ++i) {
        const bool second = field[i] == '\n' && i > 0 && field[i - 1] == '\r';
        if (static_cast<unsigned char>(field[i]) >= 0x20 || field[i] == '\t')
            clean += field[i];
        else if ((field[i] == '\r' || field[i] == '\n') && !second)
            clean += ' ';
    }
}

}  // namespace

std::string csvRemoveControlCharacters(std::string_view utf8, const CsvInput& input) {
    StopCheck stop(input.watcher);
    if (input.dialect == CsvDialect{} && HasNothingToRemove(utf8, stop)) {
        std::string same;
        same.reserve(utf8.size());
        AppendInParts(utf8, stop, same);
        return same;
    }
    std::string out;
    out.reserve(utf8.size());
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    std::string clean;
    while (reader.Next(fields)) {
        for (const std::string_view field : fields) {
            if (std::none_of(field.begin(), field.end(), IsControl)) {
                writer.Field(field);
                continue;
            }
            CleanField(field, clean);
            writer.Field(clean);
        }
        writer.EndRecord();
    }
    return out;
}

std::string csvCropRows(std::string_view utf8, std::string_view rows, const CsvInput& input) {
    std::vector<NumberRange> list = ParseNumberList(rows);
    if (list.empty())
        list.emplace_back();
    ListCursor cursor(list);
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    for (std::int64_t row = 1; reader.Next(fields); ++row) {
        if (cursor.Contains(row))
            WriteRecord(fields, writer);
    }
    return out;
}

std::string csvCropCols(std::string_view utf8, std::string_view columns, const CsvInput& input) {
    std::vector<NumberRange> list = ParseNumberList(columns);
    if (list.empty())
        list.emplace_back();
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    while (reader.Next(fields)) {
        ListCursor cursor(list);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (cursor.Contains(static_cast<std::int64_t>(i) + 1))
                writer.Field(fields[i]);
        }
        writer.EndRecord();
    }
    return out;
}

std::string csvRemoveEmptyLines(std::string_view utf8, const CsvInput& input) {
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, input);
    std::vector<std::string_view> fields;
    while (reader.Next(fields)) {
        if (!IsEmptyRecord(fields))
            WriteRecord(fields, writer);
    }
    return out;
}

}  // namespace zorvane
