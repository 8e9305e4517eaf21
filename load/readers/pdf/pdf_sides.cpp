#include "load/readers/pdf/pdf_sides.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zorvane {
namespace {

// Shares of the font size.
constexpr float kBlank = 0.25F;
constexpr float kGutter = 0.5F;     // the narrowest one; up to 0.8 will do, 1.2 loses narrow ones
constexpr float kFacing = 1.0F;     // lines whose baselines are nearer face each other
constexpr float kSameLine = 0.15F;  // on one baseline

float Share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : static_cast<float>(part) / static_cast<float>(whole);
}

float Edge(const PdfSide& side) {
    float edge = std::numeric_limits<float>::lowest();
    for (const PdfSideLine& line : side)
        edge = std::max(edge, line.x1);
    return edge;
}

// The share of lines after which the next line's first word had no room: text is broken so, cells
// are not.
float WrapShare(const PdfSide& side) {
    constexpr std::size_t kFewestLines = 3;
    constexpr float kFewestWords = 2.2F;
    if (side.size() < kFewestLines)
        return 0;
    std::size_t words = 0;
    std::size_t full = 0;
    const float edge = Edge(side);
    for (std::size_t index = 0; index < side.size(); ++index) {
        words += side[index].words;
        if (index + 1 < side.size() &&
            side[index].x1 + kBlank * side[index].size + side[index + 1].first_word > edge)
            ++full;
    }
    return Share(words, side.size()) < kFewestWords ? 0 : Share(full, side.size() - 1);
}

struct Extent {
    float top = std::numeric_limits<float>::max();
    float bottom = std::numeric_limits<float>::lowest();
};
Extent ExtentOf(const PdfSide& side) {
    Extent extent;
    for (const PdfSideLine& line : side) {
        extent.top = std::min(extent.top, line.baseline - 0.75F * line.size);
        extent.bottom = std::max(extent.bottom, line.baseline + 0.25F * line.size);
    }
    return extent;
}

std::size_t InExtent(const PdfSide& side, const Extent& extent) {
    return static_cast<std::size_t>(
        std::count_if(side.begin(), side.end(), [&](const PdfSideLine& line) {
            return line.baseline > extent.top && line.baseline < extent.bottom;
        }));
}

// The share of lines, among those at heights that both sides have, with a partner on one baseline.
float AlignedShare(const PdfTwoSides& sides) {
    std::size_t pairs = 0;
    auto right = sides.right.begin();
    for (const PdfSideLine& left : sides.left) {
        const float reach = kSameLine * left.size;
        while (right != sides.right.end() && right->baseline < left.baseline - reach)
            ++right;
        if (right != sides.right.end() && right->baseline <= left.baseline + reach)
            ++pairs;
    }
    const std::size_t facing =
        InExtent(sides.left, ExtentOf(sides.right)) + InExtent(sides.right, ExtentOf(sides.left));
    return std::min(1.0F, Share(2 * pairs, facing));
}

// Changes of side in the order of drawing: 1 where lines were drawn across the page.
float Turns(const PdfTwoSides& sides) {
    std::vector<std::pair<std::uint32_t, bool>> order;
    for (const PdfSideLine& line : sides.left)
        order.emplace_back(line.drawn, false);
    for (const PdfSideLine& line : sides.right)
        order.emplace_back(line.drawn, true);
    std::sort(order.begin(), order.end());
    std::size_t turns = 0;
    for (std::size_t index = 1; index < order.size(); ++index)
        turns += order[index].second != order[index - 1].second ? 1U : 0U;
    return Share(turns, order.size() - 1);
}

// Wide enough wherever lines of both sides face each other.
bool HasGutter(const PdfTwoSides& sides) {
    std::size_t first = 0;
    for (const PdfSideLine& left : sides.left) {
        const float reach = kFacing * left.size;
        while (first < sides.right.size() && sides.right[first].baseline < left.baseline - reach)
            ++first;
        for (std::size_t index = first;
             index < sides.right.size() && sides.right[index].baseline <= left.baseline + reach;
             ++index) {
            if (sides.right[index].x0 - left.x1 <
                kGutter * std::min(left.size, sides.right[index].size))
                return false;
        }
    }
    return true;
}

bool IsLoneNumber(const PdfSide& side, const PdfSide& other) {
    constexpr std::uint32_t kMostWords = 2;
    return side.size() == 1 && side.front().number && side.front().words <= kMostWords &&
           std::any_of(other.begin(), other.end(), [&](const PdfSideLine& line) {
               return std::fabs(line.baseline - side.front().baseline) <= kSameLine * line.size;
           });
}

bool HasTable(const PdfSide& side) {
    return std::any_of(side.begin(), side.end(),
                       [](const PdfSideLine& line) { return line.table; });
}

// Lines that fill most of their side, as text does and figures do not.
bool IsFilled(const PdfSide& side) {
    constexpr std::size_t kFewest = 3;
    constexpr std::size_t kShare = 5;
    constexpr float kFull = 0.7F;
    constexpr float kLeastWidth = 4;
    float x0 = std::numeric_limits<float>::max();
    for (const PdfSideLine& line : side)
        x0 = std::min(x0, line.x0);
    const float width = Edge(side) - x0;
    std::size_t full = 0;
    for (const PdfSideLine& line : side)
        full += line.x1 - line.x0 >= std::max(kFull * width, kLeastWidth * line.size) ? 1U : 0U;
    return full >= kFewest && full * kShare >= side.size();
}

}  // namespace

PdfSideLine PdfSides::LineOf(const PdfSegment& segment) const {
    PdfSideLine line;
    line.x0 = segment.x0;
    line.x1 = segment.x1;
    line.baseline = segment.baseline;
    line.size = segment.size;
    line.table = segment.table != kNoPdfTable;
    line.drawn = std::numeric_limits<std::uint32_t>::max();
    PdfDigitShare digits;
    bool first = true;
    for (const PdfWord& word : segment.words) {
        line.drawn = std::min(line.drawn, word.number);
        if (&word == &segment.words.front() || word.x0 > line.x1 ||
            GapBetween(*(&word - 1), word) != PdfGap::None) {
            first = &word == &segment.words.front();
            ++line.words;
        }
        if (first)
            line.first_word = word.x1 - segment.x0;
        digits.Add(characters_, word);
        if (word.count > 0)
            line.colon = characters_[word.first + word.count - 1].letter == U':';
    }
    line.number = digits.IsNumber();
    return line;
}

PdfTwoSides PdfSides::Measure(const std::vector<std::uint32_t>& part, float gutter) const {
    PdfTwoSides sides;
    for (std::size_t index = 0; index < part.size();) {
        const std::uint32_t row = segments_[part[index]].row;
        const PdfSegment* left = nullptr;
        const PdfSegment* right = nullptr;
        for (; index < part.size() && segments_[part[index]].row == row; ++index) {
            const PdfSegment& segment = segments_[part[index]];
            if (segment.x0 < gutter)
                left = &segment;
            else if (right == nullptr)
                right = &segment;
        }
        if (left != nullptr)
            sides.left.push_back(LineOf(*left));
        if (right != nullptr)
            sides.right.push_back(LineOf(*right));
    }
    std::ranges::stable_sort(sides.left, {}, &PdfSideLine::baseline);
    std::ranges::stable_sort(sides.right, {}, &PdfSideLine::baseline);
    return sides;
}

float PdfSides::Separation(const PdfTwoSides& sides) {
    std::vector<std::uint32_t> left;
    for (const PdfSideLine& line : sides.left)
        left.push_back(line.drawn);
    std::sort(left.begin(), left.end());
    double before = 0;
    for (const PdfSideLine& line : sides.right)
        before += static_cast<double>(std::lower_bound(left.begin(), left.end(), line.drawn) -
                                      left.begin());
    const double pairs = static_cast<double>(left.size()) * static_cast<double>(sides.right.size());
    return pairs > 0 ? static_cast<float>(std::fabs(2 * before / pairs - 1)) : 0;
}

bool PdfSides::LooksLikeTable(const PdfTwoSides& sides) const {
    constexpr float kHalf = 0.5F;
    for (const PdfSide* const side : {&sides.left, &sides.right}) {
        std::size_t numbers = 0;
        std::size_t colons = 0;
        for (const PdfSideLine& line : *side) {
            numbers += line.number ? 1U : 0U;
            colons += line.colon ? 1U : 0U;
        }
        if (Share(numbers, side->size()) >= kHalf || Share(colons, side->size()) >= kHalf)
            return true;
    }
    const Extent left = ExtentOf(sides.left);
    const Extent right = ExtentOf(sides.right);
    const float left_edge = sides.left.front().x1;
    const float right_edge = sides.right.front().x0;
    return std::any_of(rules_.begin(), rules_.end(), [&](const PdfBox& rule) {
        return rule.y0 > std::max(left.top, right.top) &&
               rule.y0 < std::min(left.bottom, right.bottom) && rule.x0 < left_edge &&
               rule.x1 > right_edge;
    });
}

// What two texts beside each other must have, and rows of a table may have as well.
bool PdfSides::MayBeColumns(const PdfTwoSides& sides) const {
    if (sense_ == PdfColumnSense::None)
        return false;
    const Extent left = ExtentOf(sides.left);
    const Extent right = ExtentOf(sides.right);
    return std::min(left.bottom, right.bottom) > std::max(left.top, right.top) &&
           !IsLoneNumber(sides.left, sides.right) && !IsLoneNumber(sides.right, sides.left) &&
           HasGutter(sides);
}

bool PdfSides::AreColumns(const PdfTwoSides& sides) const {
    if (!MayBeColumns(sides))
        return false;
    return HasTable(sides.left) || HasTable(sides.right) || AreBrokenAlone(sides) ||
           (sense_ == PdfColumnSense::Keen && IsFilled(sides.left) && IsFilled(sides.right));
}

// Each side's lines were broken and drawn without regard to the other's.
bool PdfSides::AreBrokenAlone(const PdfTwoSides& sides) const {
    const float left_wrap = WrapShare(sides.left);
    const float right_wrap = WrapShare(sides.right);
    const float separation = Separation(sides);
    const float aligned = AlignedShare(sides);
    const std::size_t fewer = std::min(sides.left.size(), sides.right.size());
    constexpr float kWrap = 0.5F;   // flat from 0.35 to 0.65
    constexpr float kApart = 0.9F;  // flat from 0.7 to 0.95
    const bool cell_by_cell = separation < kApart && Turns(sides) <= 0.85F && aligned >= 0.6F;
    if (left_wrap >= kWrap && right_wrap >= kWrap && !cell_by_cell)
        return true;
    if (separation >= kApart && sides.left.size() + sides.right.size() > 2 &&
        !(aligned >= 0.8F && (fewer < 2 || LooksLikeTable(sides))))
        return true;
    const float wrap = std::max(left_wrap, right_wrap);
    if (wrap >= kWrap && aligned < 0.5F && separation > 0.5F)
        return true;
    return (fewer >= 3 && aligned < 0.35F && separation > 0.3F) ||
           (fewer >= 8 && aligned < 0.5F && separation > 0.5F) ||
           (fewer >= 5 && aligned < 0.4F && wrap >= 0.7F);
}

}  // namespace zorvane
