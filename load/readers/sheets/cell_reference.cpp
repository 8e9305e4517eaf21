#include "load/readers/sheets/cell_reference.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "load/column_letters.h"

namespace zorvane {
namespace {

// What may stand inside a name; bytes beyond ASCII are letters of other scripts.
bool IsWord(char character) {
    return IsAsciiLetter(character) || IsAsciiDigit(character) || character == '_' ||
           character == '.' || character == '\\' || static_cast<unsigned char>(character) >= 0x80;
}

// One side of a reference: $A$1, A or 1, as far as it is there.
struct Side {
    std::int32_t column = -1;
    std::int32_t row = -1;
    bool column_fixed = false;
    bool row_fixed = false;
    std::size_t size = 0;  ///< bytes read
};

Side ReadSide(std::string_view text) {
    Side side;
    std::size_t at = 0;
    bool dollar = text.starts_with('$');
    at += dollar ? 1 : 0;
    std::size_t letters = 0;
    std::int32_t column = 0;
    while (at < text.size() && letters < 4 && IsAsciiLetter(text[at])) {
        column = column * 26 + (text[at] & 0x1F);
        ++at;
        ++letters;
    }
    if (letters > 3 || column > kMaxSheetColumns)
        return {};
    if (letters > 0) {
        side.column = column - 1;
        side.column_fixed = dollar;
        side.size = at;
        dollar = at < text.size() && text[at] == '$';
        at += dollar ? 1 : 0;
    }
    std::size_t digits = 0;
    std::int32_t row = 0;
    while (at < text.size() && digits < 8 && IsAsciiDigit(text[at])) {
        row = row * 10 + (text[at] - '0');
        ++at;
        ++digits;
    }
    if (digits == 0)
        return side;
    if (row < 1 || row > kMaxSheetRows)
        return {};
    side.row = row - 1;
    side.row_fixed = dollar;
    side.size = at;
    return side;
}

bool Shift(Side& side, std::int32_t rows, std::int32_t columns) {
    if (side.column >= 0 && !side.column_fixed)
        side.column += columns;
    if (side.row >= 0 && !side.row_fixed)
        side.row += rows;
    return side.column >= -1 && side.column < kMaxSheetColumns && side.row >= -1 &&
           side.row < kMaxSheetRows;
}

void AppendSide(const Side& side, bool has_column, bool has_row, std::string& out) {
    if (has_column) {
        if (side.column_fixed)
            out += '$';
        AppendColumn(side.column, out);
    }
    if (has_row) {
        if (side.row_fixed)
            out += '$';
        out += std::to_string(side.row + 1);
    }
}

// Copies or moves what stands at the begin of the formula, one item at a time.
class FormulaShifter {
  public:
    FormulaShifter(std::string_view formula, std::int32_t rows, std::int32_t columns,
                   std::string& out)
        : rest_(formula), rows_(rows), columns_(columns), out_(out) {}

    void Run() {
        while (!rest_.empty())
            Item();
    }

  private:
    void Copy(std::size_t count) {
        out_ += rest_.substr(0, count);
        rest_.remove_prefix(std::min(count, rest_.size()));
    }

    void Item() {
        const char first = rest_.front();
        if (first == '"' || first == '\'') {
            const std::size_t close = rest_.find(first, 1);
            return Copy(close == std::string_view::npos ? rest_.size() : close + 1);
        }
        if (first == '[') {  // columns of tables, names of files
            const std::size_t close = rest_.find(']');
            return Copy(close == std::string_view::npos ? rest_.size() : close + 1);
        }
        if (first != '$' && !IsWord(first))
            return Copy(1);
        if (Reference())
            return;
        std::size_t size = 1;
        while (size < rest_.size() && IsWord(rest_[size]))
            ++size;
        Copy(size);
    }

    // True for a place where a reference may end.
    bool Ends(std::size_t at) const {
        return at >= rest_.size() || (!IsWord(rest_[at]) && rest_[at] != '(' && rest_[at] != '!' &&
                                      rest_[at] != '$' && rest_[at] != '[');
    }

    bool Reference() {
        Side first = ReadSide(rest_);
        if (first.size == 0)
            return false;
        const bool cell = first.column >= 0 && first.row >= 0;
        if (cell && Ends(first.size)) {
            rest_.remove_prefix(first.size);
            Put(first, true, true);
            return true;
        }
        // Whole columns A:B and whole rows 1:2.
        if (cell || first.size + 1 >= rest_.size() || rest_[first.size] != ':')
            return false;
        Side last = ReadSide(rest_.substr(first.size + 1));
        const bool columns = first.column >= 0;
        if (last.size == 0 || (last.column >= 0) != columns || (last.row >= 0) == columns ||
            !Ends(first.size + 1 + last.size))
            return false;
        rest_.remove_prefix(first.size + 1 + last.size);
        Put(first, columns, !columns);
        out_ += ':';
        Put(last, columns, !columns);
        return true;
    }

    void Put(Side side, bool has_column, bool has_row) {
        if (Shift(side, rows_, columns_) && (!has_column || side.column >= 0) &&
            (!has_row || side.row >= 0))
            AppendSide(side, has_column, has_row, out_);
        else
            out_ += "#REF!";
    }

    std::string_view rest_;
    std::int32_t rows_;
    std::int32_t columns_;
    std::string& out_;
};

}  // namespace

CellPlace ParseCell(std::string_view text) {
    const Side side = ReadSide(text);
    if (side.size != text.size() || side.column < 0 || side.row < 0)
        return {};
    return {side.row, side.column};
}

CellRange ParseRange(std::string_view text) {
    const std::size_t colon = text.find(':');
    const CellPlace first = ParseCell(text.substr(0, colon));
    if (colon == std::string_view::npos)
        return {first, first};
    return {first, ParseCell(text.substr(colon + 1))};
}

void AppendShifted(std::string_view formula, std::int32_t rows, std::int32_t columns,
                   std::string& out) {
    FormulaShifter(formula, rows, columns, out).Run();
}

}  // namespace zorvane
