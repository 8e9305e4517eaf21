#include <algorithm>
#include <map>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "load/csv_operations.h"

namespace zorvane {
namespace {

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
    CsvReader reader(sample, {{delimiter}});
    std::vector<std::string_view> fields;
    std::map<std::size_t, std::size_t> records_by_count;
    std::size_t records = 0;
    while (records < kMostRecords && reader.Next(fields)) {
        if (fields.size() == 1 && Trim(fields[0]).empty())
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

// Share of the commas that stand inside of a number.
double DecimalCommas(std::string_view sample) {
    std::size_t all = 0;
    std::size_t inside = 0;
    for (std::size_t i = 1; i + 1 < sample.size(); ++i) {
        if (sample[i] != ',')
            continue;
        ++all;
        inside += IsAsciiDigit(sample[i - 1]) && IsAsciiDigit(sample[i + 1]) ? std::size_t{1} : 0;
    }
    return all == 0 ? 0 : static_cast<double>(inside) / static_cast<double>(all);
}

}  // namespace

CsvDialect DetectCsv(std::string_view utf8) {
    constexpr std::size_t kSample = 65'536;
    if (utf8.starts_with("\xEF\xBB\xBF"))
        utf8.remove_prefix(3);
    const std::string sample = WithoutQuoted(utf8.substr(0, kSample));
    // Where most commas stand inside of numbers, another character that cuts half as evenly is
    // taken.
    constexpr double kMostCommas = 0.8;
    constexpr double kDecimal = 0.5;
    double best = ScoreOf(sample, ',') * (DecimalCommas(sample) > kMostCommas ? kDecimal : 1.0);
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

CsvReader::CsvReader(std::string_view utf8, CsvInput input)
    : text_(utf8), delimiter_(input.dialect.delimiter), stop_(input.watcher) {
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
    if (at_ >= text_.size() || !stop_.KeepGoing(static_cast<std::int64_t>(at_ - told_)))
        return false;
    told_ = at_;
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
    // A plain comparison of each character: a search for one of a set calls the library for each.
    const bool plain = std::none_of(field.begin(), field.end(), [](char character) {
        return character == ',' || character == '"' || character == '\r' || character == '\n';
    });
    if (plain) {
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

}  // namespace zorvane
