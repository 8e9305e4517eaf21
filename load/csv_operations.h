// Preparation of comma-separated text for a compare: cells trimmed, padded, cropped. As RFC 4180
// has it: quotes, doubled quotes inside, line breaks inside of cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/base/run_watcher.h"

namespace zorvane {

struct CsvDialect {
    char delimiter = ',';
    friend bool operator==(CsvDialect, CsvDialect) = default;
};

/// Comma, semicolon, tab or bar: the one that cuts the first records most evenly. Comma when none
/// occurs. A comma inside of numbers (1,5) speaks against it where another one fits.
CsvDialect DetectCsv(std::string_view utf8);

/// What a text is read with. A stop by the watcher is to a reader the end of its text, so what an
/// operation gives then is not whole.
struct CsvInput {
    CsvDialect dialect;
    RunWatcher* watcher = nullptr;
};

/// Reads records one by one. A byte-order mark is passed over; CR LF, LF and CR end a record; the
/// break behind the last record opens no further one. A quote inside of a plain field is a
/// character like any other, and a quoted field that is never closed reaches to the end.
class CsvReader {
  public:
    /// `utf8` is borrowed.
    CsvReader(std::string_view utf8, CsvInput input);
    /// False at the end. The views live until the next call. An empty line is one empty field.
    bool Next(std::vector<std::string_view>& fields);

  private:
    std::string_view Quoted();
    std::string_view Plain();
    std::size_t PassBreak();

    std::string_view text_;
    char delimiter_;
    StopCheck stop_;
    std::size_t at_ = 0;
    std::size_t told_ = 0;  // up to where the stop has been asked for
    std::string unescaped_;
    std::vector<std::pair<std::size_t, std::size_t>> places_;
};

/// Appends records to a text: a comma between fields, CR LF behind a record, quotes only around a
/// field that holds a comma, a quote or a line break.
class CsvWriter {
  public:
    explicit CsvWriter(std::string& out) : out_(out) {}
    void Field(std::string_view field);
    void EndRecord();

  private:
    std::string& out_;
    bool first_ = true;
};

/// 1-based, both ends included.
struct NumberRange {
    std::int64_t first = 1;
    std::int64_t last = std::numeric_limits<std::int64_t>::max();
    friend bool operator==(const NumberRange&, const NumberRange&) = default;
};

/// "1, 12, 20,30-50", "5-" (and all behind), "-5" (up to), "50-30" (as 30-50), "*" (all). Sorted,
/// without overlaps. What is neither of these is passed over.
std::vector<NumberRange> ParseNumberList(std::string_view list);

/// True when each item is one of those, and none is below 1.
bool IsNumberList(std::string_view list);

// The operations. `input` tells of the text that comes in; what goes out has commas.

/// Blanks and tabs at both ends of each field go, then the empty fields behind the last filled one
/// of each record, then the empty records behind the last filled one.
std::string csvTrim(std::string_view utf8, const CsvInput& input = {});
/// One blank behind each field but the last, so that cells are words of their own. No more: a width
/// that follows the widest cell would make every row differ when one cell grows.
std::string csvPadWithSpaces(std::string_view utf8, const CsvInput& input = {});
/// Each field of the listed columns to `length` characters; a longer one stays whole.
std::string csvPadForFixedLengthFields(std::string_view utf8, std::size_t length, char fill,
                                       bool left_aligned, std::string_view columns,
                                       const CsvInput& input = {});
/// Control characters other than tab go; a line break inside of a cell becomes a blank.
std::string csvRemoveControlCharacters(std::string_view utf8, const CsvInput& input = {});
/// Keep the listed records or columns alone, in the order of the text. A list without any number
/// keeps all, since nobody compares nothing.
std::string csvCropRows(std::string_view utf8, std::string_view rows, const CsvInput& input = {});
std::string csvCropCols(std::string_view utf8, std::string_view columns,
                        const CsvInput& input = {});
/// Records that hold nothing but blanks go.
std::string csvRemoveEmptyLines(std::string_view utf8, const CsvInput& input = {});

/// The sheets of a list such as "1-2, 12, 20, *" or "Sales,Costs", as indices from 0 in the order
/// of the list, each once. At each place a sheet's name goes first, the longest one that fits up to
/// a comma or the end, regardless of case: so "2" means the sheet that is named so, where there is
/// one, and names may hold commas. What fits nothing is passed over.
std::vector<std::size_t> SelectSheets(std::string_view list, const std::vector<std::string>& names);

}  // namespace zorvane
