#include "compare/ui/view_page.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>

namespace zorvane {
namespace {

constexpr std::int32_t kLongestWrapped = 8192;
constexpr std::int32_t kLongestUnwrapped = 2048;
// Rows nearer than this are reached by real heights, farther ones by the sums.
constexpr std::int32_t kNearRows = 200;
// Texts of so many blocks are measured anew within a frame.
constexpr std::int32_t kQuickBlocks = 20000;

BlockRules RulesOf(const TextStyle& style, const QTextCharFormat& format) {
    const QFontMetricsF metrics(format.font());
    BlockRules rules;
    rules.longest_block = style.wrap ? kLongestWrapped : kLongestUnwrapped;
    rules.row_height = static_cast<float>(metrics.height() * style.line_factor);
    const double units = style.width / std::max(1.0, metrics.averageCharWidth());
    rules.room = static_cast<float>((style.room_above + style.room_below) * style.zoom);
    rules.units_in_row = style.wrap ? std::max(1, static_cast<std::int32_t>(units)) : 0;
    return rules;
}

}  // namespace

ViewPage::ViewPage(RichDocument& document)
    : document_(&document),
      index_(document),
      block_rows_(index_),
      rows_(&block_rows_),
      cache_(document, index_),
      blocks_before_(index_.BlockCount()) {}

void ViewPage::SetStyle(const TextStyle& style) {
    const bool cut_anew = style.wrap != Style().wrap;
    cache_.SetStyle(style);
    widest_ = 0;
    // While a window is being resized only what is in sight counts; the estimates of a long text
    // follow when there is time.
    if (cut_anew || index_.BlockCount() <= kQuickBlocks)
        EstimateAnew();
    else
        KeepEndAtBottom();
}

void ViewPage::EstimateAnew() {
    const CharPos top = index_.At(TopBlock()).first;
    const TextStyle& style = Style();
    FormatMaker formats;
    index_.SetRules(RulesOf(style, formats.Of(document_->FormatAt(CharPos{0}), style.zoom)));
    const bool cut_anew = blocks_before_ != index_.BlockCount();
    blocks_before_ = index_.BlockCount();
    if (cut_anew)
        cache_.Clear();
    if (rows_ == &block_rows_ && cut_anew)
        SetTop({index_.OfChar(top).number, 0});
    else if (rows_ == &block_rows_)
        KeepEndAtBottom();
}

void ViewPage::SetRows(ViewRows* rows) {
    const std::int32_t block = TopBlock();
    rows_ = rows == nullptr ? &block_rows_ : rows;
    RowsChanged(block);
}

void ViewPage::RowsChanged(std::int32_t top_block) {
    if (rows_->Count() == 0) {
        top_ = {};
        return;
    }
    const std::int32_t block = std::clamp(top_block, 0, index_.BlockCount() - 1);
    SetTop({rows_->RowOfBlock(block), top_.offset});
}

void ViewPage::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    index_.Replaced(first, removed, inserted);
    const std::int32_t moved = index_.BlockCount() - blocks_before_;
    blocks_before_ = index_.BlockCount();
    cache_.Replaced(first, removed, inserted, moved);
    const std::int32_t last = index_.OfChar(first + inserted).number;
    if (rows_ != &block_rows_)
        return;  // whoever made the rows makes them anew
    // What is in the window stays where it is when something above it changes.
    if (top_.row > last - moved)
        top_.row += moved;
    top_.row = std::clamp(top_.row, 0, index_.BlockCount() - 1);
    Normalize();
    KeepEndAtBottom();
}

void ViewPage::Reformatted(CharPos first, std::int32_t length) {
    index_.Reformatted(first, length);
    const Block begin = index_.OfChar(first);
    const Block end = index_.OfChar(first + length);
    cache_.Drop(begin.number, end.number);
    KeepEndAtBottom();
}

void ViewPage::Reset() {
    index_.Reset();
    cache_.Clear();
    blocks_before_ = index_.BlockCount();
    widest_ = 0;
    if (rows_ != &block_rows_)
        return;
    top_.row = std::min(top_.row, index_.BlockCount() - 1);
    Normalize();
    KeepEndAtBottom();
}

double ViewPage::BlockHeight(std::int32_t block) {
    const ParagraphLayout& layout = cache_.Of(block);
    widest_ = std::max(widest_, layout.Width());
    index_.SetHeight(block, static_cast<float>(layout.Height()));
    return layout.Height();
}

double ViewPage::ContentHeight(std::int32_t row) {
    const ViewRow what = rows_->At(row);
    if (what.folded > 0)
        return std::round(kFoldRowHeight * Style().zoom);
    double height = 0;
    for (std::int32_t block = 0; block < what.block_count; ++block)
        height += BlockHeight(what.first_block + block);
    return height;
}

double ViewPage::RowHeight(std::int32_t row) {
    const double height = std::max(ContentHeight(row), rows_->LeastHeight(row));
    rows_->SetHeight(row, height);
    return height;
}

std::vector<ShownRow> ViewPage::Shown() {
    std::vector<ShownRow> shown;
    double y = -top_.offset;
    for (std::int32_t row = top_.row; row < rows_->Count() && y < window_height_; ++row) {
        const double height = RowHeight(row);
        shown.push_back({row, rows_->At(row), y, height});
        y += height;
    }
    return shown;
}

std::vector<ShownBlock> ViewPage::BlocksOf(const ShownRow& row) {
    std::vector<ShownBlock> blocks;
    double y = row.y;
    for (std::int32_t block = 0; block < row.what.block_count; ++block) {
        const double height = BlockHeight(row.what.first_block + block);
        blocks.push_back({index_.At(row.what.first_block + block), y, height});
        y += height;
    }
    return blocks;
}

std::int32_t ViewPage::TopBlock() const {
    for (std::int32_t row = top_.row; row >= 0 && row < rows_->Count(); --row) {
        const ViewRow what = rows_->At(row);
        if (what.first_block >= 0)
            return what.first_block;
    }
    return 0;
}

void ViewPage::SetTop(PageTop top) {
    top_ = top;
    top_.row = std::clamp(top_.row, 0, std::max(0, rows_->Count() - 1));
    Normalize();
    KeepEndAtBottom();
}

// Brings the offset into its row.
void ViewPage::Normalize() {
    if (rows_->Count() == 0) {
        top_ = {};
        return;
    }
    while (top_.offset < 0 && top_.row > 0) {
        --top_.row;
        top_.offset += RowHeight(top_.row);
    }
    top_.offset = std::max(0.0, top_.offset);
    while (top_.row + 1 < rows_->Count() && top_.offset > 0) {
        const double height = RowHeight(top_.row);
        if (top_.offset < height)
            break;
        top_.offset -= height;
        ++top_.row;
    }
}

// Height of what is below the window's upper edge, looked at as far as `wanted`.
double ViewPage::RoomBelowTop(double wanted) {
    double below = -top_.offset;
    for (std::int32_t row = top_.row; row < rows_->Count() && below < wanted; ++row)
        below += RowHeight(row);
    return below;
}

void ViewPage::KeepEndAtBottom() {
    const double missing = window_height_ - RoomBelowTop(window_height_);
    if (missing <= 0 || (top_.row == 0 && top_.offset == 0))
        return;
    top_.offset -= std::ceil(missing);
    Normalize();
}

double ViewPage::ScrollBy(double distance) {
    const double wanted = distance;
    const PageTop before = top_;
    if (std::abs(distance) > 2 * window_height_) {
        const double y = Y();
        GoToY(y + distance);
        return Y() - y;
    }
    top_.offset += distance;
    Normalize();
    KeepEndAtBottom();
    // The way really gone: all of it, or what the text's ends left of it.
    if (top_.row == before.row)
        return top_.offset - before.offset;
    double gone = 0;
    const std::int32_t low = std::min(before.row, top_.row);
    const std::int32_t high = std::max(before.row, top_.row);
    for (std::int32_t row = low; row < high; ++row)
        gone += RowHeight(row);
    gone = wanted > 0 ? gone : -gone;
    return gone + top_.offset - before.offset;
}

void ViewPage::GoToY(double y) {
    const std::int32_t row = rows_->AtY(std::max(0.0, y));
    SetTop({row, std::max(0.0, std::round(y - rows_->Y(row)))});
}

double ViewPage::Y() const {
    return rows_->Count() == 0 ? 0 : rows_->Y(top_.row) + top_.offset;
}

double ViewPage::RowY(std::int32_t row) {
    if (std::abs(row - top_.row) > kNearRows)
        return rows_->Y(row) - Y();
    double y = -top_.offset;
    for (std::int32_t at = top_.row; at < row; ++at)
        y += RowHeight(at);
    for (std::int32_t at = top_.row - 1; at >= row; --at)
        y -= RowHeight(at);
    return y;
}

ViewPage::Place ViewPage::PlaceOf(CharPos position) {
    Place place;
    place.block = index_.OfChar(position);
    place.layout = &cache_.Of(place.block.number);
    place.at = std::clamp(position - place.block.first, 0, place.layout->Length());
    return place;
}

QRectF ViewPage::CaretRect(CharPos position) {
    const std::int32_t number = index_.OfChar(position).number;
    const std::int32_t row = rows_->RowOfBlock(number);
    const ViewRow what = rows_->At(row);
    double y = RowY(row);
    if (what.first_block < 0 || number < what.first_block)
        return {0, y, 0, kFoldRowHeight};
    for (std::int32_t block = what.first_block; block < number; ++block)
        y += BlockHeight(block);
    const Place place = PlaceOf(position);
    const bool composing = cache_.HasPreedit() && cache_.PreeditPlace() == position;
    const QRectF caret =
        composing ? place.layout->PreeditCaretRect() : place.layout->CaretRect(place.at);
    return caret.translated(0, y);
}

CharPos ViewPage::PositionAt(QPointF point) {
    const std::vector<ShownRow> shown = Shown();
    if (shown.empty())
        return CharPos{0};
    const auto found = std::find_if(shown.begin(), shown.end(), [&](const ShownRow& row) {
        return point.y() < row.y + row.height;
    });
    const ShownRow& row = found == shown.end() ? shown.back() : *found;
    if (row.what.block_count == 0) {
        // Nothing of this text is here: the nearest place above it.
        const std::int32_t saved = top_.row;
        top_.row = row.row;
        const Block block = index_.At(TopBlock());
        top_.row = saved;
        return block.first;
    }
    const std::vector<ShownBlock> blocks = BlocksOf(row);
    const auto hit = std::find_if(blocks.begin(), blocks.end(), [&](const ShownBlock& block) {
        return point.y() < block.y + block.height;
    });
    const ShownBlock& block = hit == blocks.end() ? blocks.back() : *hit;
    const ParagraphLayout& layout = cache_.Of(block.block.number);
    return block.block.first + layout.PositionAt(point - QPointF(0, block.y));
}

void ViewPage::PutRow(std::int32_t row, double part) {
    row = std::clamp(row, 0, std::max(0, rows_->Count() - 1));
    SetTop({row, -std::floor(window_height_ * part)});
}

bool ViewPage::ShowRow(std::int32_t row) {
    const PageTop before = top_;
    row = std::clamp(row, 0, std::max(0, rows_->Count() - 1));
    const double y = RowY(row);
    const bool near = std::abs(row - top_.row) <= kNearRows;
    if (near && y >= 0 && y + std::min(RowHeight(row), window_height_) <= window_height_)
        return false;
    PutRow(row, kUpperThird);
    return !(top_ == before);
}

bool ViewPage::Show(CharPos position) {
    const PageTop before = top_;
    const QRectF caret = CaretRect(position);
    if (caret.top() >= 0 && caret.bottom() <= window_height_)
        return false;
    const std::int32_t number = index_.OfChar(position).number;
    const std::int32_t row = rows_->RowOfBlock(number);
    if (std::abs(row - top_.row) > kNearRows || std::abs(caret.top()) > 2 * window_height_) {
        PutRow(row, kUpperThird);
        // The place may be deep inside its row.
        const double inside = CaretRect(position).top() - window_height_ * kUpperThird;
        if (inside > window_height_ * kUpperThird)
            SetTop({top_.row, top_.offset + std::floor(inside)});
    } else if (caret.top() < 0) {
        SetTop({top_.row, top_.offset + std::floor(caret.top())});
    } else {
        SetTop({top_.row, top_.offset + std::ceil(caret.bottom() - window_height_)});
    }
    return !(top_ == before);
}

}  // namespace zorvane
