#include "load/readers/web/css_style.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

template <class T>
using Row = std::pair<std::string_view, T>;

template <class T, std::size_t kCount>
std::optional<T> Find(const std::array<Row<T>, kCount>& rows, std::string_view name) {
    for (const Row<T>& row : rows) {
        if (row.first == name)
            return row.second;
    }
    return std::nullopt;
}

template <class T>
void Set(std::optional<T>& property, const std::optional<T>& value) {
    if (value)
        property = value;
}

constexpr std::array<Row<CssDisplay>, 12> kDisplays = {{{"none", CssDisplay::None},
                                                        {"inline", CssDisplay::Inline},
                                                        {"inline-block", CssDisplay::Inline},
                                                        {"contents", CssDisplay::Inline},
                                                        {"block", CssDisplay::Block},
                                                        {"flex", CssDisplay::Block},
                                                        {"grid", CssDisplay::Block},
                                                        {"flow-root", CssDisplay::Block},
                                                        {"table", CssDisplay::Block},
                                                        {"list-item", CssDisplay::ListItem},
                                                        {"table-row", CssDisplay::TableRow},
                                                        {"table-cell", CssDisplay::TableCell}}};
constexpr std::array<Row<CssSpace>, 6> kSpaces = {{{"normal", CssSpace::Normal},
                                                   {"nowrap", CssSpace::Normal},
                                                   {"pre", CssSpace::Pre},
                                                   {"pre-wrap", CssSpace::Pre},
                                                   {"break-spaces", CssSpace::Pre},
                                                   {"pre-line", CssSpace::PreLine}}};
constexpr std::array<Row<Alignment>, 6> kAlignments = {{{"left", Alignment::Left},
                                                        {"start", Alignment::Left},
                                                        {"center", Alignment::Center},
                                                        {"right", Alignment::Right},
                                                        {"end", Alignment::Right},
                                                        {"justify", Alignment::Justify}}};
constexpr std::array<Row<CssTransform>, 4> kTransforms = {{{"none", CssTransform::None},
                                                           {"capitalize", CssTransform::None},
                                                           {"uppercase", CssTransform::Upper},
                                                           {"lowercase", CssTransform::Lower}}};
constexpr std::array<Row<Baseline>, 3> kBaselines = {{{"super", Baseline::Superscript},
                                                      {"sub", Baseline::Subscript},
                                                      {"baseline", Baseline::Normal}}};
// Points for the sizes that have names; a browser's medium is 12 points.
constexpr std::array<Row<int>, 8> kSizes = {{{"xx-small", 135},
                                             {"x-small", 150},
                                             {"small", 195},
                                             {"medium", 240},
                                             {"large", 270},
                                             {"x-large", 360},
                                             {"xx-large", 480},
                                             {"xxx-large", 720}}};
constexpr CssListType kNumber{CssMarker::Number, NumberStyle::Decimal, {}};
constexpr std::array<Row<CssListType>, 12> kListTypes = {
    {{"none", {CssMarker::None, NumberStyle::None, {}}},
     {"disc", {CssMarker::Bullet, NumberStyle::None, "\u2022"}},
     {"circle", {CssMarker::Bullet, NumberStyle::None, "\u25E6"}},
     {"square", {CssMarker::Bullet, NumberStyle::None, "\u25AA"}},
     {"decimal", kNumber},
     {"decimal-leading-zero", {CssMarker::Number, NumberStyle::LeadingZero, {}}},
     {"lower-alpha", {CssMarker::Number, NumberStyle::LowerLetter, {}}},
     {"lower-latin", {CssMarker::Number, NumberStyle::LowerLetter, {}}},
     {"upper-alpha", {CssMarker::Number, NumberStyle::UpperLetter, {}}},
     {"upper-latin", {CssMarker::Number, NumberStyle::UpperLetter, {}}},
     {"lower-roman", {CssMarker::Number, NumberStyle::LowerRoman, {}}},
     {"upper-roman", {CssMarker::Number, NumberStyle::UpperRoman, {}}}}};

// Calls `use` for each word between blanks.
template <class Use>
void ForEachWord(std::string_view text, Use&& use) {
    constexpr std::string_view kBlanks = " \t\r\n\f";
    while (true) {
        const std::size_t from = text.find_first_not_of(kBlanks);
        if (from == std::string_view::npos)
            return;
        text.remove_prefix(from);
        const std::size_t length = std::min(text.find_first_of(kBlanks), text.size());
        use(text.substr(0, length));
        text.remove_prefix(length);
    }
}

void SetFontFamily(std::string_view value, CssStyle& style) {
    std::string_view first = Trim(value.substr(0, value.find(',')));
    if (first.size() >= 2 && (first.front() == '"' || first.front() == '\''))
        first = first.substr(1, first.size() - 2);
    const std::string lower = ToLower(first.substr(0, 64));
    constexpr std::array<Row<std::string_view>, 6> kGeneric = {{{"monospace", "Courier New"},
                                                                {"serif", "Times New Roman"},
                                                                {"sans-serif", "Arial"},
                                                                {"system-ui", "Arial"},
                                                                {"inherit", ""},
                                                                {"initial", ""}}};
    const std::string_view name = Find(kGeneric, lower).value_or(first);
    if (!name.empty())
        style.font = FontName(name);
}

void SetWeight(std::string_view value, CssStyle& style) {
    constexpr std::array<Row<bool>, 4> kWeights = {
        {{"bold", true}, {"bolder", true}, {"normal", false}, {"lighter", false}}};
    if (const std::optional<bool> bold = Find(kWeights, value))
        style.bold = bold;
    else if (value.size() == 3 && value[0] >= '1' && value[0] <= '9')
        style.bold = value[0] >= '6';
}

void SetStyle(std::string_view value, CssStyle& style) {
    constexpr std::array<Row<bool>, 3> kStyles = {
        {{"italic", true}, {"oblique", true}, {"normal", false}}};
    Set(style.italic, Find(kStyles, value));
}

void SetSize(std::string_view value, CssStyle& style) {
    if (const std::optional<int> twips = Find(kSizes, value))
        style.font_size = CssLength{static_cast<double>(*twips), CssLength::Unit::Twips};
    else if (value == "smaller")
        style.font_size = CssLength{5.0 / 6, CssLength::Unit::Em};
    else if (value == "larger")
        style.font_size = CssLength{1.2, CssLength::Unit::Em};
    else
        Set(style.font_size, ParseLength(value));
}

// "italic bold 12pt/30px Georgia, serif": sets all, or, where size or family is missing, nothing.
void SetFont(std::string_view value, CssStyle& style) {
    CssStyle font;
    font.bold = font.italic = false;
    while (!value.empty()) {
        const std::size_t length = std::min(value.find(' '), value.size());
        const std::string word = ToLower(value.substr(0, length));
        const std::string_view size = std::string_view(word).substr(0, word.find('/'));
        value = Trim(value.substr(length));
        if (size == "0" || size.find_first_not_of("0123456789.") != std::string_view::npos)
            SetSize(size, font);
        if (font.font_size && !value.empty()) {
            SetFontFamily(value, style);
            style.font_size = font.font_size;
            style.bold = font.bold;
            style.italic = font.italic;
            return;
        }
        SetWeight(word, font);
        SetStyle(word, font);
    }
}

void SetDecoration(std::string_view value, CssStyle& style) {
    ForEachWord(value, [&style](std::string_view word) {
        if (word == "underline")
            style.underline = true;
        else if (word == "line-through")
            style.strikeout = true;
        else if (word == "none")
            style.underline = style.strikeout = false;
    });
}

void SetBackground(std::string_view value, CssStyle& style) {
    if (value.starts_with("transparent") || value.starts_with("none") ||
        value.starts_with("initial")) {
        style.background = std::optional<Color>();
    } else if (std::optional<Color> color = ParseColor(value)) {
        style.background = color;
    } else {
        ForEachWord(value, [&style](std::string_view word) {
            if (const std::optional<Color> part = ParseColor(word))
                style.background = part;
        });
    }
}

// "1px 2px 3px 4px": the last is the left one.
void SetMargin(std::string_view value, CssStyle& style) {
    std::size_t count = 0;
    std::optional<CssLength> left;
    ForEachWord(value, [&](std::string_view word) {
        ++count;
        if (count == 1 || count == 2 || count == 4)
            left = ParseLength(word);
    });
    Set(style.left, left);
}

void SetList(std::string_view value, CssStyle& style) {
    ForEachWord(value,
                [&style](std::string_view word) { Set(style.list, Find(kListTypes, word)); });
}

void SetDisplay(std::string_view value, CssStyle& style) {
    Set(style.display, Find(kDisplays, value));
}
void SetVisibility(std::string_view value, CssStyle& style) {
    style.hidden = value == "hidden" || value == "collapse";
}
void SetColor(std::string_view value, CssStyle& style) {
    Set(style.color, ParseColor(value));
}
void SetAlignment(std::string_view value, CssStyle& style) {
    Set(style.alignment, Find(kAlignments, value));
}
void SetIndent(std::string_view value, CssStyle& style) {
    Set(style.text_indent, ParseLength(value));
}
void SetLeft(std::string_view value, CssStyle& style) {
    Set(style.left, ParseLength(value));
}
void SetDirection(std::string_view value, CssStyle& style) {
    style.right_to_left = value == "rtl";
}
void SetSpace(std::string_view value, CssStyle& style) {
    Set(style.space, Find(kSpaces, value));
}
void SetTransform(std::string_view value, CssStyle& style) {
    Set(style.transform, Find(kTransforms, value));
}
void SetBaseline(std::string_view value, CssStyle& style) {
    Set(style.baseline, Find(kBaselines, value));
}

using Setter = void (*)(std::string_view, CssStyle&);
constexpr std::array<Row<Setter>, 22> kProperties = {{{"color", SetColor},
                                                      {"background-color", SetBackground},
                                                      {"background", SetBackground},
                                                      {"font-family", SetFontFamily},
                                                      {"font-size", SetSize},
                                                      {"font-weight", SetWeight},
                                                      {"font-style", SetStyle},
                                                      {"font", SetFont},
                                                      {"text-decoration", SetDecoration},
                                                      {"text-decoration-line", SetDecoration},
                                                      {"text-align", SetAlignment},
                                                      {"margin-left", SetLeft},
                                                      {"margin", SetMargin},
                                                      {"text-indent", SetIndent},
                                                      {"direction", SetDirection},
                                                      {"display", SetDisplay},
                                                      {"visibility", SetVisibility},
                                                      {"white-space", SetSpace},
                                                      {"text-transform", SetTransform},
                                                      {"vertical-align", SetBaseline},
                                                      {"list-style-type", SetList},
                                                      {"list-style", SetList}}};

}  // namespace

void ParseDeclarations(std::string_view text, CssStyle& style) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view declaration = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t colon = declaration.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::optional<Setter> setter =
            Find(kProperties, ToLower(Trim(declaration.substr(0, colon)).substr(0, 32)));
        if (!setter)
            continue;
        std::string_view value = declaration.substr(colon + 1);
        value = Trim(value.substr(0, value.find('!')));
        // Names of fonts alone keep their letters.
        const bool keeps = *setter == SetFontFamily || *setter == SetFont;
        (*setter)(keeps ? std::string(value) : ToLower(value.substr(0, 256)), style);
    }
}

}  // namespace zorvane
