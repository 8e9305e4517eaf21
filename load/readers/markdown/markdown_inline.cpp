#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/markdown/markdown.h"
#include "load/readers/markdown/markdown_address.h"
#include "load/readers/markdown/markdown_emphasis.h"
#include "load/readers/markdown/markdown_lines.h"

namespace zorvane {
namespace {

constexpr std::string_view kPunctuation = "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kShortTag = 4096;

bool IsPunctuation(char character) {
    return kPunctuation.find(character) != std::string_view::npos;
}

bool IsBlank(char character) {
    return kMarkdownBlanks.find(character) != std::string_view::npos;
}

// A no-break or ideographic blank, or punctuation beyond ASCII, is read as a letter: it is rare
// beside the marks of emphasis.
struct Flanks {
    bool left = false;
    bool right = false;
};

Flanks FlanksOf(char before, char after) {
    const bool left =
        !IsBlank(after) && (!IsPunctuation(after) || IsBlank(before) || IsPunctuation(before));
    const bool right =
        !IsBlank(before) && (!IsPunctuation(before) || IsBlank(after) || IsPunctuation(after));
    return {left, right};
}

class InlineText {
  public:
    InlineText(std::string_view text, MarkdownDefinitions& definitions, int depth)
        : text_(text), definitions_(definitions), depth_(depth) {}

    std::string Run() {
        while (at_ < text_.size())
            Step();
        EmphasizeMarkdown(pieces_, 0);
        std::string html;
        for (const MarkdownPiece& piece : pieces_)
            html += piece.close_tags + piece.text + piece.open_tags;
        return html;
    }

  private:
    struct Bracket {
        std::size_t piece = 0;
        std::size_t place = 0;  ///< in the text, behind the bracket
        bool image = false;
    };

    void Step() {
        const char character = text_[at_];
        switch (character) {
            case '\\':
                return Escape();
            case '`':
                return Code();
            case '*':
            case '_':
            case '~':
                return Delimiter(character);
            case '[':
                return OpenBracket(false);
            case '!':
                return text_.substr(at_).starts_with("![") ? OpenBracket(true) : Plain(1);
            case ']':
                return CloseBracket();
            case '<':
                return Angle();
            case '\n':
                return LineEnd();
            case '>':
                ++at_;
                Tail() += "&gt;";
                return;
            default:
                return Plain(std::min(text_.find_first_of("\\`*_~[]!<>\n", at_ + 1), text_.size()) -
                             at_);
        }
    }

    // The text piece at the end, to which plain text is added.
    std::string& Tail() {
        if (pieces_.empty() || pieces_.back().mark != 0)
            pieces_.emplace_back();
        return pieces_.back().text;
    }

    void Plain(std::size_t length) {
        Tail() += text_.substr(at_, length);
        at_ += length;
    }

    void Escape() {
        const char next = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
        if (next == '\n') {
            Tail() += "<br>";
            at_ += 2;
        } else if (next != '\0' && IsPunctuation(next)) {
            AppendEscaped(text_.substr(at_ + 1, 1), Tail());
            at_ += 2;
        } else {
            Plain(1);
        }
    }

    void LineEnd() {
        std::string& tail = Tail();
        const std::size_t end = tail.find_last_not_of(' ');
        const std::size_t blanks = tail.size() - (end == std::string::npos ? 0 : end + 1);
        if (blanks >= 2)
            tail += "<br>";
        tail += '\n';
        ++at_;
    }

    std::size_t RunLength(char character) const {
        const std::size_t end = text_.find_first_not_of(character, at_);
        return std::min(end, text_.size()) - at_;
    }

    void Code() {
        const std::size_t ticks = RunLength('`');
        const std::size_t from = at_ + ticks;
        const std::size_t memory = std::min(ticks, no_closer_.size() - 1);
        std::size_t end = no_closer_[memory] ? kNone : text_.find('`', from);
        while (end < text_.size()) {
            const std::size_t behind = std::min(text_.find_first_not_of('`', end), text_.size());
            if (behind - end == ticks)
                break;
            end = text_.find('`', behind);
        }
        if (end >= text_.size()) {
            no_closer_[memory] = true;
            return Plain(ticks);
        }
        std::string code(text_.substr(from, end - from));
        std::replace(code.begin(), code.end(), '\n', ' ');
        const bool padded = code.size() > 2 && code.front() == ' ' && code.back() == ' ' &&
                            code.find_first_not_of(' ') != std::string::npos;
        if (padded)
            code = code.substr(1, code.size() - 2);
        std::string& tail = Tail();
        tail += "<code style=\"white-space: pre-wrap\">";
        AppendEscaped(code, tail);
        tail += "</code>";
        at_ = end + ticks;
    }

    void Delimiter(char mark) {
        const std::size_t count = RunLength(mark);
        const char before = at_ == 0 ? ' ' : text_[at_ - 1];
        const char after = at_ + count < text_.size() ? text_[at_ + count] : ' ';
        const Flanks flanks = FlanksOf(before, after);
        if (mark == '~' && count != 2)
            return Plain(count);
        MarkdownPiece piece;
        piece.text = text_.substr(at_, count);
        piece.mark = mark;
        piece.count = count;
        piece.opens = flanks.left && (mark != '_' || !flanks.right || IsPunctuation(before));
        piece.closes = flanks.right && (mark != '_' || !flanks.left || IsPunctuation(after));
        pieces_.push_back(std::move(piece));
        at_ += count;
    }

    void OpenBracket(bool image) {
        constexpr std::size_t kMostOpen = 200;
        if (!image && Note())
            return;
        if (brackets_.size() >= kMostOpen)
            return Plain(image ? 2 : 1);
        MarkdownPiece piece;
        piece.text = image ? "![" : "[";
        piece.mark = '[';
        at_ += piece.text.size();
        brackets_.push_back({pieces_.size(), at_, image});
        pieces_.push_back(std::move(piece));
    }

    // "[^label]": the note's text stands here, in brackets as in the other formats.
    bool Note() {
        const std::size_t end = text_.substr(0, at_ + 256).find(']', at_);
        if (!text_.substr(at_).starts_with("[^") || end == std::string_view::npos)
            return false;
        const auto note =
            definitions_.notes.find(MarkdownLabel(text_.substr(at_ + 2, end - at_ - 2)));
        constexpr int kMostNestedNotes = 3;
        if (note == definitions_.notes.end() || depth_ >= kMostNestedNotes ||
            definitions_.note_bytes_left < note->second.size())
            return false;
        definitions_.note_bytes_left -= note->second.size();
        const std::string text = note->second;
        Tail() += " [note: " + MarkdownInline(text, definitions_, depth_ + 1) + "] ";
        at_ = end + 1;
        return true;
    }

    void CloseBracket() {
        if (brackets_.empty())
            return Plain(1);
        const Bracket bracket = brackets_.back();
        brackets_.pop_back();
        const bool around_link = brackets_.size() < inactive_below_ && !bracket.image;
        inactive_below_ = std::min(inactive_below_, brackets_.size());
        const std::size_t behind = around_link ? kNone : LinkEnd(bracket);
        if (behind == kNone)
            return Plain(1);
        EmphasizeMarkdown(pieces_, bracket.piece + 1);
        MarkdownPiece& opener = pieces_[bracket.piece];
        opener.mark = 0;
        opener.text =
            MarkdownOpenTag(bracket.image, text_.substr(bracket.place, at_ - bracket.place),
                            text_.substr(at_ + 1, behind - at_ - 1), definitions_);
        at_ = behind;
        if (bracket.image)
            return;
        pieces_.emplace_back().text = "</a>";
        inactive_below_ = brackets_.size();  // no link holds a link
    }

    // The place behind a link whose text ends here; `kNone` when it is none.
    std::size_t LinkEnd(const Bracket& bracket) {
        const std::size_t next = at_ + 1;
        const char character = next < text_.size() ? text_[next] : '\0';
        if (character == '(' && definitions_.bytes_left > 0) {
            std::size_t end = next + 1;
            if (AddressEnd(end))
                return end;
            CountLookedAt(end - next);
        }
        constexpr std::size_t kLongestLabel = 1000;
        const std::string_view own = text_.substr(bracket.place, at_ - bracket.place);
        const std::size_t end = character == '['
                                    ? text_.substr(0, next + kLongestLabel).find(']', next)
                                    : std::string_view::npos;
        if (end == std::string_view::npos)
            return IsDefined(own) ? next : kNone;
        const std::string_view label = text_.substr(next + 1, end - next - 1);
        return IsDefined(label.empty() ? own : label) ? end + 1 : kNone;
    }

    bool IsDefined(std::string_view label) const {
        return label.size() < 1000 && !definitions_.links.empty() &&
               definitions_.links.contains(MarkdownLabel(label));
    }

    std::size_t SkipBlanks(std::size_t at) const {
        return std::min(text_.find_first_not_of(kMarkdownBlanks, at), text_.size());
    }

    // Of what is found the text goes on behind it, but what is not found may be looked for again
    // and again: so that is bounded, and an address, which may be a whole picture, is not.
    void CountLookedAt(std::size_t bytes) {
        definitions_.bytes_left -= std::min(definitions_.bytes_left, bytes);
    }

    // The place behind an address without angle brackets.
    std::size_t SkipBareAddress(std::size_t at) const {
        int depth = 0;
        for (; at < text_.size() && !IsBlank(text_[at]); ++at) {
            if (text_[at] == '\\')
                ++at;
            else if (text_[at] == '(')
                ++depth;
            else if (text_[at] == ')' && depth-- == 0)
                break;
        }
        return std::min(at, text_.size());
    }

    // Moves `at` from behind the bracket to behind "(address "title")", or to where it ceased to
    // be one.
    bool AddressEnd(std::size_t& at) const {
        at = SkipBlanks(at);
        if (at < text_.size() && text_[at] == '<') {
            at = std::min(text_.find_first_of(">\n", at), text_.size());
            if (at == text_.size() || text_[at] == '\n')
                return false;
            ++at;
        } else {
            at = SkipBareAddress(at);
        }
        at = SkipBlanks(at);
        const char quote = at < text_.size() ? text_[at] : '\0';
        if (quote == '"' || quote == '\'' || quote == '(') {
            at = std::min(text_.find(quote == '(' ? ')' : quote, at + 1), text_.size());
            at = SkipBlanks(std::min(at + 1, text_.size()));
        }
        if (at >= text_.size() || text_[at] != ')')
            return false;
        ++at;
        return true;
    }

    // The length of a tag or comment of HTML that begins here; 0 for none.
    std::size_t TagLength() {
        const std::string_view rest =
            text_.substr(at_, definitions_.bytes_left > 0 ? text_.npos : kShortTag);
        const bool comment = rest.starts_with("<!--");
        const std::size_t end = comment ? rest.find("-->") : HtmlTagEnd(rest);
        if (end == std::string_view::npos)
            CountLookedAt(rest.size());
        else if (comment || IsHtmlTag(rest.substr(1, end - 1)))
            return end + (comment ? 3 : 1);
        else
            CountLookedAt(end);
        return 0;
    }

    // A tag or comment of HTML stands as it is, an address in brackets by its text.
    void Angle() {
        if (const std::size_t length = TagLength(); length > 0)
            return Plain(length);
        const std::string_view rest = text_.substr(at_, kShortTag);
        const std::size_t end = std::min(rest.find('>'), rest.size());
        const std::string_view inner = rest.substr(1, end - 1);
        const std::size_t mark =
            end == rest.size() ? std::string_view::npos : inner.find_first_of(":@");
        if (mark != std::string_view::npos && mark > 0 &&
            inner.find_first_of(" \t\r\n\"'<") == std::string_view::npos) {
            Tail() += MarkdownOpenTag(inner);
            AppendEscaped(inner, Tail());
            Tail() += "</a>";
            at_ += end + 1;
        } else {
            ++at_;
            Tail() += "&lt;";
        }
    }

    std::string_view text_;
    MarkdownDefinitions& definitions_;
    int depth_;
    std::size_t at_ = 0;
    std::vector<MarkdownPiece> pieces_;
    std::vector<Bracket> brackets_;
    std::size_t inactive_below_ = 0;
    std::array<bool, 64> no_closer_{};
};

}  // namespace

void AppendEscaped(std::string_view text, std::string& out) {
    for (const char character : text) {
        if (character == '<')
            out += "&lt;";
        else if (character == '>')
            out += "&gt;";
        else if (character == '&')
            out += "&amp;";
        else
            out += character;
    }
}

std::string MarkdownLabel(std::string_view text) {
    std::string label;
    bool blank = false;
    for (const char character : Trim(text)) {
        if (IsBlank(character)) {
            blank = true;
            continue;
        }
        if (blank)
            label += ' ';
        blank = false;
        label += character;
    }
    return ToLower(label);
}

std::string MarkdownInline(std::string_view text, MarkdownDefinitions& definitions, int depth) {
    return InlineText(text, definitions, depth).Run();
}

}  // namespace zorvane
