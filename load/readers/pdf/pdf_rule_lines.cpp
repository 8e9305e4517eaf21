#include "load/readers/pdf/pdf_rule_lines.h"

#include <algorithm>
#include <cstddef>

namespace zorvane {
namespace {

// Pieces at one place, within the slack of the first, become lines.
std::vector<PdfRuleLine> Joined(std::vector<PdfRuleLine> pieces) {
    std::ranges::sort(pieces, {}, &PdfRuleLine::at);
    std::vector<PdfRuleLine> lines;
    for (std::size_t first = 0; first < pieces.size();) {
        std::size_t end = first;
        while (end < pieces.size() && pieces[end].at - pieces[first].at <= kPdfRuleSlack)
            ++end;
        const auto begin = pieces.begin() + static_cast<std::ptrdiff_t>(first);
        const auto behind = pieces.begin() + static_cast<std::ptrdiff_t>(end);
        std::ranges::sort(begin, behind, {}, &PdfRuleLine::first);
        for (auto piece = begin; piece != behind; ++piece) {
            if (piece == begin || piece->first - lines.back().last > kPdfRuleSlack)
                lines.push_back(*piece);
            else
                lines.back().last = std::max(lines.back().last, piece->last);
        }
        first = end;
    }
    return lines;
}

}  // namespace

std::vector<PdfRuleLine> HorizontalLines(const std::vector<PdfBox>& rules) {
    std::vector<PdfRuleLine> pieces;
    pieces.reserve(rules.size());
    for (const PdfBox& rule : rules)
        pieces.push_back({(rule.y0 + rule.y1) / 2, rule.x0, rule.x1});
    return Joined(std::move(pieces));
}

std::vector<PdfRuleLine> VerticalLines(const std::vector<PdfBox>& uprights) {
    std::vector<PdfRuleLine> pieces;
    pieces.reserve(uprights.size());
    for (const PdfBox& upright : uprights)
        pieces.push_back({(upright.x0 + upright.x1) / 2, upright.y0, upright.y1});
    return Joined(std::move(pieces));
}

}  // namespace zorvane
