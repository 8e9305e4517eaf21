// The overview beside a pane: its marks, and which part of the texts is in sight.
#include <algorithm>
#include <cmath>

#include "compare/ui/compare_pane.h"

namespace zorvane {

void ComparePane::MarksOfOverview() {
    std::vector<OverviewStripe> marks;
    const std::shared_ptr<const Comparison>& result = aligner_->Result();
    if (result != nullptr && aligner_->Rows().Rows() > 0) {
        const double rows = aligner_->Rows().Rows();
        for (std::size_t record = 0; record < result->records.size(); ++record) {
            const RowSpan span = aligner_->Rows().RowsOfRecord(static_cast<std::int32_t>(record));
            if (span.count > 0)
                marks.push_back({span.first / rows, span.end() / rows, MarkKindOf(*result, record),
                                 span.count});
        }
    }
    if (texts_.overview)
        overview_->setAccessibleName(texts_.overview(static_cast<std::int32_t>(
            result == nullptr ? std::size_t{0} : result->records.size())));
    overview_->SetMarks(std::move(marks));
}

// The whole text counts, folded or not, so places are told in the rows of both sides.
void ComparePane::WindowOfOverview() {
    if (aligner_ == nullptr)
        return;
    const ParagraphRows& rows = aligner_->Rows();
    RichTextView& view = all_in_one_ ? *merged_view_ : *views_.original;
    const std::vector<ShownRow> shown = view.Page().Shown();
    if (rows.Rows() == 0 || shown.empty()) {
        TellWindow(0, 1);
        return;
    }
    const auto part_of = [&](const ShownRow& row, double inside) {
        const BlockIndex& index = view.Page().Index();
        if (all_in_one_ || !aligner_->Aligned()) {
            // A fold tells what it hides first.
            const std::int32_t block =
                all_in_one_ && &view.Page().Rows() == &merged_rows_->Of(Side::Original)
                    ? merged_rows_->At(row.row).block.original
                    : std::max(0, row.what.first_block);
            return (index.At(block).paragraph.value - 1 + inside) / index.ParagraphCount();
        }
        const PairedRow& pair = aligner_->Shown().At(row.row);
        const Side side = pair.count.original > 0 ? Side::Original : Side::Modified;
        const Block block = views_[side]->Page().Index().At(pair.block[side]);
        return (rows.RowOf(side, block.paragraph) + inside) / rows.Rows();
    };
    const ShownRow& first = shown.front();
    const ShownRow& last = shown.back();
    const double bottom = view.viewport()->height();
    TellWindow(part_of(first, -first.y / std::max(1.0, first.height)),
               part_of(last, std::clamp((bottom - last.y) / last.height, 0.0, 1.0)));
}

// A paragraph of which the edge alone is in sight does not count.
void ComparePane::TellWindow(double begin, double end) {
    constexpr double kEdge = 0.01;
    const std::int32_t rows = aligner_->Rows().Rows();
    OverviewPlaces places{1, rows, rows};
    if (rows > 0) {
        places.first = std::clamp(static_cast<std::int32_t>(begin * rows + kEdge) + 1, 1, rows);
        places.last = std::clamp(static_cast<std::int32_t>(std::ceil(end * rows - kEdge)),
                                 places.first, rows);
    }
    overview_->SetWindow(begin, end);
    overview_->SetPlaces(places);
    if (rows > 0 && sight_changed) {
        const ParagraphRows& all = aligner_->Rows();
        sight_changed({all.Row(places.first - 1).paragraphs.original.first.value - 1,
                       all.Row(places.last - 1).paragraphs.original.end().value - 1});
    }
}

void ComparePane::GoToPart(double part) {
    const ParagraphRows& rows = aligner_->Rows();
    if (rows.Rows() == 0)
        return;
    if (all_in_one_) {
        const BlockIndex& index = merged_view_->Page().Index();
        const auto paragraph = static_cast<std::int32_t>(part * index.ParagraphCount()) + 1;
        const std::int32_t block = index.OfParagraph(ParagraphNumber{paragraph}).number;
        merged_view_->PutRow(merged_rows_->Of(Side::Original).RowOfBlock(block), 0.5);
        return;
    }
    const auto wanted = static_cast<std::int32_t>(part * rows.Rows());
    const ParagraphRow row = rows.Row(std::min(wanted, rows.Rows() - 1));
    const Side side = row.paragraphs.original.count > 0 ? Side::Original : Side::Modified;
    RichTextView& view = *views_[side];
    const std::int32_t block = view.Page().Index().OfParagraph(row.paragraphs[side].first).number;
    view.PutRow(view.Page().Rows().RowOfBlock(block), 0.5);
}

}  // namespace zorvane
