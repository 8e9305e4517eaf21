// One line of a page from the words of its row.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

/// The thin lines of a page by their height.
class PdfRules {
  public:
    explicit PdfRules(const PdfPage& page);
    /// Whether one runs along a word between two heights, told in font sizes from its baseline.
    /// It goes no farther than the word's segment: longer ones are borders.
    bool Cover(const PdfWord& word, const PdfSegment& segment, float high, float low) const;

  private:
    std::vector<PdfBox> rules_;
};

/// The links of a page by their place.
class PdfLinkMap {
  public:
    explicit PdfLinkMap(const PdfPage& page);
    /// The link over the middle of a word, or nothing.
    const PdfLink* At(const PdfWord& word) const;

  private:
    std::vector<const PdfLink*> links_;
    float tallest_ = 0;
};

class PdfLineBuilder {
  public:
    PdfLineBuilder(const PdfPage& page, const PdfLineOptions& options);

    /// The line of the segments of one row, which are neighbours in a region. An address that
    /// belongs behind the line `before` is put there. The gaps of a stretched line are blanks.
    PdfLine Build(const std::vector<const PdfSegment*>& segments, PdfLine* before,
                  bool stretched = false);
    /// Puts an address that is still to be told behind the last line.
    void CloseLink(PdfLine& line);

  private:
    void AddWord(const PdfSegment& segment, const PdfWord& word);
    void AddGap(const PdfWord& word);
    void PadTo(const PdfWord& word);
    void AddCharacter(const PdfCharacter& character, PdfLetter letter);
    void FollowLink(const PdfWord& word, PdfLine& line);
    void MeasureStart(const std::vector<const PdfSegment*>& segments);
    void MeasureLabel(const std::u32string& start, const PdfWord& label, const PdfWord& text);
    void SettleStyle();

    const PdfPage& page_;
    const PdfLineOptions& options_;
    PdfRules rules_;
    PdfLinkMap links_;
    float cell_ = 1;  // width of a blank where places are kept
    float margin_ = 0;
    PdfLine line_;
    bool stretched_ = false;
    float blanks_ = 0;
    std::size_t blank_count_ = 0;
    const PdfWord* left_ = nullptr;
    const PdfCharacter* last_ = nullptr;
    const PdfLink* link_ = nullptr;
};

}  // namespace zorvane
