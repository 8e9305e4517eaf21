// The text boxes of an RTF document: paragraphs of their own behind the paragraph or row that
// anchors them.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/document/rich_text.h"
#include "compare/document/rtf_output.h"

namespace zorvane {

class RtfBoxes {
  public:
    /// Takes the text of the box at work, and of those inside it.
    RtfOutput& AtWork() { return box_; }
    const RtfOutput& AtWork() const { return box_; }
    /// Ends the paragraph at work, where there is one: another box begins or ended inside it.
    void EndOpenParagraph(const CharFormat& format, const ParagraphFormat& paragraph);
    /// The outermost box ends.
    void Close(const ParagraphFormat& paragraph);
    /// Paragraphs of the boxes that ended behind the paragraph at work.
    std::int32_t Paragraphs() const { return paragraphs_; }
    bool Empty() const { return ended_.empty(); }
    /// Hands them over; a paragraph of `out` has just ended.
    void ShowIn(RtfOutput& out);
    /// Likewise at the end of the document: what ends the last one ends the text.
    void ShowLastIn(RtfOutput& out);

  private:
    RtfOutput box_;
    std::vector<RichText> ended_;
    std::int32_t paragraphs_ = 0;  // in those
};

}  // namespace zorvane
