#include "compare/ui/pair_aligner.h"

namespace zorvane {

PairAligner::PairAligner(RichTextView& original, RichTextView& modified)
    : views_{&original, &modified},
      observers_{SideObserver(*this, Side::Original), SideObserver(*this, Side::Modified)} {
    for (const Side side : kBothSides) {
        views_[side]->Document().AddObserver(observers_[side]);
        paired_.SetContentHeight(side, [view = views_[side]](std::int32_t row) {
            return view->Page().ContentHeight(row);
        });
    }
    NoteCounts();
}

PairAligner::~PairAligner() {
    for (const Side side : kBothSides) {
        views_[side]->SetRows(nullptr);
        views_[side]->SetMarks(nullptr);
        views_[side]->Document().RemoveObserver(observers_[side]);
    }
}

void PairAligner::NoteCounts() {
    for (const Side side : kBothSides) {
        paragraphs_[side] = IndexOf(side).ParagraphCount();
        blocks_[side] = IndexOf(side).BlockCount();
    }
}

void PairAligner::SetComparison(std::shared_ptr<const Comparison> comparison) {
    // The old marks stay alive until the views let go of them.
    const PerSide<std::unique_ptr<ComparisonMarks>> old = std::move(marks_);
    comparison_ = std::move(comparison);
    if (comparison_ == nullptr) {
        rows_ = {};
        folds_.opened.clear();
        for (const Side side : kBothSides) {
            views_[side]->SetRows(nullptr);
            views_[side]->SetMarks(nullptr);
        }
        return;
    }
    rows_.Assign(*comparison_);
    // What is shown may be other than what was compared.
    for (const Side side : kBothSides) {
        if (rows_.Paragraphs(side) != IndexOf(side).ParagraphCount())
            rows_.Reset(side, IndexOf(side).ParagraphCount());
        marks_[side] = std::make_unique<ComparisonMarks>(comparison_, rows_, side);
    }
    for (const Side side : kBothSides)
        views_[side]->SetMarks(marks_[side].get());
    Rebuild();
}

void PairAligner::SetAligned(bool aligned) {
    aligned_ = aligned;
    Rebuild();
}

void PairAligner::SetFolded(bool folded) {
    folds_.folded = folded;
    folds_.opened.clear();
    Rebuild();
}

void PairAligner::OpenFold(std::int32_t row) {
    // What it hides first stays the same paragraph when more of the result becomes known.
    const PairedRow& fold = paired_.At(row);
    folds_.opened.insert(IndexOf(Side::Original).At(fold.block.original).paragraph.value);
    Rebuild();
}

void PairAligner::Check() {
    if (comparison_ == nullptr)
        return;
    for (const Side side : kBothSides) {
        if (blocks_[side] != IndexOf(side).BlockCount()) {
            Rebuild();
            return;
        }
    }
}

void PairAligner::FindHeadingRows() {
    folds_.rule.headings.clear();
    if (!folds_.folded)
        return;
    for (const CharPos place : headings_) {
        const ParagraphNumber paragraph = IndexOf(Side::Original).OfChar(place).paragraph;
        folds_.rule.headings.push_back(rows_.RowOf(Side::Original, paragraph));
    }
}

// Folding needs rows that both sides share, so it is for aligned views alone.
void PairAligner::Rebuild() {
    NoteCounts();
    if (comparison_ == nullptr)
        return;
    PerSide<std::int32_t> top{views_.original->Page().TopBlock(),
                              views_.modified->Page().TopBlock()};
    if (aligned_) {
        FindHeadingRows();
        PairRows(
            rows_, {&IndexOf(Side::Original), &IndexOf(Side::Modified)},
            [this](std::int32_t record) {
                return MarkKindOf(*comparison_, static_cast<std::size_t>(record));
            },
            folds_, paired_);
    }
    for (const Side side : kBothSides) {
        ViewRows* rows = aligned_ ? &paired_.Of(side) : nullptr;
        if (&views_[side]->Page().Rows() != rows)
            views_[side]->SetRows(rows);
        views_[side]->RowsChanged(top[side]);
    }
    if (aligned_)
        views_.modified->FollowTop(views_.original->Page().Top(), 0);
    if (rows_changed)
        rows_changed();
}

void PairAligner::SideObserver::Replaced(CharPos first, std::int32_t /*removed*/,
                                         std::int32_t inserted) {
    PairAligner& own = aligner_;
    if (own.comparison_ == nullptr)
        return;
    const BlockIndex& index = own.IndexOf(side_);
    const ParagraphNumber begin = index.OfChar(first).paragraph;
    const ParagraphNumber end = index.OfChar(first + inserted).paragraph;
    const std::int32_t more = index.ParagraphCount() - own.paragraphs_[side_];
    const std::int32_t now = end - begin + 1;
    const std::int32_t rows = own.rows_.Rows();
    own.rows_.Apply(side_, {begin, now - more, now, true});
    own.Touched(side_, rows, {begin, now});
}

void PairAligner::SideObserver::Reset() {
    PairAligner& own = aligner_;
    if (own.comparison_ == nullptr)
        return;
    own.rows_.Reset(side_, own.IndexOf(side_).ParagraphCount());
    for (const Side side : kBothSides)
        own.views_[side]->MarksChanged();
    own.Rebuild();
}

// A letter typed into a paragraph changes no row but its own, which is unmarked from now on.
void PairAligner::Touched(Side side, std::int32_t rows_before, const ParagraphSpan& paragraphs) {
    const bool same_rows = rows_.Rows() == rows_before &&
                           paragraphs_[side] == IndexOf(side).ParagraphCount() &&
                           blocks_[side] == IndexOf(side).BlockCount();
    if (!same_rows) {
        for (const Side each : kBothSides)
            views_[each]->MarksChanged();
        Rebuild();
        return;
    }
    const Side other = OtherSide(side);
    const ParagraphRow first = rows_.Row(rows_.RowOf(side, paragraphs.first));
    const ParagraphRow last = rows_.Row(rows_.RowOf(side, paragraphs.end() - 1));
    const BlockIndex& index = IndexOf(other);
    const std::int32_t begin = index.OfParagraph(first.paragraphs[other].first).number;
    const std::int32_t end = index.OfParagraph(last.paragraphs[other].end()).number;
    views_[other]->Page().Layouts().Drop(begin, end);
    views_[other]->viewport()->update();
    if (rows_changed)
        rows_changed();
}

}  // namespace zorvane
