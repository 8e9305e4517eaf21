#include "load/readers/ooxml/slide_styles.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zorvane {
namespace {

constexpr std::int32_t kEmuInTwip = 635;
constexpr std::int32_t kFarthest = 31'680;  // twips; 22 inches, the widest an RTF reader takes

std::int32_t TwipsOf(std::string_view emu) {
    return std::clamp(NumberOf(emu, 0) / kEmuInTwip, -kFarthest, kFarthest);
}

bool IsTrue(std::string_view value) {
    return value == "1" || value == "true" || value == "on";
}

Underline UnderlineOf(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, Underline>, 17> kNames = {
        {{"sng", Underline::Single},
         {"words", Underline::Words},
         {"dbl", Underline::Double},
         {"heavy", Underline::Thick},
         {"dotted", Underline::Dotted},
         {"dottedHeavy", Underline::ThickDotted},
         {"dash", Underline::Dash},
         {"dashHeavy", Underline::ThickDash},
         {"dashLong", Underline::LongDash},
         {"dashLongHeavy", Underline::ThickLongDash},
         {"dotDash", Underline::DashDot},
         {"dotDashHeavy", Underline::ThickDashDot},
         {"dotDotDash", Underline::DashDotDot},
         {"dotDotDashHeavy", Underline::ThickDashDotDot},
         {"wavy", Underline::Wave},
         {"wavyHeavy", Underline::HeavyWave},
         {"wavyDbl", Underline::DoubleWave}}};
    for (const auto& [known, underline] : kNames) {
        if (known == name)
            return underline;
    }
    return Underline::None;
}

void ApplyRunAttribute(std::string_view name, std::string_view value, SlideRunStyle& style) {
    CharFormat& format = style.format;
    if (name == "sz") {
        format.half_points = std::clamp(NumberOf(value, 1800) / 50, 1, 3276);
    } else if (name == "b") {
        format.bold = IsTrue(value);
    } else if (name == "i") {
        format.italic = IsTrue(value);
    } else if (name == "u") {
        format.underline = UnderlineOf(value);
    } else if (name == "strike") {
        format.strikeout = value != "noStrike";
    } else if (name == "cap") {
        style.capitals = value == "all";
    } else if (name == "baseline") {
        const std::int32_t shift = NumberOf(value, 0);
        format.baseline = shift > 0   ? Baseline::Superscript
                          : shift < 0 ? Baseline::Subscript
                                      : Baseline::Normal;
    }
}

void ApplySpacing(const pugi::xml_node& spacing, std::int32_t half_points, std::int32_t& twips) {
    if (const pugi::xml_node points = Child(spacing, "spcPts"))
        twips = std::clamp(NumberOf(Attribute(points, "val"), 0) / 5, 0, kFarthest);
    if (const pugi::xml_node percent = Child(spacing, "spcPct")) {
        const std::int64_t share = NumberOf(Attribute(percent, "val"), 0);
        // A percentage of the size of the text, which has 10 twips in half a point.
        twips = static_cast<std::int32_t>(
            std::clamp<std::int64_t>(share * half_points * 10 / 100'000, 0, kFarthest));
    }
}

void ApplyLineSpacing(const pugi::xml_node& spacing, ParagraphFormat& format) {
    if (const pugi::xml_node points = Child(spacing, "spcPts")) {
        format.line_spacing = -std::clamp(NumberOf(Attribute(points, "val"), 0) / 5, 0, kFarthest);
        format.line_spacing_multiple = false;
    }
    if (const pugi::xml_node percent = Child(spacing, "spcPct")) {
        const std::int64_t share = NumberOf(Attribute(percent, "val"), 100'000);
        format.line_spacing =
            static_cast<std::int32_t>(std::clamp<std::int64_t>(share * 240 / 100'000, 0, 2400));
        format.line_spacing_multiple = true;
        if (format.line_spacing == 240)
            format.line_spacing = 0;
        format.line_spacing_multiple = format.line_spacing != 0;
    }
}

Alignment AlignmentOf(std::string_view name) {
    if (name == "ctr")
        return Alignment::Center;
    if (name == "r")
        return Alignment::Right;
    if (name == "just" || name == "justLow" || name == "dist" || name == "thaiDist")
        return Alignment::Justify;
    return Alignment::Left;
}

std::vector<TabStop> TabsOf(const pugi::xml_node& list) {
    constexpr std::size_t kMostTabs = 64;
    std::vector<TabStop> tabs;
    for (const pugi::xml_node& tab : list.children()) {
        if (!Is(tab, "tab") || tabs.size() == kMostTabs)
            continue;
        const std::string_view kind = Attribute(tab, "algn");
        tabs.push_back({TwipsOf(Attribute(tab, "pos")), kind == "ctr"   ? TabKind::Center
                                                        : kind == "r"   ? TabKind::Right
                                                        : kind == "dec" ? TabKind::Decimal
                                                                        : TabKind::Left});
    }
    return tabs;
}

void ApplyBullet(const pugi::xml_node& child, SlideBullet& bullet) {
    if (Is(child, "buNone")) {
        bullet.kind = SlideBullet::Kind::None;
    } else if (Is(child, "buChar")) {
        bullet.kind = SlideBullet::Kind::Character;
        bullet.text = Attribute(child, "char");
    } else if (Is(child, "buBlip")) {  // a picture; what stands for it in text is the usual dot
        bullet.kind = SlideBullet::Kind::Character;
        bullet.text = "\xE2\x80\xA2";
        bullet.font.clear();
    } else if (Is(child, "buAutoNum")) {
        bullet.kind = SlideBullet::Kind::Number;
        bullet.scheme = Attribute(child, "type");
        bullet.start = std::clamp(NumberOf(Attribute(child, "startAt"), 1), 1, 32'767);
    } else if (Is(child, "buFont")) {
        bullet.font = Attribute(child, "typeface");
    } else if (Is(child, "buFontTx")) {
        bullet.font.clear();
    }
}

void ApplyParagraphAttributes(const pugi::xml_node& properties, ParagraphFormat& format) {
    ForStyleAttributes(properties, [&format](std::string_view name, std::string_view value) {
        if (name == "marL")
            format.left_indent = TwipsOf(value);
        else if (name == "marR")
            format.right_indent = TwipsOf(value);
        else if (name == "indent")
            format.first_line_indent = TwipsOf(value);
        else if (name == "algn")
            format.alignment = AlignmentOf(value);
        else if (name == "rtl")
            format.right_to_left = IsTrue(value);
    });
}

}  // namespace

SlideLevelStyle PlainSlideStyle() {
    SlideLevelStyle style;
    style.run.format = PlainSlideFormat();
    return style;
}

void ApplyColor(const pugi::xml_node& holder, const SlideTheme& theme, CharFormat& format) {
    if (const std::optional<Color> color = theme.ColorIn(holder))
        SetVisibleColor(*color, format);
}

void ApplyRun(const pugi::xml_node& properties, const SlideTheme& theme, SlideRunStyle& style) {
    ForStyleAttributes(properties, [&style](std::string_view name, std::string_view value) {
        ApplyRunAttribute(name, value, style);
    });
    ForStyleParts(properties, [&](const pugi::xml_node& child) {
        if (Is(child, "solidFill")) {
            ApplyColor(child, theme, style.format);
        } else if (Is(child, "highlight")) {
            style.format.back_color = theme.ColorIn(child);
        } else if (Is(child, "latin")) {
            const std::string_view font = theme.Font(Attribute(child, "typeface"));
            if (!font.empty())
                style.format.font = FontName(font);
        } else if (Is(child, "sym")) {
            style.symbol_font = Attribute(child, "typeface");
        } else if (Is(child, "hlinkClick") && !Attribute(child, "id").empty()) {
            style.format.underline = Underline::Single;
            style.format.fore_color = theme.SchemeColor("hlink");
        }
    });
}

void ApplyParagraph(const pugi::xml_node& properties, const SlideTheme& theme,
                    SlideLevelStyle& style) {
    ApplyParagraphAttributes(properties, style.paragraph);
    // Spacings in percent are those of the size of the text, so the text comes first.
    if (const pugi::xml_node run = StylePart(properties, "defRPr"))
        ApplyRun(run, theme, style.run);
    const std::int32_t size = style.run.format.half_points;
    ForStyleParts(properties, [&](const pugi::xml_node& child) {
        if (Is(child, "spcBef"))
            ApplySpacing(child, size, style.paragraph.space_before);
        else if (Is(child, "spcAft"))
            ApplySpacing(child, size, style.paragraph.space_after);
        else if (Is(child, "lnSpc"))
            ApplyLineSpacing(child, style.paragraph);
        else if (Is(child, "tabLst"))
            style.paragraph.tabs = TabsOf(child);
        else
            ApplyBullet(child, style.bullet);
    });
}

void ApplyChain(const SlideStyleChain& chain, std::int32_t level, const SlideTheme& theme,
                SlideLevelStyle& style) {
    std::string name = "lvl1pPr";
    name[3] = static_cast<char>('1' + std::clamp(level, 0, kSlideLevels - 1));
    for (const pugi::xml_node& list : chain) {
        if (Is(list, "fontRef"))
            ApplyColor(list, theme, style.run.format);
        if (const pugi::xml_node common = StylePart(list, "defPPr"))
            ApplyParagraph(common, theme, style);
        if (const pugi::xml_node own = StylePart(list, name))
            ApplyParagraph(own, theme, style);
    }
}

}  // namespace zorvane
