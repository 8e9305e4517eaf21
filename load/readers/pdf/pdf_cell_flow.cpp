#include "load/readers/pdf/pdf_cell_flow.h"

#include <algorithm>

namespace zorvane {

PdfCellLine CellLineOf(const std::vector<PdfCharacter>& characters,
                       const PdfSegmentLine& segments) {
    constexpr float kBlank = 0.25F;  // of the size
    PdfCellLine line;
    line.blank = kBlank * segments.front()->size;
    const PdfWord* last = nullptr;
    bool first = true;
    PdfDigitShare digits;
    for (const PdfSegment* const segment : segments) {
        line.x1 = std::max(line.x1, segment->x1);
        for (const PdfWord& word : segment->words) {
            first = first && (last == nullptr || GapBetween(*last, word) == PdfGap::None);
            if (first)
                line.first_word = word.x1 - segments.front()->x0;
            last = &word;
            digits.Add(characters, word);
        }
    }
    line.number = digits.IsNumber();
    return line;
}

PdfCellStep StepBetween(const PdfCellLine& above, const PdfCellLine& below, float edge) {
    if (above.number && below.number)
        return PdfCellStep::NewCell;
    return above.x1 + above.blank + below.first_word <= edge ? PdfCellStep::NewCell
                                                             : PdfCellStep::SameCell;
}

}  // namespace zorvane
