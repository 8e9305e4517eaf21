#include "compare/document/rtf_reader.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "compare/document/rtf_beside.h"
#include "compare/document/rtf_output.h"
#include "compare/document/rtf_tables.h"

namespace zorvane {
namespace {

constexpr std::size_t kDeepest =
    2000;  // groups below are counted, not kept: no file nests the memory away
constexpr std::size_t kLongestWord = 32;
constexpr std::int32_t kMostTabs = 64;
constexpr std::size_t kLongestFontName = 4096;

enum class Destination : std::uint8_t { Body, Footnote, Fonts, Colors, Skip };

struct State {
    CharFormat chars;
    ParagraphFormat paragraph;
    std::int32_t unicode_skip = 1;
    CodePage page;
    TabKind next_tab = TabKind::Left;
    Destination destination = Destination::Body;
    Destination unicode_destination = Destination::Skip;  // of the second text of an \upr group
    bool in_table = false;
    bool deleted = false;
    int boxes = 0;  // that are open
};

struct Font {
    std::string name;
    CodePage page{0};  // 0: the document's
};

std::optional<unsigned> HexDigit(char digit) {
    if (IsAsciiDigit(digit))
        return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f')
        return static_cast<unsigned>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F')
        return static_cast<unsigned>(digit - 'A' + 10);
    return std::nullopt;
}

// The values of the document that the text refers to.
struct Header {
    std::map<std::int32_t, Font> fonts;
    std::vector<std::optional<Color>> colors;
    std::int32_t default_font = 0;
    CodePage page{1252};
};

class Reader {
  public:
    /// `beside` may be null.
    Reader(std::string_view bytes, std::vector<BesideItem>* beside, RunWatcher* watcher)
        : bytes_(bytes), beside_(beside), stop_(watcher) {}

    RichText Read() {
        BeginDocument();
        while (at_ < bytes_.size() && stop_.KeepGoing())
            Step();
        Flush();
        beside_.Finish(Paragraph());
        const bool open = !out_.AtParagraphBegin();
        out_.CloseParagraph(state_.paragraph);
        ShowLastBoxes(open);
        return out_.Take();
    }

  private:
    void BeginDocument() {
        header_ = Header{};
        state_ = State{};
        state_.page = header_.page;
        SetPlain();
    }

    void Step() {
        const char character = bytes_[at_];
        switch (character) {
            case '{':
                ++at_;
                OpenGroup();
                return;
            case '}':
                ++at_;
                CloseGroup();
                return;
            case '\\':
                ++at_;
                Control();
                return;
            case '\r':
            case '\n':
            case '\0':
                ++at_;
                return;
            default:
                RawText();
        }
    }

    // ---- groups ----

    void OpenGroup() {
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

    void NextDocument() {
        if (!out_.AtParagraphBegin())
            EndBodyParagraph();
        ShowBoxes();
        BeginDocument();
    }

    void CloseGroup() {
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
            TakeFontName();
        if (state_.destination == Destination::Footnote &&
            outer.destination != Destination::Footnote)
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
            UseFont(header_.default_font);
    }

    // The note of text that is not seen is not seen either, whatever it says of itself.
    void OpenNote() {
        if (!Seen()) {
            SkipUnseenGroup();
        } else if (state_.destination != Destination::Footnote) {
            Out().OpenNote();
            state_.destination = Destination::Footnote;
        }
    }

    // ---- text boxes: paragraphs of their own behind the paragraph or row that anchors them ----

    void OpenBox() {
        if (!Seen()) {
            SkipUnseenGroup();
            return;
        }
        if (state_.boxes > 0 && !box_.AtParagraphBegin())
            box_.EndParagraph(state_.chars, state_.paragraph);
        state_.destination = Destination::Body;
        ++state_.boxes;
        state_.in_table = false;
    }

    void CloseBox(bool in_another) {
        beside_.EndParagraph(Paragraph());
        if (in_another) {
            if (!box_.AtParagraphBegin())
                box_.EndParagraph(state_.chars, state_.paragraph);
            return;
        }
        const std::int32_t paragraphs = box_.Paragraph() - (box_.AtParagraphBegin() ? 1 : 0);
        box_.CloseParagraph(state_.paragraph);
        if (RichText box = box_.Take(); !box.text.empty()) {
            boxes_.push_back(std::move(box));
            box_paragraphs_ += paragraphs;
        }
    }

    // The number that the paragraph at work has in the text. Those of a box come behind the one
    // that anchors it.
    std::int32_t Paragraph() const {
        const std::int32_t body = out_.Paragraph();
        return state_.boxes > 0 ? body + box_paragraphs_ + box_.Paragraph() : body;
    }

    void EndBodyParagraph() {
        out_.EndParagraph(state_.chars, state_.paragraph);
        ShowBoxes();
    }

    void ShowBoxes() {
        box_paragraphs_ = 0;
        for (const RichText& box : std::exchange(boxes_, {}))
            ShowBox(box, true);
    }

    // Whether a box that is shown ends with a break depends on what follows.
    void ShowBox(const RichText& box, bool ended) {
        out_.Append(box);
        if (ended && !box.text.ends_with(u"\r\n"))
            out_.EndParagraph(box.char_runs.back().format, box.paragraph_runs.back().format);
    }

    void ShowLastBoxes(bool paragraph_open) {
        if (boxes_.empty())
            return;
        if (paragraph_open)
            out_.EndParagraph(state_.chars, state_.paragraph);
        const RichText last = std::move(boxes_.back());
        boxes_.pop_back();
        ShowBoxes();
        ShowBox(last, false);
    }

    RtfOutput& Out() { return state_.boxes > 0 ? box_ : out_; }

    // ---- text ----

    bool Seen() const {
        const bool text =
            state_.destination == Destination::Body || state_.destination == Destination::Footnote;
        return text && !state_.chars.hidden && !state_.deleted;
    }

    // Text of the document that is hidden or was deleted.
    bool IsUnseenText() const {
        return state_.destination == Destination::Body ||
               state_.destination == Destination::Footnote;
    }

    void RawText() {
        std::size_t end = at_;
        while (end < bytes_.size() && bytes_[end] != '{' && bytes_[end] != '}' &&
               bytes_[end] != '\\' && bytes_[end] != '\r' && bytes_[end] != '\n')
            ++end;
        std::string_view text = bytes_.substr(at_, end - at_);
        at_ = end;
        group_begins_ = false;
        const std::size_t skipped = std::min(skip_left_, text.size());
        skip_left_ -= skipped;
        text.remove_prefix(skipped);
        TakeBytes(text);
    }

    void TakeBytes(std::string_view text) {
        if (state_.destination == Destination::Fonts) {
            if (font_bytes_.size() < kLongestFontName)
                font_bytes_ += text;
            TakeFontName();
        } else if (state_.destination == Destination::Colors) {
            for (const char character : text) {
                if (character == ';')
                    TakeColor();
            }
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
    void EndRow() {
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
    void Flush() {
        if (pending_.empty())
            return;
        std::u16string text = state_.page == kSymbolPage ? SymbolText(pending_)
                                                         : DecodeCodePage(pending_, state_.page);
        std::erase_if(
            text, [](char16_t unit) { return unit < 0x20 && unit != u'\t' && unit != kRtfCell; });
        Out().Append(text, state_.chars);
        pending_.clear();
    }

    static std::u16string SymbolText(std::string_view bytes) {
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

    void TakeCharacter(char16_t unit) {
        Flush();
        if (Seen())
            Out().Append({&unit, 1}, state_.chars);
        else if (IsUnseenText())
            beside_.Unseen(unit, state_.deleted);
    }

    void EndParagraph() {
        Flush();
        if (!Seen() && state_.destination != Destination::Body)
            return;
        if (state_.destination == Destination::Footnote || state_.in_table)
            BreakLine();
        else if (state_.deleted)
            beside_.EndParagraph(Paragraph());
        else
            EndParagraphOf();
    }

    void EndParagraphOf() {
        row_hides_ = false;
        beside_.EndParagraph(Paragraph());
        if (state_.boxes > 0)
            box_.EndParagraph(state_.chars, state_.paragraph);
        else
            EndBodyParagraph();
    }

    void BreakLine() {
        if (state_.destination == Destination::Footnote)
            Out().BreakInNote();
        else
            TakeCharacter(kRtfLine);
    }

    // ---- control words ----

    void Control() {
        if (at_ >= bytes_.size())
            return;
        const char character = bytes_[at_];
        if (IsAsciiLetter(character)) {
            ControlWord();
            return;
        }
        ++at_;
        ControlSymbol(character);
    }

    void ControlSymbol(char symbol) {
        if (symbol == '\'') {
            HexByte();
            return;
        }
        if (symbol == '*') {
            starred_ = group_begins_;
            return;
        }
        group_begins_ = false;
        if (SkipOne())
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

    void HexByte() {
        group_begins_ = false;
        if (at_ + 2 > bytes_.size()) {
            at_ = bytes_.size();
            return;
        }
        const auto high = HexDigit(bytes_[at_]);
        const auto low = HexDigit(bytes_[at_ + 1]);
        if (!high || !low)
            return;
        at_ += 2;
        if (SkipOne())
            return;
        const char byte = static_cast<char>(*high * 16 + *low);
        TakeBytes({&byte, 1});
    }

    // One of the characters that stand in for a \u in readers without Unicode.
    bool SkipOne() {
        if (skip_left_ == 0)
            return false;
        --skip_left_;
        return true;
    }

    void ControlWord() {
        const std::size_t begin = at_;
        while (at_ < bytes_.size() && IsAsciiLetter(bytes_[at_]) && at_ - begin < kLongestWord)
            ++at_;
        const std::string_view name = bytes_.substr(begin, at_ - begin);
        std::optional<std::int32_t> parameter = Parameter();
        if (at_ < bytes_.size() && bytes_[at_] == ' ')
            ++at_;
        const bool begins_group = std::exchange(group_begins_, false);
        const RtfWord* const word = FindRtfWord(name);
        if (word != nullptr && word->action == RtfAction::Binary) {
            at_ += std::min(static_cast<std::size_t>(std::max(parameter.value_or(0), 0)),
                            bytes_.size() - at_);
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

    std::optional<std::int32_t> Parameter() {
        std::size_t end = at_;
        if (end < bytes_.size() && bytes_[end] == '-')
            ++end;
        const std::size_t digits = end;
        while (end < bytes_.size() && IsAsciiDigit(bytes_[end]))
            ++end;
        if (end == digits)
            return std::nullopt;
        std::int32_t number = 0;
        std::from_chars(bytes_.data() + at_, bytes_.data() + end, number);  // 0 when out of range
        at_ = end;
        return number;
    }

    void SkipUnseenGroup() {
        if (IsUnseenText())
            beside_.UnseenGroup(bytes_.substr(at_), state_.page, state_.deleted);
        SkipGroup();
    }

    void SkipGroup() { state_.destination = Destination::Skip; }

    void Act(const RtfWord& word, std::optional<std::int32_t> parameter, bool begins_group) {
        const std::int32_t number = parameter.value_or(0);
        const bool on = parameter.value_or(1) != 0;
        if (ActOnGroup(word, begins_group) || ActOnText(word, number) ||
            ActOnChars(word, parameter, on))
            return;
        ActOnParagraph(word, number);
        ActOnHeader(word, number);
    }

    bool ActOnGroup(const RtfWord& word, bool begins_group) {
        switch (word.action) {
            case RtfAction::SkipGroup:
                beside_.Group(word.name, bytes_.substr(at_), Paragraph(), state_.page);
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

    bool ActOnText(const RtfWord& word, std::int32_t number) {
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
                if (state_.destination == Destination::Fonts) {
                    FlushFontName();
                    font_name_ += static_cast<char16_t>(static_cast<std::uint32_t>(number));
                } else {
                    row_hides_ = row_hides_ || state_.chars.hidden;
                    TakeUnicode(number);
                }
                skip_left_ = static_cast<std::size_t>(state_.unicode_skip);
                return true;
            case RtfAction::UnicodeSkip:
                state_.unicode_skip = std::clamp(number, 0, 16);
                return true;
            default:
                return false;
        }
    }

    void TakeUnicode(std::int32_t number) {
        const auto unit = static_cast<char16_t>(static_cast<std::uint32_t>(number));
        if (unit >= 0x20 || unit == u'\t')  // no control character has a meaning here
            TakeCharacter(unit);
    }

    bool ActOnChars(const RtfWord& word, std::optional<std::int32_t> parameter, bool on) {
        CharFormat& chars = state_.chars;
        const std::int32_t number = parameter.value_or(0);
        switch (word.action) {
            case RtfAction::Plain:
                SetPlain();
                return true;
            case RtfAction::Bold:
                chars.bold = on;
                return true;
            case RtfAction::Italic:
                chars.italic = on;
                return true;
            case RtfAction::Strike:
                chars.strikeout = on;
                return true;
            case RtfAction::Hidden:
                chars.hidden = on;
                return true;
            case RtfAction::Deleted:
                state_.deleted = on;
                return true;
            case RtfAction::UnderlineKind:
                chars.underline = on ? static_cast<Underline>(word.value) : Underline::None;
                return true;
            case RtfAction::ForeColor:
                chars.fore_color = ColorAt(number);
                return true;
            case RtfAction::BackColor:
                chars.back_color = ColorAt(number);
                return true;
            case RtfAction::FontSize:
                chars.half_points = std::clamp(parameter.value_or(24), 1, 3276);
                return true;
            default:
                return ActOnBaseline(word, parameter);
        }
    }

    bool ActOnBaseline(const RtfWord& word, std::optional<std::int32_t> parameter) {
        Baseline& baseline = state_.chars.baseline;
        switch (word.action) {
            case RtfAction::Superscript:
                baseline = parameter.value_or(1) != 0 ? Baseline::Superscript : Baseline::Normal;
                return true;
            case RtfAction::Subscript:
                baseline = parameter.value_or(1) != 0 ? Baseline::Subscript : Baseline::Normal;
                return true;
            case RtfAction::NoSuperSub:
                baseline = Baseline::Normal;
                return true;
            case RtfAction::RaiseLower:
                baseline = parameter.value_or(6) == 0 ? Baseline::Normal
                                                      : static_cast<Baseline>(word.value);
                return true;
            default:
                return false;
        }
    }

    void ActOnParagraph(const RtfWord& word, std::int32_t number) {
        ParagraphFormat& paragraph = state_.paragraph;
        switch (word.action) {
            case RtfAction::ParagraphDefaults:
                paragraph = ParagraphFormat{};
                state_.in_table = false;
                return;
            case RtfAction::InTable:
                state_.in_table = true;
                return;
            case RtfAction::Align:
                paragraph.alignment = static_cast<Alignment>(word.value);
                return;
            case RtfAction::RightToLeft:
                paragraph.right_to_left = word.value != 0;
                return;
            case RtfAction::LeftIndent:
                paragraph.left_indent = number;
                return;
            case RtfAction::RightIndent:
                paragraph.right_indent = number;
                return;
            case RtfAction::FirstIndent:
                paragraph.first_line_indent = number;
                return;
            case RtfAction::SpaceBefore:
                paragraph.space_before = number;
                return;
            case RtfAction::SpaceAfter:
                paragraph.space_after = number;
                return;
            case RtfAction::LineSpacing:
                paragraph.line_spacing = number;
                return;
            case RtfAction::LineSpacingMultiple:
                paragraph.line_spacing_multiple = number != 0;
                return;
            default:
                ActOnTabs(word, number);
        }
    }

    void ActOnTabs(const RtfWord& word, std::int32_t number) {
        std::vector<TabStop>& tabs = state_.paragraph.tabs;
        if (word.action == RtfAction::TabKindNext)
            state_.next_tab = static_cast<TabKind>(word.value);
        const bool bar = word.action == RtfAction::TabBarAt;
        if (!bar && word.action != RtfAction::TabAt)
            return;
        if (tabs.size() < kMostTabs)
            tabs.push_back({number, bar ? TabKind::Bar : state_.next_tab});
        state_.next_tab = TabKind::Left;
    }

    // ---- fonts, colours, code pages ----

    void ActOnHeader(const RtfWord& word, std::int32_t number) {
        switch (word.action) {
            case RtfAction::Font:
                UseFont(number);
                return;
            case RtfAction::DefaultFont:
                header_.default_font = number;
                return;
            case RtfAction::AnsiCodePage:
                header_.page = CodePage{number};
                state_.page = header_.page;
                return;
            case RtfAction::CodePageFixed:
                header_.page = CodePage{word.value};
                state_.page = header_.page;
                return;
            case RtfAction::FontCharset:
                header_.fonts[font_].page = CodePageOfCharset(number);
                return;
            case RtfAction::FontCodePage:
                if (number > 0)
                    header_.fonts[font_].page = CodePage{number};
                return;
            case RtfAction::Red:
                color_.value |= (number & 0xFF);
                has_color_ = true;
                return;
            case RtfAction::Green:
                color_.value |= (number & 0xFF) << 8;
                has_color_ = true;
                return;
            case RtfAction::Blue:
                color_.value |= (number & 0xFF) << 16;
                has_color_ = true;
                return;
            default:
                return;
        }
    }

    void UseFont(std::int32_t number) {
        if (state_.destination == Destination::Fonts) {
            font_ = number;
            return;
        }
        const auto font = header_.fonts.find(number);
        if (font == header_.fonts.end())
            return;
        state_.chars.font = FontName(font->second.name);
        state_.page = font->second.page.number == 0 ? header_.page : font->second.page;
    }

    // Bytes of a name wait as those of the text do.
    void FlushFontName() {
        const CodePage page = header_.fonts[font_].page;
        const bool own = page.number != 0 && page != kSymbolPage;
        font_name_ += DecodeCodePage(font_bytes_, own ? page : header_.page);
        font_bytes_.clear();
    }

    // A name ends at a semicolon.
    void TakeFontName() {
        if (font_bytes_.find(';') == std::string::npos)
            return;
        font_bytes_.erase(font_bytes_.find(';'));
        FlushFontName();
        header_.fonts[font_].name = std::string(Trim(ToUtf8(font_name_)));
        font_name_.clear();
    }

    void TakeColor() {
        header_.colors.push_back(has_color_ ? std::optional<Color>(color_) : std::nullopt);
        color_ = Color{};
        has_color_ = false;
    }

    std::optional<Color> ColorAt(std::int32_t index) const {
        const auto at = static_cast<std::size_t>(index);
        return index < 0 || at >= header_.colors.size() ? std::nullopt : header_.colors[at];
    }

    void SetPlain() {
        constexpr std::int32_t kPlainHalfPoints = 24;
        state_.chars = CharFormat{};
        state_.chars.half_points = kPlainHalfPoints;
        state_.page = header_.page;
        state_.deleted = false;
        UseFont(header_.default_font);
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
    std::vector<State> stack_;
    std::size_t too_deep_ = 0;
    std::size_t documents_ = 0;  // that have ended
    State state_;
    Header header_;
    RtfOutput out_;
    RtfOutput box_;                    // the one at work
    std::vector<RichText> boxes_;      // of the paragraph at work
    std::int32_t box_paragraphs_ = 0;  // in those
    RtfBeside beside_;
    std::string pending_;
    std::size_t skip_left_ = 0;
    bool group_begins_ = false;
    bool starred_ = false;
    bool cell_tab_ = false;
    bool row_hides_ = false;  // the paragraph at work has hidden text
    std::int32_t font_ = 0;
    std::string font_bytes_;
    std::u16string font_name_;
    Color color_;
    bool has_color_ = false;
    StopCheck stop_;
};

std::string_view WithoutMark(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view() : bytes.substr(first);
}

}  // namespace

bool LooksLikeRtf(std::string_view bytes) {
    return WithoutMark(bytes).starts_with("{\\rtf");
}

RichText ReadRtf(std::string_view bytes) {
    return Reader(WithoutMark(bytes), nullptr, nullptr).Read();
}

RichText ReadRtf(std::string_view bytes, std::vector<BesideItem>& beside, RunWatcher* watcher) {
    return Reader(WithoutMark(bytes), &beside, watcher).Read();
}

}  // namespace zorvane
