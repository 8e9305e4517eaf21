#include <algorithm>
#include <unordered_map>

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/xlsx_parts.h"
#include "load/readers/sheets/array_formulas.h"
#include "load/readers/sheets/iso_date.h"
#include "load/readers/sheets/merged_cells.h"
#include "load/readers/sheets/row_builder.h"

namespace zorvane {
namespace {

using Token = XmlScanner::Token;

constexpr std::size_t kLongestFormula = 32'768;
constexpr std::size_t kMostSharedFormulas = 65'536;
constexpr std::int32_t kRowsBetweenProgress = 2048;

void AddMerge(std::string_view attributes, MergedCells& merges) {
    while (true) {
        const XmlAttribute attribute = NextAttribute(attributes);
        if (attribute.name.empty())
            return;
        if (attribute.name == "ref")
            merges.Add(ParseRange(attribute.value));
    }
}

// True when a tag's name ends its prefix here: the same letters may stand in a cell's text.
bool InTag(std::string_view before) {
    const std::size_t at = before.find_last_of("<> \n");
    return at != std::string_view::npos && before[at] == '<' &&
           (at + 1 == before.size() || before.back() == ':');
}

class SheetReader {
  public:
    SheetReader(PartStream& part, MergedCells& merges, const XlsxBook& book,
                const SheetOptions& options, const RowSink& rows, ReadMonitor& monitor)
        : scanner_(part),
          merges_(merges),
          book_(book),
          options_(options),
          builder_(rows),
          monitor_(monitor) {}

    ReadEnd Run() {
        const auto take = [&](Token token) {
            if (token != Token::Text)
                return token == Token::Start ? Start() : End();
            TakeText();
            return true;
        };
        return scanner_.ForTokens(take, [&] { return WhyStopped(); });
    }

  private:
    enum class Into : std::uint8_t { Nothing, Value, OwnText, Formula };
    struct SharedFormula {
        CellPlace place;
        std::string text;
    };

    ReadEnd WhyStopped() const {
        if (stopped_)
            return ReadEnd::Fault(ReadError::Cancelled);
        if (outside_)
            return ReadEnd::Fault(ReadError::TooLarge, "the sheet has more cells than any can");
        return builder_.End();
    }

    void TakeText() {
        if (into_ == Into::Value && phonetic_ == 0)
            scanner_.AppendText(value_);
        else if (into_ == Into::OwnText && phonetic_ == 0)
            scanner_.AppendText(own_text_);
        else if (into_ == Into::Formula)
            scanner_.AppendText(formula_);
    }

    // False ends the reading.
    bool Start() {
        const std::string_view name = scanner_.Name();
        const bool empty = scanner_.SelfClosing();
        if (name == "c") {
            BeginCell();
            outside_ = column_ >= kMaxSheetColumns;
            return !outside_ && (!empty || EndCell());
        }
        if (name == "v" || name == "t")
            into_ = empty ? Into::Nothing : name == "v" ? Into::Value : Into::OwnText;
        else if (name == "f")
            BeginFormula();
        else if (name == "row")
            return BeginRow();
        else if (name == "rPh" && !empty)
            ++phonetic_;
        return true;
    }

    bool End() {
        const std::string_view name = scanner_.Name();
        if (name == "c")
            return EndCell();
        if (name == "row")
            return builder_.EndRow();
        if (name == "rPh")
            --phonetic_;
        into_ = Into::Nothing;
        if (name != "sheetData")
            return true;
        builder_.EndRow();  // one that was not closed
        return false;
    }

    bool BeginRow() {
        const std::int32_t told = NumberOf(scanner_.Attribute("r"), 0);
        row_ = told > 0 ? told - 1 : row_ + 1;
        column_ = -1;
        if (!builder_.EndRow())  // a row that was not closed
            return false;
        builder_.BeginRow(row_);
        row_ = std::max(row_, builder_.Row());
        outside_ = row_ >= kMaxSheetRows;
        if (++rows_seen_ % kRowsBetweenProgress == 0)
            stopped_ = !monitor_.Progress(row_, std::max(row_, 1));
        return !stopped_ && !outside_;
    }

    void BeginCell() {
        ++column_;
        style_ = 0;
        type_ = 'n';
        own_type_ = false;
        value_.clear();
        own_text_.clear();
        has_formula_ = false;
        phonetic_ = 0;
        std::string_view rest = scanner_.Attributes();
        while (true) {
            const XmlAttribute attribute = NextAttribute(rest);
            if (attribute.name.empty())
                return;
            if (attribute.name == "r") {
                const CellPlace place = ParseCell(attribute.value);
                column_ = place.column >= 0 ? place.column : column_;
            } else if (attribute.name == "s") {
                style_ = static_cast<std::uint32_t>(NumberOf(attribute.value, 0));
            } else if (attribute.name == "t") {
                type_ = TypeOf(attribute.value);
                own_type_ = attribute.value == "inlineStr";
            }
        }
    }

    // n number, s shared text, t own text, b truth, e error, d date.
    static char TypeOf(std::string_view name) {
        if (name == "inlineStr" || name == "str")
            return 't';
        return name.empty() ? 'n' : name[0];
    }

    void BeginFormula() {
        into_ = scanner_.SelfClosing() ? Into::Nothing : Into::Formula;
        has_formula_ = true;
        formula_.clear();
        formula_type_.clear();
        shared_index_ = -1;
        if (!options_.formulas)
            into_ = Into::Nothing;
        else
            ReadFormulaAttributes();
    }

    void ReadFormulaAttributes() {
        formula_type_ = scanner_.Attribute("t");
        shared_index_ = NumberOf(scanner_.Attribute("si"), -1);
        if (formula_type_ == "array")
            formula_range_ = ParseRange(scanner_.Attribute("ref"));
    }

    bool EndCell() {
        into_ = Into::Nothing;
        // Some programs write a value beside a cell's own text; it is the same text again.
        if (!own_text_.empty() && (own_type_ || value_.empty()))
            value_.swap(own_text_);
        if (merges_.Covers(row_, column_))
            return true;
        if (options_.formulas && AppendFormula()) {
            std::string& out = builder_.Text();
            if (options_.values_too && !value_.empty()) {
                out += ' ';
                AppendValue(out);
            }
            builder_.EndCell(column_);
            return true;
        }
        const SheetFormat& format = book_.styles.Of(style_);
        if (type_ == 's' && !format.changes_text) {
            builder_.AddCell(column_, SharedText());
            return true;
        }
        if (!value_.empty()) {
            AppendValue(builder_.Text());
            builder_.EndCell(column_);
        }
        return true;
    }

    std::string_view SharedText() const {
        const std::int32_t index = NumberOf(value_, -1);
        return index < 0 ? std::string_view() : book_.texts.At(static_cast<std::size_t>(index));
    }

    void AppendValue(std::string& out) {
        const SheetFormat& format = book_.styles.Of(style_);
        switch (type_) {
            case 's':
                format.format.ApplyText(SharedText(), out);
                break;
            case 't':
                ReplaceEscapes(value_, 0);
                format.format.ApplyText(value_, out);
                break;
            case 'b':
                out += value_ == "1" || value_ == "true" ? "TRUE" : "FALSE";
                break;
            case 'e':
                out += value_;
                break;
            case 'd': {
                double serial = 0;
                if (format.format.IsDate() && ParseIsoDate(value_, book_.date_1904, serial))
                    format.format.Apply(serial, book_.date_1904, out);
                else
                    out += value_;
                break;
            }
            default:
                if (!AppendFormatted(value_, format, book_.date_1904, out))
                    out += value_;
                break;
        }
    }

    // False when the cell has none.
    bool AppendFormula() {
        std::string& out = builder_.Text();
        if (!has_formula_) {
            const std::string* const array = arrays_.At(row_, column_);
            if (array != nullptr)
                out += *array;
            return array != nullptr;
        }
        if (formula_.size() > kLongestFormula)
            formula_.resize(kLongestFormula);
        if (formula_type_ == "array") {
            const std::string text = "{=" + formula_ + "}";
            out += text;
            arrays_.Add(formula_range_, text);
            return true;
        }
        if (formula_type_ == "shared")
            return AppendSharedFormula(out);
        if (formula_.empty())
            return false;
        out += '=';
        out += formula_;
        return true;
    }

    bool AppendSharedFormula(std::string& out) {
        if (!formula_.empty()) {
            if (shared_.size() < kMostSharedFormulas)
                shared_[shared_index_] = {{row_, column_}, formula_};
            out += '=';
            out += formula_;
            return true;
        }
        const auto master = shared_.find(shared_index_);
        if (master == shared_.end())
            return false;
        out += '=';
        AppendShifted(master->second.text, row_ - master->second.place.row,
                      column_ - master->second.place.column, out);
        return true;
    }

    XmlScanner scanner_;
    MergedCells& merges_;
    const XlsxBook& book_;
    const SheetOptions& options_;
    RowBuilder builder_;
    ReadMonitor& monitor_;
    Into into_ = Into::Nothing;
    std::int32_t row_ = -1;
    std::int32_t column_ = -1;
    std::int32_t rows_seen_ = 0;
    bool stopped_ = false;
    bool outside_ = false;  // a row or a column that no sheet has
    std::uint32_t style_ = 0;
    char type_ = 'n';
    int phonetic_ = 0;
    bool own_type_ = false;  // its text stands in the cell
    std::string value_;
    std::string own_text_;
    bool has_formula_ = false;
    std::string formula_;
    std::string formula_type_;
    std::int32_t shared_index_ = -1;
    CellRange formula_range_;
    std::unordered_map<std::int32_t, SharedFormula> shared_;
    ArrayFormulas arrays_;
};

}  // namespace

// Finds them by their tags alone.
void ReadXlsxMerges(PartStream& part, MergedCells& merges) {
    constexpr std::size_t kChunk = std::size_t{256} << 10;
    constexpr std::size_t kBefore = 16;  // a prefix
    constexpr std::size_t kTag = 256;    // more than such a tag takes
    constexpr std::string_view kName = "mergeCell ";
    std::string buffer(kChunk + kBefore + kTag, '\0');
    std::size_t kept = kBefore;
    while (true) {
        const std::size_t got = part.Read(buffer.data() + kept, kChunk);
        const std::string_view bytes(buffer.data(), kept + got);
        // What begins near the end is looked at again with the next chunk.
        const std::size_t tail = got == 0 ? 0 : std::min(kTag, bytes.size() - kBefore);
        const std::size_t safe = bytes.size() - tail;
        std::size_t used = kBefore;
        for (std::size_t at = bytes.find(kName, used); at < safe; at = bytes.find(kName, used)) {
            used = at + kName.size();
            const std::string_view behind = bytes.substr(used);
            if (InTag(bytes.substr(at - kBefore, kBefore)))
                AddMerge(behind.substr(0, behind.find('>')), merges);
        }
        if (got == 0)
            return;
        kept = bytes.size() - std::max(used, safe) + kBefore;
        std::copy(bytes.end() - static_cast<std::ptrdiff_t>(kept), bytes.end(), buffer.begin());
    }
}

ReadEnd ReadXlsxSheet(PartStream& part, MergedCells& merges, const XlsxBook& book,
                      const SheetOptions& options, const RowSink& rows, ReadMonitor& monitor) {
    return SheetReader(part, merges, book, options, rows, monitor).Run();
}

}  // namespace zorvane
