// Characters to words, words to rows: the first steps of laying out a page.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_page.h"

namespace zorvane {

/// Characters that were drawn one behind the other without a gap: a word or a piece of one.
/// `first` and `count` are indices into the page's characters; `first_letter` tells them apart
/// from a piece's neighbours on the page.
struct PdfWord {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;
    std::uint32_t number = 0;  ///< in the order of drawing
    bool blank_before = false;
    bool blank_after = false;
    bool jump_before = false;  ///< no blank before it on a page that draws its blanks
};

/// Words on one baseline that no wide gap parts. Small raised or lowered ones belong to it.
struct PdfSegment {
    std::vector<PdfWord> words;  ///< from left to right
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;
    std::uint32_t row = 0;  ///< equal for segments of one row; ascends down the page

    float Top() const { return baseline - 0.75F * size; }
    float Bottom() const { return baseline + 0.25F * size; }
};

/// How two neighbours in a row are told apart.
enum class PdfGap : std::uint8_t { None, Blank, Wide };
PdfGap GapBetween(const PdfWord& left, const PdfWord& right);

bool IsPdfBlank(char32_t letter);

/// The words of one direction, in the order of drawing. Hidden characters are left out as told.
struct PdfHiddenText {
    bool drop_invisible_mode = true;
    bool drop_unseen = true;
};
std::vector<PdfWord> WordsOf(const std::vector<PdfCharacter>& characters, PdfDirection direction,
                             const PdfHiddenText& hidden);

/// The segments of the rows, from top to bottom and from left to right. A word drawn twice at one
/// place, as for a bold look, is there once.
std::vector<PdfSegment> SegmentsOf(const std::vector<PdfCharacter>& characters,
                                   std::vector<PdfWord> words);

}  // namespace zorvane
