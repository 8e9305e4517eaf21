#include "compare/document/rtf_boxes.h"

#include <utility>

namespace zorvane {
namespace {

// Whether a box that is shown ends with a break depends on what follows.
void Show(const RichText& box, bool ended, RtfOutput& out) {
    out.Append(box);
    if (ended && !box.text.ends_with(u"\r\n"))
        out.EndParagraph(box.char_runs.back().format, box.paragraph_runs.back().format);
}

}  // namespace

void RtfBoxes::EndOpenParagraph(const CharFormat& format, const ParagraphFormat& paragraph) {
    if (!box_.AtParagraphBegin())
        box_.EndParagraph(format, paragraph);
}

void RtfBoxes::Close(const ParagraphFormat& paragraph) {
    const std::int32_t paragraphs = box_.Paragraph() - (box_.AtParagraphBegin() ? 1 : 0);
    box_.CloseParagraph(paragraph);
    if (RichText box = box_.Take(); !box.text.empty()) {
        ended_.push_back(std::move(box));
        paragraphs_ += paragraphs;
    }
}

void RtfBoxes::ShowIn(RtfOutput& out) {
    paragraphs_ = 0;
    for (const RichText& box : std::exchange(ended_, {}))
        Show(box, true, out);
}

void RtfBoxes::ShowLastIn(RtfOutput& out) {
    if (ended_.empty())
        return;
    const RichText last = std::move(ended_.back());
    ended_.pop_back();
    ShowIn(out);
    Show(last, false, out);
}

}  // namespace zorvane
