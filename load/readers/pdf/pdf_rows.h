// Characters to words, words to rows: the first steps of laying out a page.
#pragma once

#include <cstddef>
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
    bool jump_before = false;    ///< no blank before it on a page that draws its blanks
    bool gutter_before = false;  ///< a gap that stays clear over several rows
    bool leader = false;         ///< dots that lead to what stands behind them
};

inline constexpr std::uint32_t kNoPdfTable = static_cast<std::uint32_t>(-1);

/// Words on one baseline that no wide gap parts. Small raised or lowered ones belong to it.
struct PdfSegment {
    std::vector<PdfWord> words;  ///< from left to right
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;
    std::uint32_t row = 0;              ///< equal for segments of one row; ascends down the page
    std::uint32_t table = kNoPdfTable;  ///< a ruled table, which stands here as one
    float height = 0;                   ///< of that table, down from its first baseline

    float Top() const { return baseline - 0.75F * size; }
    float Bottom() const { return baseline + 0.25F * size + height; }
};

/// How two neighbours in a row are told apart.
enum class PdfGap : std::uint8_t { None, Blank, Wide };
PdfGap GapBetween(const PdfWord& left, const PdfWord& right);

bool IsPdfBlank(char32_t letter);

/// Words are a number when at least half of their letters are digits.
class PdfDigitShare {
  public:
    void Add(const std::vector<PdfCharacter>& characters, const PdfWord& word);
    bool IsNumber() const { return letters_ > 0 && digits_ * 2 >= letters_; }

  private:
    std::size_t letters_ = 0;
    std::size_t digits_ = 0;
};

/// The words of one direction, in the order of drawing. Hidden characters are left out as told.
struct PdfHiddenText {
    bool drop_invisible_mode = true;
    bool drop_unseen = true;
};
std::vector<PdfWord> WordsOf(const std::vector<PdfCharacter>& characters, PdfDirection direction,
                             const PdfHiddenText& hidden);

/// The segments of the rows, from top to bottom and from left to right. A word drawn twice at one
/// place, as for a bold look, is there once. Vertical rules part them.
std::vector<PdfSegment> SegmentsOf(const std::vector<PdfCharacter>& characters,
                                   std::vector<PdfWord> words, std::vector<PdfBox> uprights = {});

}  // namespace zorvane
