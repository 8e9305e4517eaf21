#include "compare/document/rtf_reading.h"

#include <algorithm>
#include <utility>

#include "compare/document/rtf_formats.h"

namespace zorvane {
namespace {

constexpr std::size_t kDeepest =
    2000;  // groups below are counted, not kept: no file nests the memory away

}  // namespace

RichText RtfReading::Read() {
    BeginDocument();
    while (!scanner_.AtEnd() && stop_.KeepGoing())
        Step();
    Flush();
    if (!stack_.empty() && scanner_.AtEnd())
        beside_.EndsTooEarly();
    beside_.Finish(Paragraph());
    const bool open = !out_.AtParagraphBegin();
    out_.CloseParagraph(state_.paragraph);
    ShowLastBoxes(open);
    return out_.Take();
}

void RtfReading::BeginDocument() {
    header_ = RtfHeader{};
    state_ = State{};
    state_.page = header_.Page();
    SetPlain();
}

void RtfReading::Step() {
    if (!scanner_.Next(token_))
        return;
    switch (token_.kind) {
        case RtfToken::Kind::GroupBegin:
            OpenGroup();
            return;
        case RtfToken::Kind::GroupEnd:
            CloseGroup();
            return;
        case RtfToken::Kind::Text:
            RawText(token_.text);
            return;
        case RtfToken::Kind::Word:
            ControlWord(token_.text, token_.parameter);
            return;
        case RtfToken::Kind::Symbol:
            ControlSymbol(token_.byte);
            return;
        case RtfToken::Kind::Byte:
            group_begins_ = false;
            if (!SkipOne())
                TakeBytes({&token_.byte, 1});
            return;
    }
}

void RtfReading::OpenGroup() {
    Flush();
    if (stack_.empty() && documents_ > 0)
        NextDocument();
    group_begins_ = true;
    starred_ = false;
    skip_left_ = 0;
    if (stack_.size() < kDeepest)
        stack_.push_back(state_);
    else
        ++too_deep_;
}

void RtfReading::NextDocument() {
    if (!out_.AtParagraphBegin())
        EndBodyParagraph();
    boxes_.ShowIn(out_);
    BeginDocument();
}

void RtfReading::CloseGroup() {
    Flush();
    group_begins_ = false;
    skip_left_ = 0;
    if (too_deep_ > 0) {
        --too_deep_;
        return;
    }
    if (stack_.empty())
        return;
    const bool ends_fonts = state_.destination == Destination::Fonts;
    const ParagraphFormat paragraph = state_.paragraph;
    const bool same_place = stack_.back().destination == state_.destination;
    State outer = std::move(stack_.back());
    stack_.pop_back();
    if (ends_fonts)
        header_.EndFontName();
    if (state_.destination == Destination::Footnote && outer.destination != Destination::Footnote)
        Out().CloseNote(outer.chars);
    if (state_.boxes > outer.boxes)
        CloseBox(outer.boxes > 0);
    // Kept: a paragraph that was begun inside the last group of a document keeps that group's
    // format.
    if (stack_.empty() && same_place) {
        outer.paragraph = paragraph;
        ++documents_;
    }
    state_ = std::move(outer);
    if (ends_fonts && state_.destination != Destination::Fonts)
        UseFont(header_.DefaultFont());
}

void RtfReading::ControlSymbol(char symbol) {
    if (symbol == '*') {
        starred_ = group_begins_;
        return;
    }
    group_begins_ = false;
    if (symbol == '\'' || SkipOne())
        return;
    switch (symbol) {
        case '~':
            TakeCharacter(u'\u00A0');
            return;
        case '-':
            TakeCharacter(u'\u00AD');
            return;
        case '_':
            TakeCharacter(u'\u2011');
            return;
        case '\r':
        case '\n':
            EndParagraph();
            return;
        case '\\':
        case '{':
        case '}':
            TakeBytes({&symbol, 1});
            return;
        default:
            return;
    }
}

// One of the characters that stand in for a \u in readers without Unicode.
bool RtfReading::SkipOne() {
    if (skip_left_ == 0)
        return false;
    --skip_left_;
    return true;
}

void RtfReading::ControlWord(std::string_view name, std::optional<std::int32_t> parameter) {
    const bool begins_group = std::exchange(group_begins_, false);
    const RtfWord* const word = FindRtfWord(name);
    if (word != nullptr && word->action == RtfAction::Binary) {
        scanner_.Skip(static_cast<std::size_t>(std::max(parameter.value_or(0), 0)));
        return;
    }
    if (word != nullptr && word->action == RtfAction::UnicodeText)
        state_.destination = state_.unicode_destination;
    if (SkipOne() || state_.destination == Destination::Skip)
        return;
    if (word == nullptr) {
        // Kept: a list number whose control word the preparation has spoiled goes with its
        // group.
        if (begins_group && (starred_ || name.starts_with("pzn")))
            SkipGroup();
        return;
    }
    Flush();
    Act(*word, parameter, begins_group);
}

void RtfReading::SkipUnseenGroup() {
    if (IsUnseenText())
        beside_.UnseenGroup(scanner_.Rest(), state_.page, state_.deleted);
    SkipGroup();
}

void RtfReading::Act(const RtfWord& word, std::optional<std::int32_t> parameter,
                     bool begins_group) {
    const std::int32_t number = parameter.value_or(0);
    if (!ActOnGroup(word, begins_group) && !ActOnText(word, number) &&
        !ActOnChars(word, parameter) && !ActOnParagraph(word, number))
        ActOnHeader(word, number);
}

bool RtfReading::ActOnGroup(const RtfWord& word, bool begins_group) {
    switch (word.action) {
        case RtfAction::SkipGroup:
            beside_.Group(word.name, scanner_.Rest(), Paragraph(), state_.page);
            SkipGroup();
            return true;
        case RtfAction::FontTable:
            state_.destination = Destination::Fonts;
            return true;
        case RtfAction::ColorTable:
            state_.destination = Destination::Colors;
            return true;
        case RtfAction::Footnote:
            OpenNote();
            return true;
        case RtfAction::Box:
            OpenBox();
            return true;
        case RtfAction::AnsiAndUnicode:
            state_.unicode_destination = state_.destination;
            SkipGroup();
            return true;
        case RtfAction::CellTab:
            cell_tab_ = true;
            return true;
        case RtfAction::Visible:
        case RtfAction::UnicodeText:
            return true;
        default:
            if (!begins_group || !starred_)
                return false;
            SkipGroup();
            return true;
    }
}

bool RtfReading::ActOnText(const RtfWord& word, std::int32_t number) {
    switch (word.action) {
        case RtfAction::Character:
            TakeCharacter(std::exchange(cell_tab_, false) ? kRtfCell
                                                          : static_cast<char16_t>(word.value));
            return true;
        case RtfAction::ParagraphEnd:
        case RtfAction::SectionEnd:
            EndParagraph();
            return true;
        case RtfAction::LineBreak:
        case RtfAction::NestedRowEnd:
            BreakLine();
            return true;
        case RtfAction::PageBreak:
            if (!Out().AtParagraphBegin())
                BreakLine();
            return true;
        case RtfAction::CellEnd:
            TakeCharacter(kRtfCell);
            return true;
        case RtfAction::RowEnd:
            EndRow();
            return true;
        case RtfAction::Unicode:
            TakeUnicode(static_cast<char16_t>(static_cast<std::uint32_t>(number)));
            skip_left_ = static_cast<std::size_t>(state_.unicode_skip);
            return true;
        case RtfAction::UnicodeSkip:
            state_.unicode_skip = std::clamp(number, 0, 16);
            return true;
        default:
            return false;
    }
}

bool RtfReading::ActOnChars(const RtfWord& word, std::optional<std::int32_t> parameter) {
    switch (word.action) {
        case RtfAction::Plain:
            SetPlain();
            return true;
        case RtfAction::Deleted:
            state_.deleted = parameter.value_or(1) != 0;
            return true;
        case RtfAction::Font:
            UseFont(parameter.value_or(0));
            return true;
        default:
            return ApplyToChars(word, parameter, header_, state_.chars);
    }
}

bool RtfReading::ActOnParagraph(const RtfWord& word, std::int32_t number) {
    switch (word.action) {
        case RtfAction::ParagraphDefaults:
            state_.paragraph = ParagraphFormat{};
            state_.in_table = false;
            return true;
        case RtfAction::InTable:
            state_.in_table = true;
            return true;
        default:
            return ApplyToParagraph(word, number, state_.paragraph, state_.next_tab);
    }
}

void RtfReading::ActOnHeader(const RtfWord& word, std::int32_t number) {
    const bool taken = header_.Take(word, number);
    if (taken &&
        (word.action == RtfAction::AnsiCodePage || word.action == RtfAction::CodePageFixed))
        state_.page = header_.Page();
}

}  // namespace zorvane
