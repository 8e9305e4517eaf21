#include "compare/document/rtf_body.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "common/base/append_in_parts.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// By the numbers of `Underline`.
constexpr std::array<std::string_view, 18> kUnderlines = {
    "\\ulnone",  "\\ul",       "\\ulw",      "\\uldb",      "\\uld",        "\\uldash",
    "\\uldashd", "\\uldashdd", "\\ulwave",   "\\ulth",      "\\ululdbwave", "\\ulldash",
    "\\ulhwave", "\\ulthd",    "\\ulthdash", "\\ulthdashd", "\\ulthdashdd", "\\ulthldash"};
constexpr std::array<std::string_view, 4> kAlignments = {"\\ql", "\\qc", "\\qr", "\\qj"};
constexpr std::array<std::string_view, 4> kTabKinds = {"", "\\tqc", "\\tqr", "\\tqdec"};

bool IsPlain(unsigned unit) {
    return unit >= 0x20 && unit < 0x7F && unit != '\\' && unit != '{' && unit != '}';
}

void AppendNumber(std::string& out, std::string_view word, std::int32_t number) {
    std::array<char, 12> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out += word;
    out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

// The place of `value` in `list`, at the end when it is new.
template <class T>
std::int32_t PlaceIn(std::vector<T>& list, const T& value) {
    const auto found = std::find(list.begin(), list.end(), value);
    const auto place = static_cast<std::int32_t>(found - list.begin());
    if (found == list.end())
        list.push_back(value);
    return place;
}

}  // namespace

void RtfBody::Number(std::string_view word, std::int32_t number) {
    AppendNumber(body_, word, number);
}

void RtfBody::NonZero(std::string_view word, std::int32_t number) {
    if (number != 0)
        Number(word, number);
}

std::int32_t RtfBody::FontNumber(const FontName& font) {
    return PlaceIn(fonts_, font);
}

std::int32_t RtfBody::ColorNumber(Color color) {
    return PlaceIn(colors_, color) + 1;
}

void RtfBody::RowStart(const std::vector<std::int32_t>& cell_ends) {
    body_ += "\\trowd\\trgaph100";
    for (const std::int32_t end : cell_ends) {
        for (const std::string_view edge : {"t", "l", "b", "r"})
            body_.append("\\clbrdr").append(edge).append("\\brdrs\\brdrw10");
        Number("\\cellx", end);
    }
    body_ += ' ';
}

void RtfBody::ParagraphStart(const ParagraphFormat& format) {
    body_ += "\\pard";
    body_ += kAlignments[static_cast<std::size_t>(format.alignment)];
    if (format.right_to_left)
        body_ += "\\rtlpar";
    NonZero("\\li", format.left_indent);
    NonZero("\\ri", format.right_indent);
    NonZero("\\fi", format.first_line_indent);
    NonZero("\\sb", format.space_before);
    NonZero("\\sa", format.space_after);
    NonZero("\\sl", format.line_spacing);
    if (format.line_spacing_multiple)
        body_ += "\\slmult1";
    for (const TabStop& tab : format.tabs) {
        if (tab.kind != TabKind::Bar)
            body_ += kTabKinds[static_cast<std::size_t>(tab.kind)];
        Number(tab.kind == TabKind::Bar ? "\\tb" : "\\tx", tab.twips);
    }
    body_ += ' ';
}

void RtfBody::WriteColor(std::string_view word, const std::optional<Color>& color) {
    if (color)
        Number(word, ColorNumber(*color));
}

// Some readers hold raised and lowered text back until its end is told, and lose the rest of the
// paragraph when it is not.
void RtfBody::EndBaseline() {
    if (std::exchange(off_baseline_, false))
        body_ += "\\nosupersub";
}

void RtfBody::Chars(const CharFormat& format) {
    EndBaseline();
    off_baseline_ = format.baseline != Baseline::Normal;
    Number("\\plain\\f", FontNumber(format.font));
    Number("\\fs", format.half_points);
    if (format.bold)
        body_ += "\\b";
    if (format.italic)
        body_ += "\\i";
    if (format.underline != Underline::None)
        body_ += kUnderlines[static_cast<std::size_t>(format.underline)];
    if (format.strikeout)
        body_ += "\\strike";
    if (off_baseline_)
        body_ += format.baseline == Baseline::Superscript ? "\\super" : "\\sub";
    WriteColor("\\cf", format.fore_color);
    // One word for each family of readers.
    WriteColor("\\chcbpat", format.back_color);
    WriteColor("\\cb", format.back_color);
    body_ += ' ';
}

void RtfBody::Units(std::u16string_view text) {
    for (const char16_t unit : text) {
        if (IsPlain(unit))
            body_ += static_cast<char>(unit);
        else
            WriteSpecial(unit);
    }
}

void RtfBody::Text(std::string_view utf8) {
    while (!utf8.empty()) {
        std::size_t plain = 0;
        while (plain < utf8.size() && IsPlain(static_cast<unsigned char>(utf8[plain])))
            ++plain;
        body_ += utf8.substr(0, plain);
        utf8.remove_prefix(plain);
        std::size_t special = 0;
        while (special < utf8.size() && !IsPlain(static_cast<unsigned char>(utf8[special])))
            ++special;
        if (special == 1)
            WriteSpecial(static_cast<unsigned char>(utf8.front()) < 0x80
                             ? static_cast<char16_t>(utf8.front())
                             : u'\uFFFD');
        else if (special > 0)
            Units(ToUtf16(utf8.substr(0, special)));
        utf8.remove_prefix(special);
    }
}

void RtfBody::ListLabel(std::string_view utf8, const CharFormat& format) {
    body_ += "{\\pntext";
    Chars(format);
    Text(utf8);
    body_ += "\\tab}";
}

void RtfBody::Beside(const BesideItem& item) {
    body_ += "{\\*\\zvbeside ";
    body_ += EncodeBeside(item);
    body_ += '}';
}

void RtfBody::WriteSpecial(char16_t unit) {
    switch (unit) {
        case u'\\':
        case u'{':
        case u'}':
            body_ += '\\';
            body_ += static_cast<char>(unit);
            return;
        case u'\n':
            return;
        case u'\r':
            body_ += "\\par\r\n";
            return;
        case u'\t':
            body_ += "\\tab ";
            return;
        case 11:
            body_ += "\\line ";
            return;
        case 7:
            // Other readers see a tab; ours knows by the group in front of it what it was.
            body_ += "{\\*\\zvcell}\\tab ";
            return;
        default:
            break;
    }
    if (unit < 0x20)
        return;
    Number("\\u", static_cast<std::int16_t>(unit));
    body_ += '?';
}

void RtfBody::Grow(std::size_t bytes, StopCheck& stop) {
    std::string wider;
    wider.reserve(std::max(body_.capacity() * 2, body_.size() + bytes));
    AppendInParts(std::string_view(body_), stop, wider);
    body_ = std::move(wider);
}

RtfParts RtfBody::FinishInParts() {
    EndBaseline();
    if (fonts_.empty())
        fonts_.emplace_back(CharFormat{}.font);
    std::string head = "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl";
    std::swap(head, body_);  // so that a font's name is written as text is
    std::string text = std::move(head);
    for (std::size_t i = 0; i < fonts_.size(); ++i) {
        Number("{\\f", static_cast<std::int32_t>(i));
        body_ += "\\fnil\\fcharset0 ";
        Text(fonts_[i].view());
        body_ += ";}";
    }
    body_ += "}{\\colortbl;";
    for (const Color color : colors_) {
        Number("\\red", color.value & 0xFF);
        Number("\\green", (color.value >> 8) & 0xFF);
        Number("\\blue", (color.value >> 16) & 0xFF);
        body_ += ';';
    }
    body_ += "}\r\n";
    text += "}\r\n";
    return {std::exchange(body_, {}), std::move(text)};
}

std::string RtfBody::Finish() {
    RtfParts parts = FinishInParts();
    return std::move(parts.body.insert(0, parts.head));
}

}  // namespace zorvane
