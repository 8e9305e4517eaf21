#include "compare/engine/line_filter.h"

#include <algorithm>
#include <array>
#include <pcre2.h>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::uint32_t kMatchLimit =
    200000;  // steps for one match; a hostile expression ends here
constexpr std::string_view kBetween = "@@";

struct CodeFree {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct DataFree {
    void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
};
struct ContextFree {
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
};

struct Expression {
    std::unique_ptr<pcre2_code, CodeFree> code;
    std::unique_ptr<pcre2_match_data, DataFree> data;
};

PCRE2_SPTR Units(std::string_view text) {
    return reinterpret_cast<PCRE2_SPTR>(text.data());  // NOLINT: the library's own unit type
}

std::vector<std::string> Separate(std::string_view expressions) {
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = expressions.find(kBetween);
        if (end != 0 && !expressions.empty())
            parts.emplace_back(expressions.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        expressions.remove_prefix(end + kBetween.size());
    }
}

Result<Expression> Compile(const std::string& text) {
    const std::string pattern = TranslateExpression(text);
    int error = 0;
    PCRE2_SIZE offset = 0;
    Expression expression;
    expression.code.reset(pcre2_compile(Units(pattern), pattern.size(),
                                        PCRE2_UTF | PCRE2_MATCH_INVALID_UTF, &error, &offset,
                                        nullptr));
    if (!expression.code) {
        std::array<PCRE2_UCHAR, 256> message{};
        pcre2_get_error_message(error, message.data(), message.size());
        return Failure{"The expression \"" + text + "\"" + std::string(kUnusable) +
                       std::string(message.begin(),
                                   std::find(message.begin(), message.end(), PCRE2_UCHAR{0}))};
    }
    pcre2_jit_compile(expression.code.get(), PCRE2_JIT_COMPLETE);
    expression.data.reset(pcre2_match_data_create_from_pattern(expression.code.get(), nullptr));
    return expression;
}

bool IsBlank(char32_t code) {
    return (code >= 9 && code <= 13) || code == ' ' || code == 0xA0 || code == 0x3000 ||
           (code >= 0x2000 && code <= 0x200A);
}

bool IsAscii(std::string_view text) {
    for (const char character : text) {
        if (static_cast<unsigned char>(character) >= 0x80)
            return false;
    }
    return true;
}

void AppendAscii(std::string_view line, const FilterSwitches& switches, std::string& out) {
    for (const char character : line) {
        if (switches.ignore_whitespace && IsBlank(static_cast<unsigned char>(character)))
            continue;
        out.push_back(switches.ignore_case ? AsciiLower(character) : character);
    }
}

void AppendUnicode(std::string_view line, const FilterSwitches& switches, std::string& out) {
    std::u16string text = ToUtf16(line);
    if (switches.ignore_whitespace)
        std::erase_if(text, [](char16_t unit) { return IsBlank(unit); });
    AppendUtf8(switches.ignore_case ? FoldCase(text) : text, out);
}

// One that stands for any character itself.
bool HasDotInFront(std::string_view expression, std::size_t at) {
    return at > 0 && expression[at - 1] == '.' && (at < 2 || expression[at - 2] != '\\');
}

}  // namespace

struct LineFilter::Expressions {
    std::vector<Expression> list;
    std::unique_ptr<pcre2_match_context, ContextFree> context{pcre2_match_context_create(nullptr)};

    // Leaves out what `expression` matches. False when nothing matched.
    bool Remove(const Expression& expression, std::string_view line, std::string& out) const {
        std::size_t at = 0;
        std::size_t kept_to = 0;
        bool removed = false;
        while (at <= line.size()) {
            const int count = pcre2_match(expression.code.get(), Units(line), line.size(), at, 0,
                                          expression.data.get(), context.get());
            if (count < 0)
                break;
            const PCRE2_SIZE* found = pcre2_get_ovector_pointer(expression.data.get());
            // \K can put the start behind the end; such a match leaves nothing out.
            if (found[1] > found[0] && found[0] >= kept_to) {
                out.append(line.substr(kept_to, found[0] - kept_to));
                kept_to = found[1];
                removed = true;
            }
            at = std::max(found[1], at) + (found[1] > at ? 0U : 1U);
        }
        if (removed)
            out.append(line.substr(kept_to));
        return removed;
    }
};

LineFilter::LineFilter() = default;
LineFilter::~LineFilter() = default;
LineFilter::LineFilter(LineFilter&&) noexcept = default;
LineFilter& LineFilter::operator=(LineFilter&&) noexcept = default;

std::string TranslateExpression(std::string_view expression) {
    std::string pattern;
    bool in_class = false;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        const char character = expression[i];
        if (character == '\\' && i + 1 < expression.size()) {
            pattern.append(expression.substr(i++, 2));
            continue;
        }
        if (in_class || character != '*') {
            in_class = character == '[' || (in_class && character != ']');
            pattern.push_back(character);
            continue;
        }
        pattern += HasDotInFront(expression, i) ? "*" : ".*";
        if (i + 1 < expression.size())
            pattern += "?";
    }
    return pattern;
}

Status LineFilter::Set(const FilterSwitches& switches, const std::string& expressions) {
    switches_ = switches;
    if (!switches.use_expressions)
        expressions_ = nullptr;
    if (!switches.use_expressions || (expressions_ && expressions == expressions_text_))
        return Status::Ok();
    auto compiled = std::make_unique<Expressions>();
    pcre2_set_match_limit(compiled->context.get(), kMatchLimit);
    for (const std::string& text : Separate(expressions)) {
        Result<Expression> expression = Compile(text);
        if (!expression.ok())
            return expression.failure();
        compiled->list.push_back(std::move(expression).value());
    }
    expressions_ = std::move(compiled);
    expressions_text_ = expressions;
    return Status::Ok();
}

bool LineFilter::IsIdentity() const {
    const bool expressions = expressions_ && !expressions_->list.empty();
    return !switches_.ignore_case && !switches_.ignore_whitespace && !expressions;
}

std::string_view LineFilter::Key(std::string_view line, std::string& buffer) const {
    std::string_view rest = line;
    std::string left;
    if (expressions_) {
        for (const Expression& expression : expressions_->list) {
            std::string out;
            if (!expressions_->Remove(expression, rest, out))
                continue;
            left = std::move(out);
            rest = left;
        }
    }
    buffer.clear();
    if (!switches_.ignore_case && !switches_.ignore_whitespace)
        buffer.append(rest);
    else if (IsAscii(rest))
        AppendAscii(rest, switches_, buffer);
    else
        AppendUnicode(rest, switches_, buffer);
    return buffer;
}

}  // namespace zorvane
