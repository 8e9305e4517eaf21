#include "compare/ui/view_colors.h"

#include <algorithm>
#include <cmath>

namespace zorvane {
namespace {

constexpr double kReadable = 4.5;

double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
           0.0722 * Linear(color.blueF());
}

}  // namespace

ViewColors ViewColors::Light() {
    ViewColors colors;
    colors.window = QColor(0xF1, 0xF3, 0xF5);
    colors.paper = QColor(0xFF, 0xFF, 0xFF);
    colors.text = QColor(0x1D, 0x24, 0x2B);
    colors.text2 = QColor(0x4F, 0x5A, 0x66);
    colors.muted = QColor(0x62, 0x6D, 0x79);
    colors.hairline = QColor(0xD9, 0xDE, 0xE3);
    colors.border = QColor(0x81, 0x8A, 0x94);
    colors.ink = QColor(0x2B, 0x3B, 0x4B);
    colors.ink_text = QColor(0xFF, 0xFF, 0xFF);
    colors.selection = QColor(0xCB, 0xD6, 0xE2);
    colors.selection_text = QColor(0x10, 0x16, 0x1C);
    colors.hit = QColor(0xFF, 0xE5, 0x87);
    colors.this_hit = QColor(0xF5, 0xB8, 0x00);
    colors.this_hit_text = QColor(0x1D, 0x24, 0x2B);
    colors.hatch_ground = QColor(0xF5, 0xF7, 0xF8);
    colors.hatch_lines = QColor(0xDC, 0xE1, 0xE6);
    colors.changed = {QColor(0x9A, 0x36, 0x00), QColor(0xFD, 0xE3, 0xD0), QColor(0xFE, 0xF5, 0xEE)};
    colors.deleted = {QColor(0x1A, 0x4E, 0x9B), QColor(0xD6, 0xE4, 0xF9), QColor(0xF1, 0xF6, 0xFD)};
    colors.added = {QColor(0x00, 0x66, 0x4D), QColor(0xCF, 0xEE, 0xDF), QColor(0xEF, 0xF9, 0xF4)};
    colors.moved = {QColor(0x41, 0x4C, 0x58), QColor(0xE2, 0xE6, 0xEA), QColor(0xF6, 0xF7, 0xF9)};
    return colors;
}

ViewColors ViewColors::Dark() {
    ViewColors colors;
    colors.window = QColor(0x20, 0x24, 0x29);
    colors.paper = QColor(0x1A, 0x1D, 0x21);
    colors.text = QColor(0xE7, 0xEA, 0xED);
    colors.text2 = QColor(0xB7, 0xC0, 0xC9);
    colors.muted = QColor(0x97, 0xA1, 0xAB);
    colors.hairline = QColor(0x39, 0x3F, 0x46);
    colors.border = QColor(0x77, 0x81, 0x8C);
    colors.ink = QColor(0xC6, 0xD3, 0xE0);
    colors.ink_text = QColor(0x17, 0x20, 0x2A);
    colors.selection = QColor(0x47, 0x57, 0x65);
    colors.selection_text = QColor(0xFF, 0xFF, 0xFF);
    colors.hit = QColor(0x5E, 0x4B, 0x00);
    colors.this_hit = QColor(0xFF, 0xD4, 0x47);
    colors.this_hit_text = QColor(0x17, 0x20, 0x2A);
    colors.hatch_ground = QColor(0x1F, 0x23, 0x27);
    colors.hatch_lines = QColor(0x30, 0x36, 0x3D);
    colors.changed = {QColor(0xFF, 0xA9, 0x74), QColor(0x5A, 0x2C, 0x10), QColor(0x2A, 0x21, 0x1C)};
    colors.deleted = {QColor(0x94, 0xC0, 0xFF), QColor(0x1D, 0x38, 0x60), QColor(0x1B, 0x24, 0x31)};
    colors.added = {QColor(0x82, 0xE6, 0xC0), QColor(0x11, 0x45, 0x2F), QColor(0x19, 0x27, 0x21)};
    colors.moved = {QColor(0xC6, 0xCF, 0xD8), QColor(0x3A, 0x43, 0x4C), QColor(0x22, 0x27, 0x2C)};
    return colors;
}

const MarkColors& ViewColors::Of(MarkKind kind) const {
    switch (kind) {
        case MarkKind::Deleted:
            return deleted;
        case MarkKind::Added:
            return added;
        case MarkKind::Moved:
            return moved;
        case MarkKind::Changed:
        case MarkKind::None:
            break;
    }
    return changed;
}

QColor ViewColors::OfText(const QColor& own) const {
    const auto found = std::find_if(marks_in_text.begin(), marks_in_text.end(),
                                    [&own](const PaintedAs& mark) { return mark.stored == own; });
    return found == marks_in_text.end() ? own : found->painted;
}

double ContrastOf(const QColor& one, const QColor& other) {
    const double first = Luminance(one) + 0.05;
    const double second = Luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor ReadableOn(const QColor& color, const QColor& ground) {
    if (ContrastOf(color, ground) >= kReadable)
        return color;
    // The end of the scale that is farther away always reaches 4.5 (black or white does on any
    // ground), so the least step towards it that is enough is looked for.
    const bool lighter = ContrastOf(Qt::white, ground) > ContrastOf(Qt::black, ground);
    const float hue = color.hslHueF();
    const float saturation = color.hslSaturationF();
    float near = color.lightnessF();
    float far = lighter ? 1.0F : 0.0F;
    for (int step = 0; step < 12; ++step) {
        const float middle = (near + far) / 2;
        const bool enough = ContrastOf(QColor::fromHslF(std::max(hue, 0.0F), saturation, middle),
                                       ground) >= kReadable;
        (enough ? far : near) = middle;
    }
    return QColor::fromHslF(std::max(hue, 0.0F), saturation, far);
}

}  // namespace zorvane
