#include "compare/ui/rich_text_view.h"

#include <algorithm>
#include <cmath>

#include <QAccessible>
#include <QGuiApplication>
#include <QInputMethod>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "common/ui/measures.h"
#include "compare/ui/rich_text_accessible.h"

namespace zorvane {
namespace {

constexpr double kGutter = 52;
constexpr double kTwoNumbersGutter = 82;
constexpr double kNumberRight = 30;
constexpr double kSecondNumberRight = 58;
constexpr double kSignBehindText = 12;  // from the sign's middle to the text's left edge
constexpr double kRightMargin = 20;
constexpr double kPlainLeft = 16;
constexpr double kNumberPoints = 8.5;
constexpr double kLabelPoints = 9;
constexpr double kLeastColumn = 60;
constexpr int kAutoScrollInterval = 40;
constexpr int kEstimateDelay = 300;

QFont SmallFont(const QFont& font, double points) {
    QFont small = font;
    small.setPointSizeF(points);
    return small;
}

}  // namespace

RichTextView::RichTextView(RichDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent),
      document_(document),
      page_(document),
      input_(page_),
      mover_(page_) {
    RichTextAccessible::Install();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setViewportMargins(0, measures::kFocusLine, 0, 0);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setAcceptDrops(true);
    auto_scroll_.setInterval(kAutoScrollInterval);
    connect(&auto_scroll_, &QTimer::timeout, this, [this] { AutoScroll(); });
    estimate_.setInterval(kEstimateDelay);
    estimate_.setSingleShot(true);
    connect(&estimate_, &QTimer::timeout, this, [this] {
        page_.EstimateAnew();
        UpdateBars();
        if (events_.shown_anew)
            events_.shown_anew();
    });
    ConnectBars();
    document_.AddObserver(*this);
    StyleChanged();
}

RichTextView::~RichTextView() {
    document_.RemoveObserver(*this);
}

// ---- look ----

void RichTextView::SetColors(const ViewColors& colors) {
    style_.colors = colors;
    StyleChanged();
}

void RichTextView::SetZoom(double zoom) {
    style_.zoom = std::clamp(zoom, 0.1, 10.0);
    StyleChanged();
}

void RichTextView::SetWrap(bool wrap) {
    style_.wrap = wrap;
    scrolled_x_ = 0;
    StyleChanged();
}

void RichTextView::SetNumberColumns(NumberColumns columns) {
    number_columns_ = columns;
    StyleChanged();
}

void RichTextView::SetLineLength(double pixels) {
    line_length_ = pixels;
    StyleChanged();
}

void RichTextView::SetOuterEdges(OuterEdges edges) {
    edges_ = edges;
    viewport()->update();
}

void RichTextView::LayOutColumns() {
    const double width = viewport()->width();
    ViewColumns columns;
    columns.number_count = static_cast<int>(number_columns_);
    // Numbers of many digits push the text to the right.
    const QFontMetricsF metrics(SmallFont(font(), kNumberPoints));
    const QString longest = QString::number(page_.Index().ParagraphCount());
    const double more =
        std::max(0.0, std::ceil(metrics.horizontalAdvance(longest) + 4 - kNumberRight));
    double gutter = kPlainLeft;
    if (number_columns_ == NumberColumns::One)
        gutter = kGutter + more;
    if (number_columns_ == NumberColumns::Two)
        gutter = kTwoNumbersGutter + 2 * more;
    double text_width = width - gutter - kRightMargin;
    double left = gutter;
    if (line_length_ > 0 && text_width > line_length_ * style_.zoom) {
        text_width = line_length_ * style_.zoom;
        // The numbers hang to the left of a text that stands in the middle.
        left = std::max(gutter, std::floor((width - text_width) / 2));
    }
    columns.text_left = left;
    columns.text_width = std::max(kLeastColumn, std::floor(text_width));
    columns.sign_middle = left - kSignBehindText;
    columns.number_right[0] = left - gutter + kNumberRight + more;
    columns.number_right[1] = left - gutter + kSecondNumberRight + 2 * more;
    columns_ = columns;
}

void RichTextView::StyleChanged() {
    LayOutColumns();
    style_.width = columns_.text_width;
    page_.SetWindowHeight(viewport()->height());
    page_.SetStyle(style_);
    estimate_.start();
    viewport()->update();
    update();
    UpdateBars();
    if (events_.shown_anew)
        events_.shown_anew();
}

// ---- marks, rows, hits ----

void RichTextView::SetMarks(const MarkSource* marks) {
    page_.Layouts().SetMarks(marks);
    viewport()->update();
}

void RichTextView::MarksChanged() {
    page_.Layouts().Clear();
    viewport()->update();
}

void RichTextView::SetRows(ViewRows* rows) {
    page_.SetRows(rows);
    UpdateBars();
    viewport()->update();
}

void RichTextView::RowsChanged(std::int32_t top_block) {
    page_.RowsChanged(top_block);
    UpdateBars();
    viewport()->update();
}

void RichTextView::SetCurrentRecord(std::int32_t record) {
    current_record_ = record;
    viewport()->update();
}

void RichTextView::SetFinder(FindInText find, TextRange this_hit) {
    find_ = std::move(find);
    this_hit_ = this_hit;
    viewport()->update();
}

// ---- painting and scrolling ----

PaintState RichTextView::MakeState() const {
    PaintState state;
    state.size = viewport()->size();
    state.columns = columns_;
    state.scrolled_x = scrolled_x_;
    state.hatch_phase = hatch_phase_;
    state.selection = document_.Selection();
    state.caret = hasFocus() || drop_place_.value >= 0;
    state.caret_place = drop_place_.value >= 0 ? drop_place_ : document_.Caret().Caret();
    state.current_record = current_record_;
    state.edges = edges_;
    state.find = find_;
    state.this_hit = this_hit_;
    state.labels = labels_;
    state.number_font = SmallFont(font(), kNumberPoints * style_.zoom);
    state.label_font = SmallFont(font(), kLabelPoints * style_.zoom);
    return state;
}

void RichTextView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const PaintState state = MakeState();
    for (const QRect& rect : event->region()) {
        painter.save();
        painter.setClipRect(rect);
        TextPainter(page_, state, painter).Paint(rect);
        painter.restore();
    }
    UpdateBars();
}

// The line above the text that shows where the keys go.
bool RichTextView::event(QEvent* event) {
    if (event->type() == QEvent::Paint) {
        QPainter painter(this);
        painter.fillRect(0, 0, width(), measures::kFocusLine,
                         hasFocus() ? style_.colors.ink : style_.colors.paper);
        return true;
    }
    // Another screen may have another resolution, and so other fonts.
    if (event->type() == QEvent::ScreenChangeInternal)
        StyleChanged();
    return QAbstractScrollArea::event(event);
}

void RichTextView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        StyleChanged();
}

void RichTextView::resizeEvent(QResizeEvent* /*event*/) {
    const ViewColumns before = columns_;
    page_.SetWindowHeight(viewport()->height());
    LayOutColumns();
    if (columns_.text_width != before.text_width) {
        StyleChanged();
        return;
    }
    page_.SetTop(page_.Top());
    viewport()->update();
    UpdateBars();
    if (events_.shown_anew)
        events_.shown_anew();
}

// ---- places ----

QRectF RichTextView::CaretRectOf(CharPos position) {
    return page_.CaretRect(position).translated(columns_.text_left - scrolled_x_, 0);
}

CharPos RichTextView::PositionAt(QPointF viewport_point) {
    const QPointF point = viewport_point - QPointF(columns_.text_left - scrolled_x_, 0);
    return document_.Clip({page_.PositionAt(point), 0}).first;
}

void RichTextView::EnsureCaretVisible() {
    ShowPosition(document_.Caret().Caret());
}

void RichTextView::ShowPosition(CharPos position) {
    if (page_.Show(position))
        MovedBy(0);
    if (style_.wrap)
        return;
    const double x = page_.CaretRect(position).x();
    const double width = columns_.text_width;
    if (x < scrolled_x_ || x > scrolled_x_ + width) {
        UpdateBars();
        SetScrolledX(std::max(0.0, x - width / 2));
    }
}

void RichTextView::PutRow(std::int32_t row, double part_of_window) {
    page_.PutRow(row, part_of_window);
    MovedBy(0);
}

void RichTextView::ShowRow(std::int32_t row) {
    if (page_.ShowRow(row))
        MovedBy(0);
}

// ---- notices of the document ----

void RichTextView::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    if (input_.IsComposing())
        input_.Cancel();
    page_.Replaced(first, removed, inserted);
    viewport()->update();
    RichTextAccessible::TellEdit(*this, first, removed, inserted);
}

void RichTextView::Reformatted(CharPos first, std::int32_t length) {
    page_.Reformatted(first, length);
    viewport()->update();
}

void RichTextView::Reset() {
    input_.Cancel();
    page_.Reset();
    const ViewColumns before = columns_;
    LayOutColumns();
    if (columns_.text_width != before.text_width)
        StyleChanged();
    viewport()->update();
    RichTextAccessible::TellReset(*this);
}

void RichTextView::SelectionChanged() {
    viewport()->update();
    TellCaret();
    if (selections_told_)
        RichTextAccessible::TellCaret(*this);
    if (hasFocus())
        QGuiApplication::inputMethod()->update(Qt::ImQueryInput);
}

void RichTextView::TellCaret() {
    if (!events_.caret_moved)
        return;
    const CharPos caret = document_.Caret().Caret();
    const Block block = page_.Index().OfChar(caret);
    const CharPos begin = page_.Index().OfParagraph(block.paragraph).first;
    events_.caret_moved(block.paragraph.value, caret - begin + 1);
}

}  // namespace zorvane
