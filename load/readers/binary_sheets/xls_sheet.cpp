#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "load/readers/binary_sheets/xls_records.h"
#include "load/readers/sheets/merged_cells.h"
#include "load/readers/sheets/row_builder.h"

namespace zorvane::xls {
namespace {

constexpr std::size_t kMostCells = std::size_t{12} << 20;
constexpr std::int32_t kRowsBetweenProgress = 2048;

// A cell by its record; `part` counts the numbers of a record that holds several.
struct CellRecord {
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    std::uint32_t offset = 0;
    std::uint16_t part = 0;
};

class SheetReader {
  public:
    SheetReader(const Book& book, const SheetOptions& options, const RowSink& rows,
                ReadMonitor& monitor)
        : book_(book), options_(options), builder_(rows), monitor_(monitor) {}

    ReadEnd Run(std::size_t offset) {
        if (ReadEnd end = Collect(offset); !end.ok())
            return end;
        const auto before = [](const CellRecord& one, const CellRecord& other) {
            return one.row != other.row ? one.row < other.row : one.column < other.column;
        };
        if (!std::is_sorted(cells_.begin(), cells_.end(), before))
            std::stable_sort(cells_.begin(), cells_.end(), before);
        return Emit();
    }

  private:
    // Notes where the cells stand; merged ranges and shared formulas come behind them.
    ReadEnd Collect(std::size_t offset) {
        Record record;
        int depth = 0;
        for (std::size_t at = offset; ReadRecord(book_.stream, at, record); at = record.end) {
            if (record.id == kBof) {
                ++depth;  // charts inside of the sheet have their own
            } else if (record.id == kEof) {
                if (--depth <= 0)
                    return ReadEnd::Ok();
            } else if (depth == 1) {
                Take(record);
                if (cells_.size() > kMostCells)
                    return ReadEnd::Fault(ReadError::TooLarge, "too many cells");
            }
        }
        return ReadEnd::Fault(ReadError::Damaged, "the sheet ends too early");
    }

    void Take(const Record& record) {
        Bytes bytes(record.data);
        switch (record.id) {
            case kLabelSst:
            case kLabel:
            case kRString:
            case kNumber:
            case kRk:
            case kBoolErr:
            case kFormula: {
                const std::uint16_t row = bytes.U16();
                AddCell(row, bytes.U16(), record, 0);
                break;
            }
            case kMulRk: {
                const std::uint16_t row = bytes.U16();
                const std::uint16_t column = bytes.U16();
                const std::size_t count = bytes.Rest().size() / 6;
                for (std::size_t i = 0; i < count && column + i < 0x100; ++i)
                    AddCell(row, static_cast<std::uint16_t>(column + i), record,
                            static_cast<std::uint16_t>(i));
                break;
            }
            case kMergedCells:
                TakeMerges(bytes);
                break;
            case kSharedFormula:
            case kArray:
                TakeShared(record);
                break;
            default:
                break;
        }
    }

    void AddCell(std::uint16_t row, std::uint16_t column, const Record& record,
                 std::uint16_t part) {
        cells_.push_back({row, column, static_cast<std::uint32_t>(record.begin), part});
        last_ = {row, column};
    }

    void TakeMerges(Bytes& bytes) {
        for (std::uint16_t count = bytes.U16(); count > 0 && !bytes.Failed(); --count) {
            CellRange range;
            range.first.row = bytes.U16();
            range.last.row = bytes.U16();
            range.first.column = bytes.U16();
            range.last.column = bytes.U16();
            if (!bytes.Failed())
                merges_.Add(range);
        }
    }

    // Stands behind the cell that its other cells name.
    void TakeShared(const Record& record) {
        if (options_.formulas)
            shared_[Key(last_)] = static_cast<std::uint32_t>(record.begin);
    }
    static std::uint32_t Key(CellPlace place) {
        return static_cast<std::uint32_t>(place.row) << 16 |
               (static_cast<std::uint32_t>(place.column) & 0xFFFF);
    }

    ReadEnd Emit() {
        std::int32_t row = -1;
        std::int32_t rows_seen = 0;
        for (const CellRecord& cell : cells_) {
            if (cell.row != row) {
                if (!builder_.EndRow())
                    return builder_.End();
                row = cell.row;
                builder_.BeginRow(row);
                if (++rows_seen % kRowsBetweenProgress == 0 &&
                    !monitor_.Progress(row, cells_.back().row))
                    return ReadEnd::Fault(ReadError::Cancelled);
            }
            if (!merges_.Covers(cell.row, cell.column)) {
                AppendCell(cell, builder_.Text());
                builder_.EndCell(cell.column);
            }
        }
        if (!builder_.EndRow())
            return builder_.End();
        return ReadEnd::Ok();
    }

    void AppendCell(const CellRecord& cell, std::string& out) {
        Record record;
        if (!ReadRecord(book_.stream, cell.offset, record))
            return;
        Bytes bytes(record.data);
        bytes.View(4);
        if (record.id == kMulRk)
            bytes.View(std::size_t{6} * cell.part);
        const SheetFormat& format = book_.shared.styles.Of(bytes.U16());
        switch (record.id) {
            case kLabelSst:
                format.format.ApplyText(book_.shared.texts.At(bytes.U32()), out);
                break;
            case kLabel:
            case kRString: {
                std::string text;
                AppendText(bytes, bytes.U16(), book_, text);
                format.format.ApplyText(text, out);
                break;
            }
            case kNumber:
                AppendNumber(bytes.Double(), format, out);
                break;
            case kRk:
            case kMulRk:
                AppendNumber(DecodeRk(bytes.U32()), format, out);
                break;
            case kBoolErr: {
                const std::uint8_t value = bytes.U8();
                AppendTruth(value, bytes.U8() != 0, out);
                break;
            }
            default:
                AppendFormulaCell(record, bytes, format, out);
                break;
        }
    }

    void AppendNumber(double value, const SheetFormat& format, std::string& out) const {
        format.format.Apply(value, book_.shared.date_1904, out);
    }
    static void AppendTruth(std::uint8_t value, bool error, std::string& out) {
        if (error)
            out += ErrorName(value);
        else
            out += value != 0 ? "TRUE" : "FALSE";
    }

    void AppendFormulaCell(const Record& record, Bytes& bytes, const SheetFormat& format,
                           std::string& out) {
        const std::string_view result = bytes.View(8);
        bytes.View(6);
        const std::string_view tokens = bytes.View(bytes.U16());
        if (options_.formulas) {
            std::string text;
            Bytes place(record.data);
            const std::int32_t row = place.U16();
            if (Formula(tokens, bytes.Rest(), {row, place.U16()}, text)) {
                out += text;
                if (!options_.values_too)
                    return;
                out += ' ';
            }
        }
        AppendResult(record, result, format, out);
    }

    bool Formula(std::string_view tokens, std::string_view constants, CellPlace cell,
                 std::string& text) const {
        Bytes bytes(tokens);
        if (bytes.U8() != 0x01) {
            text = "=";
            return zorvane::xls::AppendFormula(tokens, constants, book_, cell, text);
        }
        // The cell names another one, behind which the formula stands.
        const std::int32_t row = bytes.U16();
        const auto found = shared_.find(Key({row, bytes.U16()}));
        Record record;
        if (found == shared_.end() || !ReadRecord(book_.stream, found->second, record))
            return false;
        const bool array = record.id == kArray;
        Bytes formula(record.data);
        formula.View(array ? 12 : 8);
        const std::string_view inner = formula.View(formula.U16());
        text = array ? "{=" : "=";
        if (!zorvane::xls::AppendFormula(inner, formula.Rest(), book_, cell, text))
            return false;
        text += array ? "}" : "";
        return true;
    }

    void AppendResult(const Record& record, std::string_view result, const SheetFormat& format,
                      std::string& out) const {
        if (result.size() < 8)
            return;
        if (!result.ends_with("\xFF\xFF")) {
            AppendNumber(Bytes(result).Double(), format, out);
            return;
        }
        const auto value = static_cast<std::uint8_t>(result[2]);
        if (result[0] == 0)
            AppendResultText(record, format, out);
        else if (result[0] == 1 || result[0] == 2)
            AppendTruth(value, result[0] == 2, out);
    }

    // A text stands in a record of its own, behind that of a shared formula if there is one.
    void AppendResultText(const Record& formula, const SheetFormat& format,
                          std::string& out) const {
        Record record;
        std::size_t at = formula.end;
        for (int tries = 0; tries < 4 && ReadRecord(book_.stream, at, record); ++tries) {
            at = record.end;
            if (record.id == kString) {
                Bytes bytes(record.data);
                std::string text;
                AppendText(bytes, bytes.U16(), book_, text);
                format.format.ApplyText(text, out);
                return;
            }
            if (record.id != kSharedFormula && record.id != kArray && record.id != kTable)
                return;
        }
    }

    const Book& book_;
    const SheetOptions& options_;
    RowBuilder builder_;
    ReadMonitor& monitor_;
    MergedCells merges_;
    std::vector<CellRecord> cells_;
    CellPlace last_;
    std::unordered_map<std::uint32_t, std::uint32_t> shared_;
};

}  // namespace

ReadEnd ReadXlsSheet(const Book& book, std::size_t offset, const SheetOptions& options,
                     const RowSink& rows, ReadMonitor& monitor) {
    return SheetReader(book, options, rows, monitor).Run(offset);
}

}  // namespace zorvane::xls
