#include "compare/view/overview.h"

#include <algorithm>

namespace zorvane {
namespace {

OverviewKind KindOf(const ParagraphRow& run, const Comparison& comparison) {
    if (run.kind == RowKind::Edited)
        return OverviewKind::Edited;
    if (run.kind == RowKind::Changed)
        return OverviewKind::Changed;
    if (comparison.MoveOf(static_cast<std::size_t>(run.record)) != nullptr)
        return OverviewKind::Moved;
    return run.paragraphs.modified.count == 0 ? OverviewKind::Deleted : OverviewKind::Added;
}

bool Touch(const OverviewMark& front, const OverviewMark& back, double least) {
    if (front.kind != back.kind)
        return false;
    return std::all_of(std::begin(kBothSides), std::end(kBothSides), [&](Side side) {
        return back.shares[side].begin - front.shares[side].end < least;
    });
}

}  // namespace

std::vector<OverviewMark> MakeOverview(const ParagraphRows& rows, const Comparison& comparison,
                                       const HeightOfParagraph& height, double least) {
    PerSide<double> whole;
    for (const Side side : kBothSides)
        whole[side] = height(side, ParagraphNumber{rows.Paragraphs(side) + 1});
    const auto share = [&](Side side, ParagraphNumber number) {
        return whole[side] > 0 ? height(side, number) / whole[side] : 0;
    };
    std::vector<OverviewMark> marks;
    for (std::int32_t row = 0; row < rows.Rows();) {
        const ParagraphRow run = rows.RunAt(row);
        row = run.rows.end();
        if (run.kind == RowKind::Equal || run.kind == RowKind::Ignored)
            continue;
        OverviewMark mark{KindOf(run, comparison), run.record, {}};
        for (const Side side : kBothSides)
            mark.shares[side] = {share(side, run.paragraphs[side].first),
                                 share(side, run.paragraphs[side].end())};
        if (marks.empty() || !Touch(marks.back(), mark, least)) {
            marks.push_back(mark);
            continue;
        }
        for (const Side side : kBothSides)
            marks.back().shares[side].end = mark.shares[side].end;
    }
    return marks;
}

std::vector<OverviewMark> MakeOverview(const ParagraphRows& rows, const Comparison& comparison,
                                       double least) {
    return MakeOverview(
        rows, comparison,
        [](Side, ParagraphNumber number) { return static_cast<double>(number.value - 1); }, least);
}

}  // namespace zorvane
