#include "load/csv_operations.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <map>
#include <optional>

#include "common/base/text_encoding.h"

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
        const auto byte = static_cast<unsigned char>(field[i]);
        const bool second = byte == '\n' && i > 0 && field[i - 1] == '\r';
        width += (byte & 0xC0) != 0x80 && !second ? std::size_t{1} : 0;
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

std::optional<std::int64_t> ParseNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0)
        return std::nullopt;
    return number;
}

std::optional<NumberRange> ParseItem(std::string_view item) {
    item = Trim(item);
    if (item == "*")
        return NumberRange{};
    const std::size_t dash = item.find('-');
    if (dash == std::string_view::npos) {
        const auto number = ParseNumber(item);
        return number ? std::optional(NumberRange{*number, *number}) : std::nullopt;
    }
    const std::string_view left = Trim(item.substr(0, dash));
    const std::string_view right = Trim(item.substr(dash + 1));
    NumberRange range;
    if (left.empty() && right.empty())
        return std::nullopt;
    if (!left.empty()) {
        const auto number = ParseNumber(left);
        if (!number)
            return std::nullopt;
        range.first = *number;
    }
    if (!right.empty()) {
        const auto number = ParseNumber(right);
        if (!number)
            return std::nullopt;
        range.last = *number;
    }
    if (range.first > range.last)
        std::swap(range.first, range.last);
    return range;
}

// The text without its quoted fields: a quote opens one behind whatever may be the delimiter.
std::string WithoutQuoted(std::string_view text) {
    constexpr std::string_view kBefore = ",;\t|\r\n";
    std::string rest;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '"' || (i > 0 && kBefore.find(text[i - 1]) == std::string_view::npos)) {
            rest += text[i];
            continue;
        }
        rest += 'q';  // a field of one letter in its place
        for (++i; i < text.size(); ++i) {
            if (text[i] != '"')
                continue;
            if (i + 1 >= text.size() || text[i + 1] != '"')
                break;
            ++i;
        }
    }
    return rest;
}

// How evenly one delimiter cuts the first records, 0 to 1.
double ScoreOf(std::string_view sample, char delimiter) {
    constexpr std::size_t kMostRecords = 200;
    CsvReader reader(sample, {delimiter});
    std::vector<std::string_view> fields;
    std::map<std::size_t, std::size_t> records_by_count;
    std::size_t records = 0;
    while (records < kMostRecords && reader.Next(fields)) {
        if (fields.size() == 1 && TrimField(fields[0]).empty())
            continue;
        ++records;
        ++records_by_count[fields.size()];
    }
    const auto most = std::max_element(
        records_by_count.begin(), records_by_count.end(),
        [](const auto& one, const auto& other) { return one.second < other.second; });
    if (most == records_by_count.end() || most->first < 2)
        return 0;
    return static_cast<double>(most->second) / static_cast<double>(records);
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Share of the commas that stand inside of a number.
double DecimalCommas(std::string_view sample) {
    std::size_t all = 0;
    std::size_t inside = 0;
    for (std::size_t i = 1; i + 1 < sample.size(); ++i) {
        if (sample[i] != ',')
            continue;
        ++all;
        inside += IsDigit(sample[i - 1]) && IsDigit(sample[i + 1]) ? std::size_t{1} : 0;
    }
    return all == 0 ? 0 : static_cast<double>(inside) / static_cast<double>(all);
}

bool SameWord(std::string_view lower_name, std::string_view lower_list) {
    return lower_list.substr(0, lower_name.size()) == lower_name;
}

// The longest name at the begin of the list; its size in bytes tells how far it reaches.
struct NameMatch {
    std::size_t index = 0;
    std::size_t size = 0;
};

std::optional<NameMatch> NameAt(std::string_view list, const std::vector<std::string>& names) {
    std::optional<NameMatch> best;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = names[i];
        if (name.empty() || !SameWord(name, list) || (best && best->size >= name.size()))
            continue;
        const std::string_view behind = Trim(list.substr(name.size()));
        if (behind.empty() || behind.front() == ',')
            best = NameMatch{i, name.size()};
    }
    return best;
}

}  // namespace

CsvDialect DetectCsv(std::string_view utf8) {
    constexpr std::size_t kSample = 65'536;
    const std::string sample = WithoutQuoted(utf8.substr(0, kSample));
    constexpr double kDecimal = 0.5;
    double best = ScoreOf(sample, ',') * (DecimalCommas(sample) > 0.8 ? kDecimal : 1.0);
    CsvDialect dialect;
    // At a draw the rarer character counts: commas stand in texts and numbers by themselves.
    for (const char delimiter : {'|', ';', '\t'}) {
        const double score = ScoreOf(sample, delimiter);
        if (score > 0 && score >= best) {
            best = score;
            dialect.delimiter = delimiter;
        }
    }
    return dialect;
}

CsvReader::CsvReader(std::string_view utf8, CsvDialect dialect)
    : text_(utf8), delimiter_(dialect.delimiter) {
    if (text_.starts_with("\xEF\xBB\xBF"))
        text_.remove_prefix(3);
}

std::size_t CsvReader::PassBreak() {
    const std::size_t size = text_.substr(at_, 2) == "\r\n" ? 2 : 1;
    at_ += size;
    return size;
}

// Up to the next delimiter or line end.
std::string_view CsvReader::Plain() {
    const std::size_t from = at_;
    while (at_ < text_.size()) {
        const char character = text_[at_];
        if (character == delimiter_ || character == '\n' || character == '\r')
            break;
        ++at_;
    }
    return text_.substr(from, at_ - from);
}

// Behind the opening quote. Most quoted fields have no quote inside and need no copy.
std::string_view CsvReader::Quoted() {
    const std::size_t from = ++at_;
    std::size_t close = std::min(text_.find('"', at_), text_.size());
    at_ = std::min(close + 1, text_.size());
    const bool ends =
        at_ >= text_.size() || text_[at_] == delimiter_ || text_[at_] == '\n' || text_[at_] == '\r';
    if (ends)
        return text_.substr(from, close - from);
    const std::size_t begin = unescaped_.size();
    unescaped_ += text_.substr(from, close - from);
    while (at_ < text_.size() && text_[at_] == '"') {
        unescaped_ += '"';
        close = std::min(text_.find('"', at_ + 1), text_.size());
        unescaped_ += text_.substr(at_ + 1, close - at_ - 1);
        at_ = std::min(close + 1, text_.size());
    }
    unescaped_ += Plain();  // what stands behind the closing quote belongs to the field
    places_.emplace_back(begin, unescaped_.size() - begin);
    return {};
}

bool CsvReader::Next(std::vector<std::string_view>& fields) {
    fields.clear();
    if (at_ >= text_.size())
        return false;
    unescaped_.clear();
    places_.clear();
    std::vector<std::size_t> copied;  // fields whose text moves until the record is complete
    while (true) {
        const std::size_t before = places_.size();
        fields.push_back(at_ < text_.size() && text_[at_] == '"' ? Quoted() : Plain());
        if (places_.size() > before)
            copied.push_back(fields.size() - 1);
        if (at_ >= text_.size())
            break;
        if (text_[at_] != delimiter_) {
            PassBreak();
            break;
        }
        ++at_;
    }
    for (std::size_t i = 0; i < copied.size(); ++i)
        fields[copied[i]] =
            std::string_view(unescaped_).substr(places_[i].first, places_[i].second);
    return true;
}

void CsvWriter::Field(std::string_view field) {
    if (!first_)
        out_ += ',';
    first_ = false;
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
        out_ += field;
        return;
    }
    out_ += '"';
    while (true) {
        const std::size_t quote = field.find('"');
        out_ += field.substr(0, quote);
        if (quote == std::string_view::npos)
            break;
        out_ += "\"\"";
        field.remove_prefix(quote + 1);
    }
    out_ += '"';
}

void CsvWriter::EndRecord() {
    out_ += "\r\n";
    first_ = true;
}

std::vector<NumberRange> ParseNumberList(std::string_view list) {
    std::vector<NumberRange> ranges;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        if (const auto range = ParseItem(list.substr(0, comma)))
            ranges.push_back(*range);
        if (comma == std::string_view::npos)
            break;
        list.remove_prefix(comma + 1);
    }
    std::sort(ranges.begin(), ranges.end(), [](const NumberRange& one, const NumberRange& other) {
        return one.first < other.first;
    });
    std::vector<NumberRange> joined;
    for (const NumberRange& range : ranges) {
        if (!joined.empty() && range.first <= joined.back().last)
            joined.back().last = std::max(joined.back().last, range.last);
        else
            joined.push_back(range);
    }
    return joined;
}

std::string csvTrim(std::string_view utf8, CsvDialect dialect) {
    std::string out;
    out.reserve(utf8.size());
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
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

std::string csvPadWithSpaces(std::string_view utf8, CsvDialect dialect) {
    std::vector<std::string_view> fields;
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
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
                                       CsvDialect dialect) {
    const std::vector<NumberRange> list = ParseNumberList(columns);
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
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

std::string csvRemoveControlCharacters(std::string_view utf8, CsvDialect dialect) {
    std::string out;
    out.reserve(utf8.size());
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
    std::vector<std::string_view> fields;
    std::string clean;
    while (reader.Next(fields)) {
        for (const std::string_view field : fields) {
            clean.clear();
            for (std::size_t i = 0; i < field.size(); ++i) {
                const auto byte = static_cast<unsigned char>(field[i]);
                const bool second = byte == '\n' && i > 0 && field[i - 1] == '\r';
                if (byte >= 0x20 || byte == '\t')
                    clean += field[i];
                else if ((byte == '\r' || byte == '\n') && !second)
                    clean += ' ';
            }
            writer.Field(clean);
        }
        writer.EndRecord();
    }
    return out;
}

std::string csvCropRows(std::string_view utf8, std::string_view rows, CsvDialect dialect) {
    std::vector<NumberRange> list = ParseNumberList(rows);
    if (list.empty())
        list.emplace_back();
    ListCursor cursor(list);
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
    std::vector<std::string_view> fields;
    for (std::int64_t row = 1; reader.Next(fields); ++row) {
        if (cursor.Contains(row))
            WriteRecord(fields, writer);
    }
    return out;
}

std::string csvCropCols(std::string_view utf8, std::string_view columns, CsvDialect dialect) {
    std::vector<NumberRange> list = ParseNumberList(columns);
    if (list.empty())
        list.emplace_back();
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
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

std::string csvRemoveEmptyLines(std::string_view utf8, CsvDialect dialect) {
    std::string out;
    CsvWriter writer(out);
    CsvReader reader(utf8, dialect);
    std::vector<std::string_view> fields;
    while (reader.Next(fields)) {
        if (!IsEmptyRecord(fields))
            WriteRecord(fields, writer);
    }
    return out;
}

std::vector<std::size_t> SelectSheets(std::string_view list,
                                      const std::vector<std::string>& names) {
    std::vector<std::string> lower_names;
    for (const std::string& name : names)
        lower_names.push_back(ToLower(name));
    const std::string lower_list = ToLower(list);
    std::vector<std::size_t> selected;
    std::vector<bool> taken(names.size());
    const auto take = [&selected, &taken](std::size_t index) {
        if (!taken[index])
            selected.push_back(index);
        taken[index] = true;
    };
    std::string_view rest = lower_list;
    while (true) {
        while (!rest.empty() && IsBlank(rest.front()))
            rest.remove_prefix(1);
        if (rest.empty())
            return selected;
        const auto name = NameAt(rest, lower_names);
        const std::size_t comma = rest.find(',', name ? name->size : 0);
        if (name) {
            take(name->index);
        } else if (const auto range = ParseItem(rest.substr(0, comma))) {
            const auto last = std::min(range->last, static_cast<std::int64_t>(names.size()));
            for (std::int64_t number = std::max<std::int64_t>(range->first, 1); number <= last;
                 ++number)
                take(static_cast<std::size_t>(number - 1));
        }
        if (comma == std::string_view::npos)
            return selected;
        rest.remove_prefix(comma + 1);
    }
}

}  // namespace zorvane
