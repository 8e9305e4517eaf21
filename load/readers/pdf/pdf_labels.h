// Numbers and bullets of lists. A label is left out of the compared text, so it has to be proven: a
// date, an amount or a year at the start of a line is text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace zorvane {

struct PdfLine;

inline constexpr std::size_t kLongestLabel = 12;  ///< letters
inline constexpr float kListEdge = 3;             ///< points between the texts of one list

enum class PdfLabelKind : std::uint8_t {
    Bullet,   ///< a sign that is nothing else
    Dash,     ///< a sign or letter that may be a bullet: "-", "*", "o"
    Number,   ///< 1.
    Letter,   ///< a)
    Roman,    ///< iv)
    Decimal,  ///< 1.2.3
};

/// What a text begins with, in one of its readings: "c)" is a letter and a Roman number.
struct PdfLabel {
    PdfLabelKind kind = PdfLabelKind::Bullet;
    std::uint32_t style = 0;  ///< equal for "a)" and "b)", unequal for "a)" and "B." or "(a)"
    std::vector<std::int32_t> values;  ///< one, or those of a decimal
};

/// Letters of what may be a label at the start of a text, up to the blank behind it; else 0.
std::uint32_t LabelLength(std::u32string_view text);

/// The readings of a word; none if it cannot be a label.
std::vector<PdfLabel> LabelsOf(std::u32string_view word);

/// Whether `next` may stand in a list right behind `label`.
bool Follows(const PdfLabel& label, const PdfLabel& next);

/// Whether a list can begin with the label.
bool BeginsList(const PdfLabel& label);

/// Keeps the labels of lines that a list proves: successive members of one series whose texts begin
/// at one edge, with text that hangs under them or a gap that no blank is. The others become text.
void SettleLabels(std::vector<PdfLine>& lines);

}  // namespace zorvane
