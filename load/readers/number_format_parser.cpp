#include <algorithm>
#include <charconv>

#include "load/readers/number_format_parts.h"

namespace zorvane::number_format {
namespace {

constexpr std::size_t kLongestCode = 4096;
constexpr std::int32_t kMostPlaceholders = 200;

char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool StartsWith(std::string_view text, std::string_view lower_word) {
    return text.size() >= lower_word.size() &&
           std::equal(lower_word.begin(), lower_word.end(), text.begin(),
                      [](char word, char character) { return word == Lower(character); });
}

// Bytes of the UTF-8 character that begins here.
std::size_t CharacterSize(std::string_view text) {
    if (text.empty())
        return 0;
    std::size_t size = 1;
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80)
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
        const char first = Lower(inside.front());
        if (first == '$')
            return AddLiteral(inside.substr(1, inside.find('-') - 1));
        if (first == '<' || first == '>' || first == '=')
            return ReadCondition(inside);
        const bool alike = std::all_of(inside.begin(), inside.end(),
                                       [first](char other) { return Lower(other) == first; });
        if (alike && (first == 'h' || first == 'm' || first == 's')) {
            Add(PartKind::Elapsed, first == 'm' ? 'n' : first,
                static_cast<std::int32_t>(inside.size()));
            last_time_ = first;
        }
        return true;  // colours and calendars change nothing that is compared
    }

    bool ReadCondition(std::string_view inside) {
        Condition condition;
        while (!inside.empty() && std::string_view("<>=").find(inside.front()) != inside.npos) {
            condition.sign += inside.front();
            inside.remove_prefix(1);
        }
        const auto [end, error] =
            std::from_chars(inside.data(), inside.data() + inside.size(), condition.bound);
        if (error != std::errc() || condition.sign.size() > 2)
            return false;
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
        const char letter = Lower(rest_.front());
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
        while (count < rest_.size() && Lower(rest_[count]) == letter)
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
        last_time_ = letter == 'n' ? 'n' : letter;
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
    char last_time_ = 0;  // letter of the date part before, whatever stands between
};

std::string_view CharacterOf(PartKind kind) {
    switch (kind) {
        case PartKind::Point:
            return ".";
        case PartKind::Comma:
            return ",";
        case PartKind::Percent:
            return "%";
        case PartKind::Slash:
            return "/";
        default:
            return {};
    }
}

void MakeLiteral(Part& part) {
    if (part.kind == PartKind::Digit)
        part.text = std::string(1, part.what);
    else if (part.kind == PartKind::Exponent)
        part.text = std::string("E") + part.what;
    else
        part.text = CharacterOf(part.kind);
    part.kind = PartKind::Literal;
}

void CompleteDate(Section& section) {
    section.kind = SectionKind::Date;
    for (Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Digit:
            case PartKind::Point:
            case PartKind::Comma:
            case PartKind::Percent:
            case PartKind::Exponent:
            case PartKind::Slash:
                MakeLiteral(part);
                break;
            case PartKind::SubSecond:
                section.sub_seconds = std::max(section.sub_seconds, part.count);
                break;
            case PartKind::AmPm:
                section.twelve_hours = true;
                break;
            case PartKind::Elapsed:
                section.elapsed = true;
                break;
            default:
                break;
        }
    }
}

bool IsDigit(const Part& part) {
    return part.kind == PartKind::Digit;
}

// "16" behind the slash stands there as literal digits, or begins with 1 to 9 and goes on with 0.
std::int32_t FixedDenominator(std::vector<Part>& parts, std::size_t slash) {
    std::string digits;
    std::size_t end = slash + 1;
    if (end >= parts.size() || parts[end].kind != PartKind::Literal)
        return 0;
    const std::string text = parts[end].text;
    const std::size_t size = std::min(text.find_first_not_of("0123456789"), text.size());
    digits = text.substr(0, size);
    std::string behind = text.substr(size);
    ++end;
    while (behind.empty() && end < parts.size() && IsDigit(parts[end]) && parts[end].what == '0') {
        digits += '0';
        ++end;
    }
    std::int32_t number = 0;
    const auto [stop, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || number <= 0 || number > 99'999)
        return 0;
    const auto first = parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1;
    parts.erase(first, parts.begin() + static_cast<std::ptrdiff_t>(end));
    if (!behind.empty())
        parts.insert(parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1,
                     {PartKind::Literal, 0, 0, behind});
    parts.insert(parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1,
                 {PartKind::FixedDenominator, 0, 0, digits});
    return number;
}

// True when the slash is that of a fraction, that is when digits stand on both sides.
bool CompleteFraction(Section& section) {
    std::vector<Part>& parts = section.parts;
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [](const Part& part) { return part.kind == PartKind::Slash; });
    if (found == parts.begin() || found == parts.end() || !IsDigit(*(found - 1)))
        return false;
    const auto slash = static_cast<std::size_t>(found - parts.begin());
    std::int32_t places = 0;
    for (std::size_t i = slash + 1; i < parts.size() && IsDigit(parts[i]); ++i)
        ++places;
    if (places == 0)
        section.denominator = FixedDenominator(parts, slash);
    if (places == 0 && section.denominator == 0)
        return false;
    section.most_denominator = 9;
    for (; places > 1 && section.most_denominator < 99'999; --places)
        section.most_denominator = section.most_denominator * 10 + 9;
    section.numerator = slash;
    while (section.numerator > 0 && IsDigit(parts[section.numerator - 1]))
        --section.numerator;
    section.integer_digits = static_cast<std::int32_t>(std::count_if(
        parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(section.numerator), IsDigit));
    section.kind = SectionKind::Fraction;
    return true;
}

// A comma between digits groups them; one or more behind the last digit before the point divide.
void ResolveCommas(Section& section) {
    std::vector<Part>& parts = section.parts;
    const auto digit_behind = [&parts](std::size_t index) {
        for (++index; index < parts.size(); ++index) {
            if (IsDigit(parts[index]))
                return true;
            if (parts[index].kind == PartKind::Point || parts[index].kind == PartKind::Exponent)
                return false;
        }
        return false;
    };
    bool digit_before = false;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        digit_before = digit_before || IsDigit(parts[i]);
        if (parts[i].kind != PartKind::Comma)
            continue;
        if (!digit_before) {
            MakeLiteral(parts[i]);
        } else if (digit_behind(i)) {
            section.grouped = true;
        } else {
            section.scale -= 3;
        }
    }
    parts.erase(std::remove_if(parts.begin(), parts.end(),
                               [](const Part& part) { return part.kind == PartKind::Comma; }),
                parts.end());
}

void CountDigits(Section& section) {
    std::int32_t* counter = &section.integer_digits;
    bool point = false;
    for (Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Digit:
                ++*counter;
                break;
            case PartKind::Point:
                if (point)
                    MakeLiteral(part);
                else if (counter == &section.integer_digits)
                    counter = &section.decimals;
                point = true;
                break;
            case PartKind::Exponent:
                if (section.kind == SectionKind::Exponential) {
                    MakeLiteral(part);
                    break;
                }
                section.kind = SectionKind::Exponential;
                counter = &section.exponent_digits;
                break;
            case PartKind::Percent:
                section.scale += 2;
                break;
            case PartKind::Slash:
                MakeLiteral(part);
                break;
            default:
                break;
        }
    }
}

bool Complete(Section& section) {
    bool date = false;
    bool general = false;
    for (const Part& part : section.parts) {
        date = date || part.kind == PartKind::Date || part.kind == PartKind::Elapsed ||
               part.kind == PartKind::AmPm;
        general = general || part.kind == PartKind::General;
        section.has_text = section.has_text || part.kind == PartKind::Text;
    }
    if (date) {
        CompleteDate(section);
        return true;
    }
    if (general || section.has_text) {
        section.kind = general ? SectionKind::General : SectionKind::Text;
        return true;
    }
    if (!CompleteFraction(section)) {
        ResolveCommas(section);
        CountDigits(section);
    }
    return section.integer_digits + section.decimals + section.exponent_digits < kMostPlaceholders;
}

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
        if (!SectionParser(code).Parse(section) || !Complete(section))
            return std::nullopt;
        if (code.empty())
            break;
        code.remove_prefix(1);  // the semicolon; what ends with one has an empty section behind it
    }
    return sections;
}

}  // namespace zorvane::number_format
