#include <array>

#include "common/base/ascii.h"
#include "load/column_letters.h"
#include "load/readers/binary_sheets/xls_records.h"

namespace zorvane::xls {
namespace {

constexpr std::size_t kLongestTokens = 4096;
constexpr std::size_t kLongestFormula = 32'768;
// Bytes that may be moved for one formula: tokens can be made to copy their operands again and
// again.
constexpr std::size_t kMostWork = std::size_t{1} << 20;

constexpr std::array<std::string_view, 15> kOperators = {
    "+", "-", "*", "/", "^", "&", "<", "<=", "=", ">=", ">", "<>", " ", ",", ":"};

// Runs the tokens, which stand behind their operands, on a stack of texts.
class Decompiler {
  public:
    Decompiler(std::string_view tokens, std::string_view constants, const Book& book,
               CellPlace base)
        : bytes_(tokens), constants_(constants), book_(book), base_(base) {}

    bool Run(std::string& out) {
        while (!bytes_.Rest().empty()) {
            if (!Token(bytes_.U8()) || bytes_.Failed() || work_ > kMostWork)
                return false;
        }
        if (stack_.size() != 1 || stack_[0].size() > kLongestFormula)
            return false;
        out += stack_[0];
        return true;
    }

  private:
    bool Push(std::string text) {
        work_ += text.size() + 1;
        stack_.push_back(std::move(text));
        return true;
    }
    bool Pop(std::string& text) {
        if (stack_.empty())
            return false;
        text = std::move(stack_.back());
        stack_.pop_back();
        work_ += text.size();
        return true;
    }

    bool Token(std::uint8_t token) {
        if (token >= 0x03 && token <= 0x11)
            return Binary(kOperators[token - 3u]);
        if (token >= 0x20) {
            // The class of an operand is told by two bits that change nothing for a reader.
            return Operand(static_cast<std::uint8_t>((token & 0x1F) | 0x20));
        }
        std::string text;
        switch (token) {
            case 0x12:
                return Pop(text) && Push("+" + text);
            case 0x13:
                return Pop(text) && Push("-" + text);
            case 0x14:
                return Pop(text) && Push(text + "%");
            case 0x15:
                return Pop(text) && Push("(" + text + ")");
            case 0x16:
                return Push("");
            case 0x17:
                return Text();
            case 0x19:
                return Attribute();
            case 0x1C:
                return Push(std::string(ErrorName(bytes_.U8())));
            case 0x1D:
                return Push(bytes_.U8() != 0 ? "TRUE" : "FALSE");
            case 0x1E:
                return Push(std::to_string(bytes_.U16()));
            case 0x1F:
                AppendGeneral(bytes_.Double(), text);
                return Push(std::move(text));
            default:
                return false;
        }
    }

    bool Binary(std::string_view sign) {
        std::string right;
        std::string left;
        if (!Pop(right) || !Pop(left))
            return false;
        left += sign;
        left += right;
        return Push(std::move(left));
    }

    bool Text() {
        std::string inside;
        AppendText(bytes_, bytes_.U8(), book_, inside);
        return Push(Quoted(inside));
    }

    static std::string Quoted(std::string_view inside) {
        std::string text = "\"";
        for (const char character : inside)
            text.append(character == '"' ? 2 : 1, character);
        return text + "\"";
    }

    // The values of a constant array stand behind all tokens.
    bool Array() {
        bytes_.View(7);
        const std::size_t columns = constants_.U8();
        const std::size_t rows = constants_.U16();
        // An older book counts them, with 0 for 256; a later one gives the last.
        const std::size_t width = book_.biff8 ? columns + 1 : columns == 0 ? 256 : columns;
        const std::size_t height = book_.biff8 ? rows + 1 : rows;
        std::string text = "{";
        for (std::size_t i = 0; i < width * height && !constants_.Failed(); ++i) {
            if (i > 0)
                text += i % width == 0 ? ';' : ',';
            AppendConstant(text);
        }
        return !constants_.Failed() && Push(text + "}");
    }

    void AppendConstant(std::string& text) {
        const std::uint8_t kind = constants_.U8();
        if (kind == 0x01)
            return AppendGeneral(constants_.Double(), text);
        if (kind == 0x02) {
            std::string inside;
            AppendText(constants_, book_.biff8 ? constants_.U16() : constants_.U8(), book_, inside);
            text += Quoted(inside);
            return;
        }
        const std::uint8_t value = constants_.U8();
        constants_.View(7);
        if (kind == 0x04)
            text += value != 0 ? "TRUE" : "FALSE";
        else if (kind == 0x10)
            text += ErrorName(value);
    }

    bool Attribute() {
        const std::uint8_t flags = bytes_.U8();
        const std::size_t data = bytes_.U16();
        if ((flags & 0x04) != 0)  // the jumps of CHOOSE
            bytes_.View(2 * (data + 1));
        std::string text;
        if ((flags & 0x10) != 0)
            return Pop(text) && Push("SUM(" + text + ")");
        return true;
    }

    bool Operand(std::uint8_t token) {
        switch (token) {
            case 0x20:
                return Array();
            case 0x21: {
                const std::uint16_t index = bytes_.U16();
                const Function function = FunctionOf(index);
                return function.arguments >= 0 &&
                       Call(function.name, static_cast<std::size_t>(function.arguments));
            }
            case 0x22:
                return VariableCall();
            case 0x23:
                return Name();
            case 0x24:
                return Push(Cell(ReadCell(false)));
            case 0x25:
                return Push(Area(false));
            case 0x2C:
                return Push(Cell(ReadCell(true)));
            case 0x2D:
                return Push(Area(true));
            case 0x26:
            case 0x27:
            case 0x28:
                bytes_.View(6);  // hints on what follows
                return true;
            case 0x29:
                bytes_.U16();
                return true;
            case 0x2A:
                bytes_.View(book_.biff8 ? 4 : 3);
                return Push("#REF!");
            case 0x2B:
                bytes_.View(book_.biff8 ? 8 : 6);
                return Push("#REF!");
            default:
                return OnSheet(token);
        }
    }

    // Operands on another sheet. Older books name it in a way that is not followed here.
    bool OnSheet(std::uint8_t token) {
        std::string text;
        if (!book_.biff8 || token < 0x3A || token > 0x3D || !SheetPrefix(bytes_.U16(), text))
            return false;
        if (token == 0x3A)
            return Push(text + Cell(ReadCell(false)));
        if (token == 0x3B)
            return Push(text + Area(false));
        bytes_.View(token == 0x3C ? 4 : 8);
        return Push(text + "#REF!");
    }

    bool SheetPrefix(std::size_t index, std::string& text) const {
        if (index >= book_.references.size())
            return false;
        const Book::SheetReference& reference = book_.references[index];
        const auto count = static_cast<std::int32_t>(book_.sheet_names.size());
        if (reference.first < 0 || reference.last < 0 || reference.first >= count ||
            reference.last >= count)
            return false;
        std::string names = book_.sheet_names[static_cast<std::size_t>(reference.first)];
        if (reference.last != reference.first)
            names += ":" + book_.sheet_names[static_cast<std::size_t>(reference.last)];
        const bool plain = names.find_first_of(" '-!()[],;+&{}\"#$%=<>") == std::string::npos &&
                           !IsAsciiDigit(names[0]);
        if (plain) {
            text = names + "!";
            return true;
        }
        text = "'";
        for (const char character : names)
            text.append(character == '\'' ? 2 : 1, character);
        text += "'!";
        return true;
    }

    bool Name() {
        const std::size_t index = bytes_.U16();
        bytes_.View(book_.biff8 ? 2 : 12);
        if (index == 0 || index > book_.names.size() || book_.names[index - 1].empty())
            return false;
        return Push(book_.names[index - 1]);
    }

    bool VariableCall() {
        constexpr std::uint16_t kNamed = 255;  // the first operand is the function's name
        std::size_t count = bytes_.U8() & 0x7Fu;
        const auto index = static_cast<std::uint16_t>(bytes_.U16() & 0x7FFF);
        if (index != kNamed) {
            const Function function = FunctionOf(index);
            return !function.name.empty() && Call(function.name, count);
        }
        if (count == 0 || count > stack_.size())
            return false;
        --count;
        const std::string name = stack_[stack_.size() - count - 1];
        std::string text;
        return Call(name, count) && Pop(text) && Drop() && Push(std::move(text));
    }

    bool Drop() {
        std::string name;
        return Pop(name);
    }

    bool Call(std::string_view name, std::size_t count) {
        if (count > stack_.size())
            return false;
        std::string text(name);
        text += '(';
        for (std::size_t i = stack_.size() - count; i < stack_.size(); ++i) {
            if (i > stack_.size() - count)
                text += ',';
            text += stack_[i];
        }
        text += ')';
        stack_.resize(stack_.size() - count);
        return Push(std::move(text));
    }

    struct Place {
        std::int32_t row = 0;
        std::int32_t column = 0;
        bool row_relative = false;
        bool column_relative = false;
    };

    // `word` is the row in old books, the column in later ones; its upper bits tell what moves.
    Place MakePlace(std::uint16_t row, std::uint16_t column, bool offsets) const {
        const std::uint16_t word = book_.biff8 ? column : row;
        Place place;
        place.row_relative = (word & 0x8000) != 0;
        place.column_relative = (word & 0x4000) != 0;
        place.row = book_.biff8 ? row : row & 0x3FFF;
        place.column = column & 0xFF;
        const std::int32_t rows = book_.biff8 ? 0x10000 : 0x4000;
        if (offsets && place.row_relative)
            place.row = (place.row + base_.row) % rows;
        if (offsets && place.column_relative)
            place.column = (place.column + base_.column) & 0xFF;
        return place;
    }

    Place ReadCell(bool offsets) {
        const std::uint16_t row = bytes_.U16();
        const std::uint16_t column = book_.biff8 ? bytes_.U16() : bytes_.U8();
        return MakePlace(row, column, offsets);
    }

    static std::string Cell(const Place& place) {
        std::string text = place.column_relative ? "" : "$";
        AppendColumn(place.column, text);
        text += place.row_relative ? "" : "$";
        return text + std::to_string(place.row + 1);
    }

    std::string Area(bool offsets) {
        const std::uint16_t first_row = bytes_.U16();
        const std::uint16_t last_row = bytes_.U16();
        const std::uint16_t first_column = book_.biff8 ? bytes_.U16() : bytes_.U8();
        const std::uint16_t last_column = book_.biff8 ? bytes_.U16() : bytes_.U8();
        const Place first = MakePlace(first_row, first_column, offsets);
        const Place last = MakePlace(last_row, last_column, offsets);
        const std::int32_t end = book_.biff8 ? 0xFFFF : 0x3FFF;
        std::string text;
        if (!offsets && first.row == 0 && last.row == end) {
            text = first.column_relative ? "" : "$";
            AppendColumn(first.column, text);
            text += last.column_relative ? ":" : ":$";
            AppendColumn(last.column, text);
            return text;
        }
        if (!offsets && first.column == 0 && last.column == 0xFF) {
            text = first.row_relative ? "" : "$";
            text += std::to_string(first.row + 1);
            text += last.row_relative ? ":" : ":$";
            return text + std::to_string(last.row + 1);
        }
        return Cell(first) + ":" + Cell(last);
    }

    Bytes bytes_;
    Bytes constants_;
    const Book& book_;
    CellPlace base_;
    std::vector<std::string> stack_;
    std::size_t work_ = 0;
};

}  // namespace

bool AppendFormula(std::string_view tokens, std::string_view constants, const Book& book,
                   CellPlace base, std::string& out) {
    return tokens.size() <= kLongestTokens && Decompiler(tokens, constants, book, base).Run(out);
}

}  // namespace zorvane::xls
