#include "find/engine/expression_reader.h"

#include <utility>

#include "common/base/ascii.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

constexpr std::string_view kBlanks = R"(\t\x0b\x0c )";

// One pass over the expression. Unknown things go on as they are, and the matching becomes careful.
class ExpressionReader {
  public:
    ExpressionReader(std::string_view text, FindSyntax syntax, bool match_case)
        : text_(text), wildcards_(syntax == FindSyntax::Simple), match_case_(match_case) {}

    Result<ReadExpression> Read() {
        while (at_ < text_.size() && !line_end_) {
            const char character = text_[at_++];
            switch (character) {
                case '\\':
                    Escape();
                    break;
                case '[':
                    Class();
                    break;
                case '(':
                    OpenGroup();
                    break;
                case ')':
                    CloseGroup();
                    break;
                case '|':
                    Alternative();
                    break;
                case '*':
                case '?':
                case '+':
                case '{':
                    Quantifier(character);
                    break;
                case '.':
                    Put(".", R"([^\r\n])", Item::Other);
                    break;
                case '^':
                case '$':
                    Put(std::string(1, character), Item::Edge);
                    break;
                default:
                    Plain(character);
            }
        }
        if (line_end_)
            return Failure{"A line end cannot be found: lines are looked through one by one"};
        EndRun();
        if (!required_known_)
            read_.required.clear();
        return std::move(read_);
    }

  private:
    enum class Item { None, Plain, Other, Edge, Wildcard, Quantified };

    void Put(std::string_view pcre, std::string_view re2, Item item) {
        EndRun();
        read_.pcre += pcre;
        read_.re2 += re2;
        last_ = item;
    }
    void Put(std::string_view both, Item item) { Put(both, both, item); }

    // ---- the run of plain characters ----

    void Plain(char character) {
        if (character == '\n' || character == '\r') {
            line_end_ = true;
            return;
        }
        std::string piece(1, character);
        while (at_ < text_.size() && IsContinuation(text_[at_]))
            piece += text_[at_++];
        PutPlain(piece);
    }

    // Beyond ASCII, and for the two letters that have another capital there, case is not a matter
    // of one bit.
    bool FoldsOddly(std::string_view piece) const {
        const char lower = AsciiLower(piece.front());
        return !match_case_ && (piece.size() > 1 || static_cast<unsigned char>(lower) >= 0x80 ||
                                lower == 'k' || lower == 's');
    }

    void PutPlain(const std::string& piece) {
        const auto byte = static_cast<unsigned char>(piece.front());
        const bool special = byte < 0x80 && byte > ' ' && !IsAsciiLetter(piece.front()) &&
                             !IsAsciiDigit(piece.front()) && byte != '_' && byte != 0x7F;
        const std::string written = special ? "\\" + piece : piece;
        read_.pcre += written;
        read_.re2 += written;
        if (depth_ == 0 && !FoldsOddly(piece)) {
            run_ += piece;
            last_piece_ = piece.size();
        } else {
            EndRun();
        }
        last_ = Item::Plain;
    }

    void EndRun() {
        if (run_.size() > read_.required.size())
            read_.required = run_;
        run_.clear();
        last_piece_ = 0;
    }

    // The last character of the run may be missing from a match.
    void DropLast() {
        run_.resize(run_.size() - last_piece_);
        EndRun();
    }

    // ---- what repeats ----

    void Quantifier(char character) {
        if (wildcards_ && (character == '*' || character == '?') && TakesWildcard()) {
            // A second "*" adds nothing.
            if (character == '*' && last_ == Item::Wildcard && read_.pcre.ends_with('*'))
                return;
            const std::string times(1, character);
            Put("." + times, R"([^\r\n])" + times, Item::Wildcard);
            return;
        }
        if (character == '{' && !IsCount()) {
            PutPlain("{");
            return;
        }
        if (character != '+' && last_ == Item::Plain)
            DropLast();
        std::string written(1, character);
        if (character == '{') {
            const std::size_t end = text_.find('}', at_) + 1;
            written += text_.substr(at_, end - at_);
            at_ = end;
        }
        Put(written, Item::Quantified);
    }
    bool TakesWildcard() const {
        return last_ == Item::None || last_ == Item::Plain || last_ == Item::Edge ||
               last_ == Item::Wildcard;
    }
    // "{2}", "{2,}", "{2,3}"; any other brace stands for itself.
    bool IsCount() const {
        const std::size_t end = text_.find_first_not_of("0123456789,", at_);
        return at_ < text_.size() && IsAsciiDigit(text_[at_]) && end != std::string_view::npos &&
               text_[end] == '}';
    }

    // ---- groups ----

    void OpenGroup() {
        const std::string_view rest = text_.substr(at_);
        constexpr std::string_view kHarmless[] = {"?:", "?=", "?!", "?<", "?P<", "?>"};
        bool known = !rest.starts_with('?') && !rest.starts_with('*');
        for (const std::string_view harmless : kHarmless)
            known = known || rest.starts_with(harmless);
        const bool case_only = rest.starts_with("?i)") || rest.starts_with("?i:");
        if (!known) {
            required_known_ = false;
            read_.within_line = read_.within_line && case_only;
        }
        const bool flags = rest.starts_with('?');
        Put("(", Item::None);
        if (flags) {
            const std::size_t end = rest.find_first_of(":=!>)");
            const std::size_t length =
                end == std::string_view::npos ? rest.size() : end + (rest[end] == ')' ? 0 : 1);
            Put(rest.substr(0, length), Item::None);
            at_ += length;
        }
        ++depth_;
    }
    void CloseGroup() {
        Put(")", Item::Other);
        depth_ -= depth_ > 0 ? 1 : 0;
    }
    void Alternative() {
        required_known_ = required_known_ && depth_ > 0;
        Put("|", Item::None);
    }

    // ---- escapes ----

    void Escape() {
        if (at_ == text_.size()) {
            Put("\\", Item::Other);
            return;
        }
        const char character = text_[at_++];
        switch (character) {
            case 'n':
            case 'r':
                line_end_ = true;
                return;
            case 't':
                PutPlain("\t");
                return;
            case 's':
                Put("[" + std::string(kBlanks) + "]", Item::Other);
                return;
            case 'S':
                Put("[^\\r\\n" + std::string(kBlanks) + "]", Item::Other);
                return;
            case 'W':
            case 'D':
                Put(std::string("[^\\r\\n\\") + AsciiLower(character) + "]", Item::Other);
                return;
            case 'Q':
                Quoted();
                return;
            default:
                OtherEscape(character);
        }
    }
    void OtherEscape(char character) {
        if (!IsAsciiLetter(character) && !IsAsciiDigit(character)) {
            Plain(character);
            return;
        }
        // "\\B" is true between CR and LF, and so not harmless.
        constexpr std::string_view kHarmless = "wdbhNE123456789";
        if (kHarmless.find(character) == std::string_view::npos)
            read_.within_line = false;
        // What may name a character with more letters behind it ("\x41") is left to the libraries,
        // and its letters are no literal text.
        constexpr std::string_view kLong = "xopPkgNcu0";
        if (kLong.find(character) != std::string_view::npos)
            required_known_ = false;
        Put(std::string("\\") + character, Item::Other);
    }
    void Quoted() {
        const std::size_t end = text_.find("\\E", at_);
        const std::string_view quoted = text_.substr(at_, end - at_);
        const std::size_t behind = end == std::string_view::npos ? text_.size() : end + 2;
        const std::size_t quoted_end = at_ + quoted.size();
        while (at_ < quoted_end && !line_end_)
            Plain(text_[at_++]);
        at_ = behind;
    }

    // ---- classes ----

    void Class() {
        std::string written = "[";
        bool negated = false;
        if (at_ < text_.size() && text_[at_] == '^') {
            negated = true;
            ++at_;
            written += "^\\r\\n" + PlainHyphen();
        }
        if (at_ < text_.size() && text_[at_] == ']') {
            written += "\\]";
            ++at_;
        }
        while (at_ < text_.size() && text_[at_] != ']' && !line_end_)
            written += ClassPiece(negated);
        if (at_ < text_.size())
            written += text_[at_++];
        Put(written, Item::Other);
    }

    // Behind what was put in, a hyphen must not become a range.
    std::string PlainHyphen() {
        if (!text_.substr(at_).starts_with('-'))
            return "";
        ++at_;
        return "\\-";
    }

    // "[:alpha:]"; empty where none stands here, behind the bracket.
    std::string NamedClass(bool negated) {
        const std::size_t end =
            text_.substr(at_).starts_with(':') ? text_.find(":]", at_) : std::string_view::npos;
        if (end == std::string_view::npos)
            return {};
        read_.within_line = read_.within_line && negated;
        std::string name = "[" + std::string(text_.substr(at_, end + 2 - at_));
        at_ = end + 2;
        return name;
    }

    // A range that ends in a control character, or one named by its number, may hold a line end.
    std::string ClassPiece(bool negated) {
        const char character = text_[at_++];
        if (character == '[') {
            std::string name = NamedClass(negated);
            return name.empty() ? "\\[" : name;
        }
        if (character == '\\' && at_ < text_.size())
            return EscapedInClass(negated);
        if (!negated && static_cast<unsigned char>(character) < ' ')
            read_.within_line = false;
        line_end_ = line_end_ || (!negated && character == '\n');
        return {character};
    }

    std::string EscapedInClass(bool negated) {
        const char escaped = text_[at_++];
        if (escaped == 's')
            return std::string(kBlanks) + PlainHyphen();
        if (!negated && (escaped == 'n' || escaped == 'r'))
            line_end_ = true;
        constexpr std::string_view kHarmless = "wdt";
        const bool letter = IsAsciiLetter(escaped) || IsAsciiDigit(escaped);
        if (!negated && letter && kHarmless.find(escaped) == std::string_view::npos)
            read_.within_line = false;
        return {'\\', escaped};
    }

    std::string_view text_;
    bool wildcards_;
    bool match_case_;
    std::size_t at_ = 0;
    ReadExpression read_;
    Item last_ = Item::None;
    std::string run_;
    std::size_t last_piece_ = 0;
    int depth_ = 0;
    bool required_known_ = true;
    bool line_end_ = false;
};

}  // namespace

Result<ReadExpression> PrepareExpression(std::string_view text, FindSyntax syntax,
                                         bool match_case) {
    return ExpressionReader(text, syntax, match_case).Read();
}

}  // namespace zorvane
