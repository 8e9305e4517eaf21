// Lines of a page with their letters in the order of reading.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "load/readers/pdf/pdf_columns.h"
#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

struct PdfLetter {
    char32_t letter = 0;
    std::uint32_t style = 0;
    float size = 0;
    Baseline baseline = Baseline::Normal;
    bool underline = false;
    bool strikeout = false;
};

/// Distances in points, in the frame of the line's direction.
struct PdfLine {
    std::vector<PdfLetter> letters;  ///< blanks between words, a tab in a wide gap
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;      ///< of most of its letters
    float smallest = 0;  ///< sizes of its letters, scripts left out
    float largest = 0;
    std::uint32_t style = 0;  ///< of most of its letters
    float region_x0 = 0;      ///< the column
    float region_x1 = 0;
    float margin_x1 = 0;       ///< on a page of one column, where its lines may end; else 0
    std::uint32_t region = 0;  ///< ascends in a document
    std::int32_t page = 0;
    float first_word = 0;         ///< width of its first word
    float blank = 0;              ///< width of its blanks
    float text_x0 = 0;            ///< where the text behind a label begins; else `x0`
    std::uint32_t label = 0;      ///< letters of what may be a number or bullet; see `SettleLabels`
    float label_gap = 0;          ///< behind it, in font sizes
    bool label_is_wide = false;   ///< whether that gap is one of the wide ones
    std::uint32_t wide_gaps = 0;  ///< behind a proven label, none is counted
    bool right_to_left = false;
    bool running = false;  ///< a head or foot of the page
    PdfDirection direction = PdfDirection::Right;
};

enum class PdfDocumentType : std::uint8_t { OneColumn = 1, ManyColumns = 2, Pleading = 3 };

struct PdfLineOptions {
    PdfDocumentType document_type = PdfDocumentType::OneColumn;
    PdfHiddenText hidden;
    bool by_layout = false;        ///< places kept by blanks, rows of the whole page as lines
    bool connect_hyphens = false;  ///< within the cells of a table
    bool links = false;            ///< addresses behind the texts
};

/// Appends the lines of a page. The main direction comes first, then the others.
void AppendLines(const PdfPage& page, std::int32_t page_number, const PdfLineOptions& options,
                 std::vector<PdfLine>& lines);

}  // namespace zorvane
