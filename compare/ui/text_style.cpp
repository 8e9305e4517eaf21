#include "compare/ui/text_style.h"

#include <algorithm>

#include "common/ui/mark_colors.h"
#include "compare/ui/font_families.h"

namespace zorvane {
namespace {

constexpr double kPixelsInInch = 96;
constexpr double kTwipsInInch = 1440;
constexpr std::size_t kFormatsKept = 64;

QTextCharFormat MakeFormat(const CharFormat& format, double zoom) {
    QFont font = FaceOf(format.font.view());
    font.setPointSizeF(std::max(1.0, format.half_points / 2.0 * zoom));
    font.setWeight(format.bold ? QFont::DemiBold : QFont::Normal);
    font.setItalic(format.italic);
    QTextCharFormat text;
    text.setFont(font);
    // The layout shrinks and shifts raised and lowered text by itself.
    if (format.baseline == Baseline::Superscript)
        text.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    if (format.baseline == Baseline::Subscript)
        text.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    return text;
}

}  // namespace

double PixelsOf(std::int32_t twips, double zoom) {
    return twips * kPixelsInInch / kTwipsInInch * zoom;
}

const QTextCharFormat& FormatMaker::Of(const CharFormat& format, double zoom) {
    const auto found = std::find_if(made_.begin(), made_.end(),
                                    [&](const Made& made) { return made.format == format; });
    if (found != made_.end())
        return found->text;
    if (made_.size() >= kFormatsKept)
        made_.clear();
    made_.push_back({format, MakeFormat(format, zoom)});
    return made_.back().text;
}

bool IsOwnUnderline(Underline underline) {
    switch (underline) {
        case Underline::Words:
        case Underline::Double:
        case Underline::Thick:
        case Underline::DoubleWave:
        case Underline::HeavyWave:
        case Underline::ThickDotted:
        case Underline::ThickDash:
        case Underline::ThickDashDot:
        case Underline::ThickDashDotDot:
        case Underline::ThickLongDash:
            return true;
        default:
            return false;
    }
}

QTextCharFormat::UnderlineStyle QtUnderlineOf(Underline underline) {
    switch (underline) {
        case Underline::Single:
            return QTextCharFormat::SingleUnderline;
        case Underline::Dotted:
            return QTextCharFormat::DotLine;
        case Underline::Dash:
        case Underline::LongDash:
            return QTextCharFormat::DashUnderline;
        case Underline::DashDot:
            return QTextCharFormat::DashDotLine;
        case Underline::DashDotDot:
            return QTextCharFormat::DashDotDotLine;
        case Underline::Wave:
            return QTextCharFormat::WaveUnderline;
        default:
            return QTextCharFormat::NoUnderline;
    }
}

QColor QtColorOf(Color color) {
    return FromStored(color.value);
}

}  // namespace zorvane
