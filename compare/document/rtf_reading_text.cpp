// The text that comes of a reading: characters, paragraphs, notes and boxes.
#include <algorithm>
#include <utility>

#include "compare/document/rtf_reading.h"

namespace zorvane {

// The note of text that is not seen is not seen either, whatever it says of itself.
void RtfReading::OpenNote() {
    if (!Seen()) {
        SkipUnseenGroup();
    } else if (state_.destination != Destination::Footnote) {
        Out().OpenNote();
        state_.destination = Destination::Footnote;
    }
}

void RtfReading::OpenBox() {
    if (!Seen()) {
        SkipUnseenGroup();
        return;
    }
    // What is unseen in front of the box belongs to the paragraph that anchors it.
    beside_.EndParagraph(Paragraph());
    if (state_.boxes > 0)
        boxes_.EndOpenParagraph(state_.chars, state_.paragraph);
    state_.destination = Destination::Body;
    ++state_.boxes;
    state_.in_table = false;
}

void RtfReading::CloseBox(bool in_another) {
    beside_.EndParagraph(Paragraph());
    if (in_another)
        boxes_.EndOpenParagraph(state_.chars, state_.paragraph);
    else
        boxes_.Close(state_.paragraph);
}

// The number that the paragraph at work has in the text. Those of a box come behind the one
// that anchors it.
std::int32_t RtfReading::Paragraph() const {
    const std::int32_t body = out_.Paragraph();
    return state_.boxes > 0 ? body + boxes_.Paragraphs() + boxes_.AtWork().Paragraph() : body;
}

void RtfReading::EndBodyParagraph() {
    out_.EndParagraph(state_.chars, state_.paragraph);
    boxes_.ShowIn(out_);
}

void RtfReading::ShowLastBoxes(bool paragraph_open) {
    if (paragraph_open && !boxes_.Empty())
        out_.EndParagraph(state_.chars, state_.paragraph);
    boxes_.ShowLastIn(out_);
}

bool RtfReading::Seen() const {
    const bool text =
        state_.destination == Destination::Body || state_.destination == Destination::Footnote;
    return text && !state_.chars.hidden && !state_.deleted;
}

// Text of the document that is hidden or was deleted.
bool RtfReading::IsUnseenText() const {
    return state_.destination == Destination::Body || state_.destination == Destination::Footnote;
}

void RtfReading::RawText(std::string_view text) {
    group_begins_ = false;
    const std::size_t skipped = std::min(skip_left_, text.size());
    skip_left_ -= skipped;
    text.remove_prefix(skipped);
    TakeBytes(text);
}

void RtfReading::TakeBytes(std::string_view text) {
    if (state_.destination == Destination::Fonts) {
        header_.TakeFontBytes(text);
    } else if (state_.destination == Destination::Colors) {
        header_.TakeColorBytes(text);
    } else if (Seen()) {
        pending_ += text;
    } else if (IsUnseenText()) {
        const bool row = state_.chars.hidden && state_.destination == Destination::Body &&
                         text.find_first_not_of(' ') != std::string_view::npos;
        row_hides_ = row_hides_ || row;
        beside_.Unseen(text, state_.page, state_.deleted);
    }
}

// A row whose text is hidden in every cell is not seen, though the ends of its cells may be.
void RtfReading::EndRow() {
    const bool hidden = std::exchange(row_hides_, false) && Out().IsBlankParagraph();
    if (hidden) {
        beside_.EndParagraph(Paragraph());
        Out().DropParagraph();
    } else if (Seen() && !Out().AtParagraphBegin()) {
        EndParagraphOf();
    }
}

// Bytes wait until something else comes, so that both halves of a double-byte character are
// there.
void RtfReading::Flush() {
    if (pending_.empty())
        return;
    std::u16string text =
        state_.page == kSymbolPage ? SymbolText(pending_) : DecodeCodePage(pending_, state_.page);
    std::erase_if(text,
                  [](char16_t unit) { return unit < 0x20 && unit != u'\t' && unit != kRtfCell; });
    Out().Append(text, state_.chars);
    pending_.clear();
}

std::u16string RtfReading::SymbolText(std::string_view bytes) {
    std::u16string text;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        constexpr unsigned char kBullet = 0xB7;
        if (byte == kBullet)
            text += u'\u2022';
        else
            text += static_cast<char16_t>(byte <= 0x20 ? byte : 0xF000 + byte);
    }
    return text;
}

void RtfReading::TakeCharacter(char16_t unit) {
    Flush();
    if (Seen())
        Out().Append({&unit, 1}, state_.chars);
    else if (IsUnseenText())
        beside_.Unseen(unit, state_.deleted);
}

void RtfReading::EndParagraph() {
    Flush();
    if (!Seen() && state_.destination != Destination::Body)
        return;
    if (state_.destination == Destination::Footnote || state_.in_table)
        BreakLine();
    else
        EndParagraphOf();
}

// A deleted end joins the paragraph with the next one; a hidden one leaves no empty line.
void RtfReading::EndParagraphOf() {
    row_hides_ = false;
    beside_.EndParagraph(Paragraph());
    if (state_.deleted || (state_.chars.hidden && Out().AtParagraphBegin()))
        return;
    if (state_.boxes > 0)
        boxes_.AtWork().EndParagraph(state_.chars, state_.paragraph);
    else
        EndBodyParagraph();
}

void RtfReading::BreakLine() {
    if (state_.destination == Destination::Footnote)
        Out().BreakInNote();
    else
        TakeCharacter(kRtfLine);
}

void RtfReading::TakeUnicode(char16_t unit) {
    if (state_.destination == Destination::Fonts) {
        header_.TakeFontUnit(unit);
        return;
    }
    row_hides_ = row_hides_ || state_.chars.hidden;
    if (unit >= 0x20 || unit == u'\t')  // no control character has a meaning here
        TakeCharacter(unit);
}

void RtfReading::UseFont(std::int32_t number) {
    if (state_.destination == Destination::Fonts) {
        header_.BeginFont(number);
        return;
    }
    const RtfHeader::Font* const font = header_.FontAt(number);
    if (font == nullptr)
        return;
    state_.chars.font = FontName(font->name);
    state_.page = header_.PageOf(*font);
}

void RtfReading::SetPlain() {
    constexpr std::int32_t kPlainHalfPoints = 24;
    state_.chars = CharFormat{};
    state_.chars.half_points = kPlainHalfPoints;
    state_.page = header_.Page();
    state_.deleted = false;
    UseFont(header_.DefaultFont());
}

}  // namespace zorvane
