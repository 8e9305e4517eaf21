// Inside of the XLS reader: records, their texts, and what all sheets share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/text_encoding.h"
#include "load/readers/ooxml/xlsx_parts.h"
#include "load/readers/sheets/cell_reference.h"

namespace zorvane::xls {

enum RecordId : std::uint16_t {
    kFormula = 0x0006,
    kEof = 0x000A,
    kExternSheet = 0x0017,
    kName = 0x0018,
    kDateMode = 0x0022,
    kFilePass = 0x002F,
    kContinue = 0x003C,
    kCodePage = 0x0042,
    kBoundSheet = 0x0085,
    kMulRk = 0x00BD,
    kRString = 0x00D6,
    kXf = 0x00E0,
    kMergedCells = 0x00E5,
    kSst = 0x00FC,
    kLabelSst = 0x00FD,
    kSupBook = 0x01AE,
    kNumber = 0x0203,
    kLabel = 0x0204,
    kBoolErr = 0x0205,
    kString = 0x0207,
    kArray = 0x0221,
    kTable = 0x0236,
    kRk = 0x027E,
    kFormat = 0x041E,
    kSharedFormula = 0x04BC,
    kBof = 0x0809,
};

/// Numbers off the front of some bytes; zeros behind their end, with `Failed` true from then on.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : rest_(bytes) {}
    std::uint8_t U8() { return static_cast<std::uint8_t>(Take(1)); }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Take(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Take(4)); }
    double Double();
    std::string_view View(std::size_t count);
    std::string_view Rest() const { return rest_; }
    bool Failed() const { return failed_; }

  private:
    std::uint64_t Take(std::size_t count);
    std::string_view rest_;
    bool failed_ = false;
};

struct Record {
    std::uint16_t id = 0;
    std::string_view data;
    std::size_t begin = 0;  ///< in the stream
    std::size_t end = 0;
};

/// The record at an offset; false when none is whole there.
bool ReadRecord(std::string_view stream, std::size_t at, Record& record);

/// What the globals of a book tell.
struct Book {
    std::string_view stream;
    bool biff8 = true;
    CodePage code_page;
    XlsxBook shared;  ///< styles, texts, date system
    std::vector<std::string> sheet_names;
    std::vector<std::string> names;  ///< defined ones, in order
    struct SheetReference {
        std::int32_t first = -1;  ///< index of a sheet, -1 for another book's or a deleted one
        std::int32_t last = -1;
    };
    std::vector<SheetReference> references;
};

/// Characters of a text: of one byte each, or UTF-16. Those of one byte are Latin-1 in BIFF8 and of
/// the code page before.
void AppendWide(std::string_view bytes, std::string& out);
void AppendNarrow(std::string_view bytes, const Book& book, std::string& out);
/// A text with a flag byte in front (BIFF8) or plain bytes (BIFF5), of `count` characters.
void AppendText(Bytes& bytes, std::size_t count, const Book& book, std::string& out);

/// The table of shared texts, which goes on over CONTINUE records. `at` is behind the first one.
ReadEnd ReadTexts(const Book& book, const Record& first, SharedTexts& texts);

std::string_view ErrorName(std::uint8_t code);
double DecodeRk(std::uint32_t rk);

/// Appends the formula without its "=". False when a token of it is not known here. `constants`
/// stand behind the tokens. `base` is the cell for which relative tokens of a shared formula are
/// read.
bool AppendFormula(std::string_view tokens, std::string_view constants, const Book& book,
                   CellPlace base, std::string& out);

/// Name and number of arguments of a built-in function; -1 when the token tells it.
struct Function {
    std::string_view name;
    std::int32_t arguments = -1;
};
/// An empty name when the function is not known.
Function FunctionOf(std::uint16_t index);

ReadEnd ReadXlsSheet(const Book& book, std::size_t offset, const SheetOptions& options,
                     const RowSink& rows, ReadMonitor& monitor);

}  // namespace zorvane::xls
