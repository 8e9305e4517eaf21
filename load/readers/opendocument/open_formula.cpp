#include "load/readers/opendocument/open_formula.h"

#include <algorithm>

namespace zorvane {
namespace {

// Behind the closing quote of what begins with one; a doubled quote is part of it.
std::size_t QuotedSize(std::string_view text) {
    std::size_t at = 1;
    while (at < text.size()) {
        if (text[at] != text[0]) {
            ++at;
        } else if (at + 1 < text.size() && text[at + 1] == text[0]) {
            at += 2;
        } else {
            return at + 1;
        }
    }
    return text.size();
}

// One end of a reference: ".A1", "$Sheet.A1", "'My sheet'.A1", "#REF!".
void AppendEnd(std::string_view end, std::string& out) {
    std::size_t name = 0;
    const std::size_t quote = end.starts_with('$') ? 1 : 0;
    if (end.substr(quote).starts_with('\''))
        name = quote + QuotedSize(end.substr(quote));
    const std::size_t point = end.find('.', name);
    if (point == std::string_view::npos) {
        out += end;
        return;
    }
    if (point > quote) {
        out += end.substr(quote, point - quote);  // that the sheet's name is fixed, nobody needs
        out += '!';
    }
    out += end.substr(point + 1);
}

// What stands between brackets. The sheet of the second end is left out when it is not told.
void AppendReference(std::string_view reference, std::string& out) {
    while (true) {
        std::size_t colon = 0;
        while (colon < reference.size() && reference[colon] != ':')
            colon += reference[colon] == '\'' ? QuotedSize(reference.substr(colon)) : 1;
        AppendEnd(reference.substr(0, colon), out);
        if (colon >= reference.size())
            return;
        out += ':';
        reference.remove_prefix(colon + 1);
    }
}

std::size_t ReferenceEnd(std::string_view text) {
    std::size_t at = 1;
    while (at < text.size() && text[at] != ']')
        at += text[at] == '\'' ? QuotedSize(text.substr(at)) : 1;
    return std::min(at, text.size());
}

class FormulaText {
  public:
    FormulaText(std::string_view formula, std::string& out) : rest_(formula), out_(out) {}

    void Run() {
        while (!rest_.empty())
            rest_.remove_prefix(Item(rest_.front()));
    }

  private:
    // Appends what begins here and gives its size.
    std::size_t Item(char first) {
        if (first == '"' || first == '\'') {
            const std::size_t size = QuotedSize(rest_);
            out_ += rest_.substr(0, size);
            return size;
        }
        if (first == '[') {
            const std::size_t end = ReferenceEnd(rest_);
            AppendReference(rest_.substr(1, end - 1), out_);
            return std::min(end + 1, rest_.size());
        }
        out_ += Sign(first);
        return 1;
    }

    // Semicolons part arguments; inside of braces bars part rows.
    char Sign(char sign) {
        if (sign == '{')
            ++braces_;
        if (sign == '}')
            --braces_;
        if (sign == ';')
            return ',';
        return sign == '|' && braces_ > 0 ? ';' : sign;
    }

    std::string_view rest_;
    std::string& out_;
    int braces_ = 0;
};

}  // namespace

void AppendOpenFormula(std::string_view formula, std::string& out) {
    const std::size_t equal = formula.find('=');
    const std::size_t colon = formula.find(':');
    const bool prefixed = colon < equal;
    const bool open = !prefixed || formula.starts_with("of:") || formula.starts_with("oooc:");
    if (prefixed)
        formula.remove_prefix(colon + 1);
    if (!open) {
        out += formula;
        return;
    }
    FormulaText(formula, out).Run();
}

}  // namespace zorvane
