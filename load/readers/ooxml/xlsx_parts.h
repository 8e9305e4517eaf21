// Inside of the XLSX reader: what its sheets share, and the reading of one sheet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "load/readers/container/package.h"
#include "load/readers/container/xml_scanner.h"
#include "load/readers/sheets/merged_cells.h"
#include "load/readers/sheets/number_format.h"
#include "load/readers/sheets/workbook.h"

namespace zorvane {

/// A number format with what decides about short ways around it.
struct SheetFormat {
    explicit SheetFormat(std::string_view code);
    NumberFormat format;
    bool general = false;       ///< short plain numbers show as they are written
    bool changes_text = false;  ///< has a section for text that adds something
};

/// Formats by the number that cells name. 0 where a cell names none.
struct SheetStyles {
    std::vector<SheetFormat> formats;
    std::vector<std::uint32_t> by_style;
    const SheetFormat& Of(std::uint32_t style) const;
    static SheetStyles Plain();
};

/// All texts that cells share, one behind the other.
struct SharedTexts {
    std::string text;
    std::vector<std::uint32_t> ends;
    std::string_view At(std::size_t index) const {
        if (index >= ends.size())
            return {};
        const std::size_t begin = index == 0 ? 0 : ends[index - 1];
        return {text.data() + begin, ends[index] - begin};
    }
};

struct XlsxBook {
    SheetStyles styles = SheetStyles::Plain();
    SharedTexts texts;
    bool date_1904 = false;
};

ReadEnd ReadXlsxStyles(PartStream& part, SheetStyles& styles);
ReadEnd ReadXlsxTexts(PartStream& part, SharedTexts& texts);
/// The merged ranges of a sheet, which stand behind its cells: the part is read to its end.
void ReadXlsxMerges(PartStream& part, MergedCells& merges);
ReadEnd ReadXlsxSheet(PartStream& part, MergedCells& merges, const XlsxBook& book,
                      const SheetOptions& options, const RowSink& rows, ReadMonitor& monitor);

/// Replaces _x000A_ and the like, in place from `from` on.
void ReplaceEscapes(std::string& text, std::size_t from);
/// A number as it stands in a file, by its format. False when it is none.
bool AppendFormatted(std::string_view number, const SheetFormat& format, bool date_1904,
                     std::string& out);

std::unique_ptr<Workbook> OpenXlsx(std::unique_ptr<Package> package, ReadEnd& end);

}  // namespace zorvane
