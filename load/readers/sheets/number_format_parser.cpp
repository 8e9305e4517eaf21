#include <algorithm>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/text_bytes.h"
#include "load/readers/sheets/number_format_parts.h"

namespace zorvane::number_format {
namespace {

constexpr std::size_t kLongestCode = 4096;

bool StartsWith(std::string_view text, std::string_view lower_word) {
    return text.size() >= lower_word.size() &&
           std::equal(lower_word.begin(), lower_word.end(), text.begin(),
                      [](char word, char character) { return word == AsciiLower(character); });
}

// Bytes of the UTF-8 character that begins here.
std::size_t CharacterSize(std::string_view text) {
    if (text.empty())
        return 0;
    std::size_t size = 1;
    while (size < text.size() && IsContinuation(text[size]))
        ++size;
    return size;
}

// Reads the parts of one section and ends behind its semicolon.
class SectionParser {
  public:
    explicit SectionParser(std::string_view& rest) : rest_(rest) {}

    // False when the code cannot be understood.
    bool Parse(Section& section) {
        section_ = &section;
        while (!rest_.empty() && rest_.front() != ';') {
            if (!Next())
                return false;
        }
        return true;
    }

    /// The section means the long date of the reader's system, whatever it says.
    bool IsSystemDate() const { return system_date_; }

  private:
    bool Next() {
        switch (rest_.front()) {
            case '"':
                return Quoted();
            case '\\':
                return Skip(1), Literal(CharacterSize(rest_));
            case '_':
                Skip(1);
                Skip(CharacterSize(rest_));
                return AddLiteral(" ");
            case '*':
                Skip(1);
                Skip(CharacterSize(rest_));
                return true;
            case '[':
                return Bracket();
            default:
                return Word() || Placeholder() || Literal(CharacterSize(rest_));
        }
    }

    void Skip(std::size_t count) { rest_.remove_prefix(std::min(count, rest_.size())); }

    bool Add(PartKind kind, char what, std::int32_t count, std::string text = {}) {
        section_->parts.push_back({kind, what, count, std::move(text)});
        return true;
    }
    bool AddLiteral(std::string_view text) {
        std::vector<Part>& parts = section_->parts;
        if (!parts.empty() && parts.back().kind == PartKind::Literal)
            parts.back().text += text;
        else
            Add(PartKind::Literal, 0, 0, std::string(text));
        return true;
    }
    bool Literal(std::size_t size) {
        AddLiteral(rest_.substr(0, size));
        Skip(size);
        return true;
    }

    bool Quoted() {
        Skip(1);
        const std::size_t end = rest_.find('"');
        AddLiteral(rest_.substr(0, end));
        Skip(end == std::string_view::npos ? rest_.size() : end + 1);
        return true;
    }

    bool Bracket() {
        const std::size_t end = rest_.find(']');
        if (end == std::string_view::npos)
            return false;
        const std::string_view inside = rest_.substr(1, end - 1);
        Skip(end + 1);
        if (inside.empty())
            return true;
        const char first = AsciiLower(inside.front());
        if (StartsWith(inside, "$-f800") || StartsWith(inside, "$-x-sysdate"))
            system_date_ = true;
        if (first == '$')
            return Locale(inside.substr(1));
        if (first == '<' || first == '>' || first == '=')
            return ReadCondition(inside);
        const bool alike = std::all_of(inside.begin(), inside.end(),
                                       [first](char other) { return AsciiLower(other) == first; });
        if (alike && (first == 'h' || first == 'm' || first == 's')) {
            Add(PartKind::Elapsed, first == 'm' ? 'n' : first,
                static_cast<std::int32_t>(inside.size()));
            last_time_ = first;
        }
        return true;  // colours and calendars change nothing that is compared
    }

    // "€-407": a currency's sign and the number of a language.
    bool Locale(std::string_view inside) {
        const std::size_t dash = std::min(inside.rfind('-'), inside.size());
        if (dash < inside.size()) {
            const auto locale = ReadNumber<std::uint32_t>(inside.substr(dash + 1), 16);
            section_->locale = locale.value.value_or(section_->locale);
        }
        return dash == 0 || AddLiteral(inside.substr(0, dash));
    }

    bool ReadCondition(std::string_view inside) {
        Condition condition;
        while (!inside.empty() && std::string_view("<>=").find(inside.front()) != inside.npos) {
            condition.sign += inside.front();
            inside.remove_prefix(1);
        }
        const auto bound = ReadNumber<double>(inside).value;
        if (!bound || condition.sign.size() > 2)
            return false;
        condition.bound = *bound;
        section_->condition = condition;
        return true;
    }

    // Words and letters with a meaning. False when there is none here.
    bool Word() {
        if (StartsWith(rest_, "general")) {
            Skip(7);
            return Add(PartKind::General, 0, 0);
        }
        if (StartsWith(rest_, "am/pm")) {
            Skip(5);
            return Add(PartKind::AmPm, 'A', 0, "AMPM");
        }
        if (StartsWith(rest_, "a/p")) {
            const std::string text = {rest_[0], rest_[2]};
            Skip(3);
            return Add(PartKind::AmPm, 'a', 0, text);
        }
        const char letter = AsciiLower(rest_.front());
        if (letter == 'e' && rest_.size() > 1 && (rest_[1] == '+' || rest_[1] == '-')) {
            const char sign = rest_[1];
            Skip(2);
            return Add(PartKind::Exponent, sign, 0);
        }
        return std::string_view("ymdhsebg").find(letter) != std::string_view::npos &&
               DateLetters(letter);
    }

    bool DateLetters(char letter) {
        std::size_t count = 1;
        while (count < rest_.size() && AsciiLower(rest_[count]) == letter)
            ++count;
        Skip(count);
        auto number = static_cast<std::int32_t>(std::min<std::size_t>(count, 9));
        if (letter == 'g')
            return true;  // the era's name, which other calendars have
        if (letter == 'e') {
            letter = 'y';
            number = 4;
        }
        if (letter == 'm' && number <= 2 && last_time_ == 'h')
            letter = 'n';
        if (letter == 's' && last_time_ == 'm')
            MakeMinutes();
        last_time_ = letter;
        return Add(PartKind::Date, letter, number);
    }

    // The m before the seconds means minutes.
    void MakeMinutes() {
        for (std::size_t i = section_->parts.size(); i-- > 0;) {
            Part& part = section_->parts[i];
            if (part.kind != PartKind::Date)
                continue;
            if (part.what == 'm' && part.count <= 2)
                part.what = 'n';
            return;
        }
    }

    bool Placeholder() {
        const char character = rest_.front();
        switch (character) {
            case '0':
            case '#':
            case '?':
                Skip(1);
                return Add(PartKind::Digit, character, 0);
            case '.':
                Skip(1);
                return SubSeconds() || Add(PartKind::Point, 0, 0);
            case ',':
                Skip(1);
                return Add(PartKind::Comma, 0, 0);
            case '%':
                Skip(1);
                return Add(PartKind::Percent, 0, 0);
            case '/':
                Skip(1);
                return Add(PartKind::Slash, 0, 0);
            case '@':
                Skip(1);
                return Add(PartKind::Text, 0, 0);
            default:
                return false;
        }
    }

    bool SubSeconds() {
        if (last_time_ != 's' || !rest_.starts_with('0'))
            return false;
        const std::size_t count = std::min(rest_.find_first_not_of('0'), rest_.size());
        Skip(count);
        return Add(PartKind::SubSecond, 0,
                   static_cast<std::int32_t>(std::min<std::size_t>(count, 9)));
    }

    std::string_view& rest_;
    Section* section_ = nullptr;
    bool system_date_ = false;
    char last_time_ = 0;  // letter of the date part before, whatever stands between
};

}  // namespace

bool Condition::Holds(double value) const {
    if (sign == "<")
        return value < bound;
    if (sign == "<=" || sign == "=<")
        return value <= bound;
    if (sign == ">")
        return value > bound;
    if (sign == ">=" || sign == "=>")
        return value >= bound;
    if (sign == "<>" || sign == "><")
        return value != bound;
    return value == bound;
}

bool Condition::OnlyNegative() const {
    return (sign == "<" && bound <= 0) || (sign == "<=" && bound < 0) || (sign == "=" && bound < 0);
}

std::optional<std::vector<Section>> ParseSections(std::string_view code) {
    if (code.empty() || code.size() > kLongestCode)
        return std::nullopt;
    std::vector<Section> sections;
    while (sections.size() < 4) {
        Section& section = sections.emplace_back();
        SectionParser parser(code);
        bool understood = parser.Parse(section);
        if (parser.IsSystemDate()) {
            std::string_view long_date = "dddd, mmmm d, yyyy";
            section.parts.clear();
            understood = SectionParser(long_date).Parse(section);
        }
        if (!understood || !CompleteSection(section))
            return std::nullopt;
        if (code.empty())
            break;
        code.remove_prefix(1);  // the semicolon; what ends with one has an empty section behind it
    }
    return sections;
}

}  // namespace zorvane::number_format
