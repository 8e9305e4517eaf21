#include "compare/print/print_fonts.h"

#include <algorithm>

#include "common/base/number.h"

namespace zorvane {
namespace {

constexpr double kSmall = 0.65;  // of the font's size, off the line
constexpr double kRaise = 0.35;
constexpr double kLower = 0.15;

double TwipsOf(const CharFormat& format) {
    return format.half_points / 2.0 * kTwipsPerPoint;
}

FontHeight HeightOf(TextMeasurer& measurer, const CharFormat& format) {
    FontHeight height = measurer.Height(PrintFontOf(format));
    const double raise = RaiseOf(format);
    height.ascent += std::max(raise, 0.0);
    height.descent += std::max(-raise, 0.0);
    return height;
}

}  // namespace

PrintFont PrintFontOf(const CharFormat& format) {
    const double points = std::max(format.half_points, 1) / 2.0;
    return {format.font, format.baseline == Baseline::Normal ? points : points * kSmall,
            format.bold, format.italic};
}

double RaiseOf(const CharFormat& format) {
    if (format.baseline == Baseline::Superscript)
        return kRaise * TwipsOf(format);
    return format.baseline == Baseline::Subscript ? -kLower * TwipsOf(format) : 0;
}

ParagraphMeasure::ParagraphMeasure(TextMeasurer& measurer, const PrintParagraph& paragraph)
    : measurer_(measurer), paragraph_(paragraph) {
    fonts_.reserve(paragraph.spans.size());
    heights_.reserve(paragraph.spans.size() + 1);
    for (const PrintSpan& span : paragraph.spans) {
        fonts_.push_back(PrintFontOf(*span.format));
        heights_.push_back(HeightOf(measurer, *span.format));
    }
    heights_.push_back(HeightOf(measurer, *paragraph.end_format));
}

std::size_t ParagraphMeasure::SpanAt(std::int32_t place) const {
    const auto found =
        std::upper_bound(paragraph_.spans.begin(), paragraph_.spans.end(), place,
                         [](std::int32_t at, const PrintSpan& span) { return at < span.end; });
    return static_cast<std::size_t>(found - paragraph_.spans.begin());
}

double ParagraphMeasure::Width(std::int32_t begin, std::int32_t end) const {
    double width = 0;
    for (std::size_t at = SpanAt(begin); at < paragraph_.spans.size() && begin < end; ++at) {
        const PrintSpan& span = paragraph_.spans[at];
        const std::int32_t stop = std::min(end, span.end);
        if (!span.format->hidden)
            width += measurer_.Width(paragraph_.text.substr(static_cast<std::size_t>(begin),
                                                            static_cast<std::size_t>(stop - begin)),
                                     fonts_[at]);
        begin = stop;
    }
    return width;
}

FontHeight ParagraphMeasure::Height(std::int32_t begin, std::int32_t end) const {
    if (begin >= end)
        return heights_.back();
    FontHeight height;
    for (std::size_t at = SpanAt(begin);
         at < paragraph_.spans.size() && paragraph_.spans[at].begin < end; ++at) {
        height.ascent = std::max(height.ascent, heights_[at].ascent);
        height.descent = std::max(height.descent, heights_[at].descent);
    }
    return height;
}

}  // namespace zorvane
