#include "compare/document/rtf_formats.h"

#include <algorithm>
#include <vector>

namespace zorvane {
namespace {

constexpr std::size_t kMostTabs = 64;

bool ApplyToBaseline(const RtfWord& word, std::optional<std::int32_t> parameter,
                     Baseline& baseline) {
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
            baseline =
                parameter.value_or(6) == 0 ? Baseline::Normal : static_cast<Baseline>(word.value);
            return true;
        default:
            return false;
    }
}

bool ApplyToTabs(const RtfWord& word, std::int32_t number, std::vector<TabStop>& tabs,
                 TabKind& next_tab) {
    if (word.action == RtfAction::TabKindNext) {
        next_tab = static_cast<TabKind>(word.value);
        return true;
    }
    const bool bar = word.action == RtfAction::TabBarAt;
    if (!bar && word.action != RtfAction::TabAt)
        return false;
    if (tabs.size() < kMostTabs)
        tabs.push_back({number, bar ? TabKind::Bar : next_tab});
    next_tab = TabKind::Left;
    return true;
}

}  // namespace

bool ApplyToChars(const RtfWord& word, std::optional<std::int32_t> parameter,
                  const RtfHeader& header, CharFormat& chars) {
    const bool on = parameter.value_or(1) != 0;
    const std::int32_t number = parameter.value_or(0);
    switch (word.action) {
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
        case RtfAction::UnderlineKind:
            chars.underline = on ? static_cast<Underline>(word.value) : Underline::None;
            return true;
        case RtfAction::ForeColor:
            chars.fore_color = header.ColorAt(number);
            return true;
        case RtfAction::BackColor:
            chars.back_color = header.ColorAt(number);
            return true;
        case RtfAction::FontSize:
            chars.half_points = std::clamp(parameter.value_or(24), 1, 3276);
            return true;
        default:
            return ApplyToBaseline(word, parameter, chars.baseline);
    }
}

bool ApplyToParagraph(const RtfWord& word, std::int32_t number, ParagraphFormat& paragraph,
                      TabKind& next_tab) {
    switch (word.action) {
        case RtfAction::Align:
            paragraph.alignment = static_cast<Alignment>(word.value);
            return true;
        case RtfAction::RightToLeft:
            paragraph.right_to_left = word.value != 0;
            return true;
        case RtfAction::LeftIndent:
            paragraph.left_indent = number;
            return true;
        case RtfAction::RightIndent:
            paragraph.right_indent = number;
            return true;
        case RtfAction::FirstIndent:
            paragraph.first_line_indent = number;
            return true;
        case RtfAction::SpaceBefore:
            paragraph.space_before = number;
            return true;
        case RtfAction::SpaceAfter:
            paragraph.space_after = number;
            return true;
        case RtfAction::LineSpacing:
            paragraph.line_spacing = number;
            return true;
        case RtfAction::LineSpacingMultiple:
            paragraph.line_spacing_multiple = number != 0;
            return true;
        default:
            return ApplyToTabs(word, number, paragraph.tabs, next_tab);
    }
}

}  // namespace zorvane
