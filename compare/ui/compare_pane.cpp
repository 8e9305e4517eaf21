#include "compare/ui/compare_pane.h"

#include <algorithm>

#include <QApplication>
#include <QWheelEvent>

#include "compare/document/heading_places.h"
#include "compare/ui/pane_columns.h"

namespace zorvane {

PaneTexts PaneTexts::English() {
    PaneTexts texts;
    texts.fold = [](std::int32_t paragraphs) {
        return QStringLiteral("%1 unchanged paragraphs").arg(paragraphs);
    };
    texts.fold_spoken = [](std::int32_t paragraphs) {
        return QStringLiteral("%1 unchanged paragraphs, folded").arg(paragraphs);
    };
    texts.overview = [](std::int32_t count) {
        return QStringLiteral("Overview, %1 differences").arg(count);
    };
    texts.in_sight = [](std::int32_t first, std::int32_t last, std::int32_t all) {
        return QStringLiteral("paragraphs %1 to %2 of %3").arg(first).arg(last).arg(all);
    };
    texts.only_in = [](Side side, std::int32_t paragraphs) {
        const QString text = side == Side::Original ? QStringLiteral("only in Original")
                                                    : QStringLiteral("only in Modified");
        return paragraphs < 2 ? text : text + QStringLiteral(", %1 paragraphs").arg(paragraphs);
    };
    texts.moved_to = [](std::int32_t paragraph) {
        return QStringLiteral("moved to paragraph %1").arg(paragraph);
    };
    texts.copy = [](std::int32_t record, Side from) {
        return QStringLiteral("Copy difference %1 to %2")
            .arg(record + 1)
            .arg(from == Side::Original ? QStringLiteral("Modified") : QStringLiteral("Original"));
    };
    return texts;
}

ComparePane::ComparePane(RichDocument& original, RichDocument& modified, QWidget* parent)
    : QWidget(parent),
      views_{new RichTextView(original, this), new RichTextView(modified, this)},
      merged_view_(new RichTextView(merged_document_, this)),
      strip_(new ConnectorStrip(*views_.original, this)),
      overview_(new DifferenceOverview(this)),
      aligner_(std::make_unique<PairAligner>(*views_.original, *views_.modified)),
      merged_rows_(std::make_unique<PairedRows>()) {
    views_.original->SetOuterEdges(OuterEdges::Left);
    views_.modified->SetOuterEdges(OuterEdges::Right);
    merged_view_->SetOuterEdges(OuterEdges::Both);
    merged_view_->SetNumberColumns(NumberColumns::Two);
    merged_view_->SetLineLength(kLineLength);
    merged_view_->SetReadOnly(true);
    merged_view_->hide();
    // The overview scrolls; a bar beside it would tell the same twice.
    ForViews([](RichTextView& view) { view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); });
    ConnectViews();
    SetTexts(texts_);
    SetColors(ViewColors::Light());
}

// The merged view must go before its document, and all views before what they borrow.
ComparePane::~ComparePane() {
    aligner_.reset();
    delete merged_view_;
}

void ComparePane::ConnectViews() {
    for (const Side side : kBothSides) {
        RichTextViewEvents& events = views_[side]->Events();
        events.top_moved = [this, side](double moved) { Follow(side, moved); };
        events.scrolled_sideways = [this, side] {
            if (aligner_->Aligned())
                views_[OtherSide(side)]->SetScrolledX(views_[side]->ScrolledX());
        };
        events.fold_opened = [this](std::int32_t row) { aligner_->OpenFold(row); };
        events.room_clicked = [this, side](const RoomRun& run) { RoomClicked(side, run); };
        events.shown_anew = [this] {
            if (aligner_ != nullptr)
                aligner_->Check();
            strip_->RowsMoved();
            WindowOfOverview();
        };
    }
    merged_view_->Events().top_moved = [this](double /*moved*/) { WindowOfOverview(); };
    merged_view_->Events().shown_anew = [this] { WindowOfOverview(); };
    merged_view_->Events().fold_opened = [this](std::int32_t row) {
        const Block block = merged_view_->Page().Index().At(merged_rows_->At(row).block.original);
        merged_folds_.opened.insert(block.paragraph.value);
        const std::int32_t top = merged_view_->Page().TopBlock();
        FoldRows(*merged_marks_, merged_view_->Page().Index(), merged_folds_, *merged_rows_);
        merged_view_->RowsChanged(top);
    };
    aligner_->rows_changed = [this] {
        strip_->RowsMoved();
        MarksOfOverview();
        WindowOfOverview();
    };
    strip_->copy_over = [this](std::int32_t record, Side from) {
        if (copy_over)
            copy_over(record, from);
    };
    strip_->clicked = [this](std::int32_t record) {
        if (record_clicked)
            record_clicked(record);
    };
    overview_->go_to = [this](double part) { GoToPart(part); };
    overview_->wheel = [this](QWheelEvent* event) {
        RichTextView* view = all_in_one_ ? merged_view_ : views_.original;
        QApplication::sendEvent(view->viewport(), event);
    };
}

void ComparePane::SetTexts(PaneTexts texts) {
    texts_ = std::move(texts);
    for (const Side side : kBothSides)
        views_[side]->SetLabels(LabelsOf(side));
    merged_view_->SetLabels(LabelsOf(Side::Original));
    strip_->button_name = texts_.copy;
    overview_->place_words = [this](const OverviewPlaces& places) {
        return texts_.in_sight ? texts_.in_sight(places.first, places.last, places.all) : QString();
    };
}

ViewLabels ComparePane::LabelsOf(Side side) const {
    ViewLabels labels;
    labels.fold = texts_.fold;
    labels.fold_spoken = texts_.fold_spoken;
    labels.difference = texts_.difference;
    labels.room = [this, side](const RoomRun& run) { return RoomLabel(side, run); };
    return labels;
}

QString ComparePane::RoomLabel(Side side, const RoomRun& run) const {
    const std::shared_ptr<const Comparison>& result = aligner_->Result();
    if (result == nullptr || run.record < 0)
        return {};
    const auto index = static_cast<std::size_t>(run.record);
    if (const Move* move = result->MoveOf(index)) {
        const DifferenceRecord& partner =
            result->Record(PartnerOf(*move, result->records[index].type));
        return texts_.moved_to ? texts_.moved_to(partner.paragraphs[side].first.value) : QString();
    }
    return texts_.only_in ? texts_.only_in(OtherSide(side), run.paragraphs) : QString();
}

// Of a moved paragraph: to where it went.
void ComparePane::RoomClicked(Side side, const RoomRun& run) {
    const std::shared_ptr<const Comparison>& result = aligner_->Result();
    if (result == nullptr || run.record < 0)
        return;
    const auto index = static_cast<std::size_t>(run.record);
    if (const Move* move = result->MoveOf(index)) {
        const DifferenceRecord& partner =
            result->Record(PartnerOf(*move, result->records[index].type));
        ShowParagraph(side, partner.paragraphs[side].first);
    } else if (record_clicked) {
        record_clicked(run.record);
    }
}

void ComparePane::SetComparison(std::shared_ptr<const Comparison> comparison) {
    current_ = -1;
    strip_->SetCurrentRecord(-1);
    ForViews([](RichTextView& view) { view.SetCurrentRecord(-1); });
    if (comparison == nullptr)
        merged_folds_.opened.clear();
    aligner_->SetComparison(std::move(comparison));
    if (all_in_one_)
        MakeMerged();
    MarksOfOverview();
    WindowOfOverview();
}

void ComparePane::MakeMerged() {
    const std::int32_t top = merged_view_->Page().TopBlock();
    merged_view_->SetRows(nullptr);
    merged_view_->SetMarks(nullptr);
    const std::shared_ptr<const Comparison>& result = aligner_->Result();
    if (result == nullptr) {
        merged_document_.Clear();
        return;
    }
    MergedText merged =
        MergeTexts(*result, {&views_.original->Document(), &views_.modified->Document()});
    const std::vector<CharPos> headings =
        keep_headings_ ? HeadingPlaces(merged.text) : std::vector<CharPos>();
    merged_marks_ = std::make_unique<MergedMarks>(std::move(merged.marks));
    merged_document_.SetRich(std::move(merged.text));
    merged_view_->SetMarks(merged_marks_.get());
    merged_folds_.rule.headings.clear();
    for (const CharPos place : headings)
        merged_folds_.rule.headings.push_back(
            merged_view_->Page().Index().OfChar(place).paragraph.value - 1);
    FoldRows(*merged_marks_, merged_view_->Page().Index(), merged_folds_, *merged_rows_);
    merged_view_->SetRows(&merged_rows_->Of(Side::Original));
    merged_view_->RowsChanged(std::min(top, merged_view_->Page().Index().BlockCount() - 1));
}

void ComparePane::SetColors(const ViewColors& colors) {
    ForViews([&](RichTextView& view) { view.SetColors(colors); });
    strip_->SetColors(colors);
    overview_->SetColors(colors);
}

void ComparePane::SetZoom(double zoom) {
    ForViews([&](RichTextView& view) { view.SetZoom(zoom); });
}

void ComparePane::SetWrap(bool wrap) {
    ForViews([&](RichTextView& view) { view.SetWrap(wrap); });
    aligner_->Check();
}

void ComparePane::SetAligned(bool aligned) {
    for (const Side side : kBothSides) {
        views_[side]->setVerticalScrollBarPolicy(aligned ? Qt::ScrollBarAlwaysOff
                                                         : Qt::ScrollBarAsNeeded);
    }
    aligner_->SetAligned(aligned);
    strip_->SetAligned(aligned);
}

void ComparePane::SetFolded(bool folded) {
    merged_folds_.folded = folded;
    merged_folds_.opened.clear();
    aligner_->SetFolded(folded);
    if (all_in_one_ && merged_marks_ != nullptr) {
        const std::int32_t top = merged_view_->Page().TopBlock();
        FoldRows(*merged_marks_, merged_view_->Page().Index(), merged_folds_, *merged_rows_);
        merged_view_->RowsChanged(top);
    }
}

void ComparePane::SetFoldRule(const FoldRule& rule, bool keep_headings) {
    keep_headings_ = keep_headings;
    merged_folds_.rule = rule;
    aligner_->SetFoldRule(rule);
    SetFolded(merged_folds_.folded);
}

void ComparePane::SetAllInOne(bool all_in_one) {
    all_in_one_ = all_in_one;
    if (all_in_one)
        MakeMerged();
    for (const Side side : kBothSides)
        views_[side]->setVisible(!all_in_one);
    strip_->setVisible(!all_in_one);
    merged_view_->setVisible(all_in_one);
    Arrange();
    SetCurrent(current_);
    MarksOfOverview();
    WindowOfOverview();
}

void ComparePane::SetCurrent(std::int32_t record) {
    current_ = record;
    ForViews([&](RichTextView& view) { view.SetCurrentRecord(record); });
    strip_->SetCurrentRecord(record);
    if (record < 0 || aligner_->Result() == nullptr)
        return;
    if (all_in_one_) {
        const RowSpan span = merged_rows_->RowsOfRecord(record);
        if (span.count > 0)
            merged_view_->ShowRow(span.first);
    } else if (aligner_->Aligned()) {
        const RowSpan span = aligner_->Shown().RowsOfRecord(record);
        if (span.count > 0)
            views_.original->ShowRow(span.first);
    } else {
        const RowSpan span = aligner_->Rows().RowsOfRecord(record);
        for (const Side side : kBothSides)
            ShowParagraph(side, aligner_->Rows().Row(span.first).paragraphs[side].first);
    }
    strip_->RowsMoved();
    WindowOfOverview();
}

void ComparePane::ShowParagraph(Side side, ParagraphNumber paragraph) {
    RichTextView& view = *views_[side];
    view.ShowRow(view.Page().Rows().RowOfBlock(view.Page().Index().OfParagraph(paragraph).number));
}

void ComparePane::Follow(Side from, double moved) {
    if (following_)
        return;
    following_ = true;
    if (aligner_->Aligned() && aligner_->Result() != nullptr)
        views_[OtherSide(from)]->FollowTop(views_[from]->Page().Top(), moved);
    following_ = false;
    strip_->RowsMoved();
    WindowOfOverview();
}

// ---- places of the parts ----

void ComparePane::SetRatio(double ratio) {
    ratio_ = ratio;
    Arrange();
}

void ComparePane::resizeEvent(QResizeEvent* /*event*/) {
    Arrange();
}

void ComparePane::Arrange() {
    const PaneColumns columns = PaneColumns::Of(width(), ratio_);
    views_.original->setGeometry(0, 0, columns.left_end, height());
    strip_->setGeometry(columns.left_end, 0, kStripWidth, height());
    views_.modified->setGeometry(columns.right_begin, 0, columns.right_end - columns.right_begin,
                                 height());
    merged_view_->setGeometry(0, 0, columns.right_end, height());
    overview_->setGeometry(columns.right_end, 0, kOverviewWidth, height());
}

}  // namespace zorvane
