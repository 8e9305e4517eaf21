#include "compare/ui/paired_rows.h"

#include <algorithm>
#include <utility>

namespace zorvane {
namespace {

// A pair of more blocks than this is cut into rows of one slice each.
constexpr std::int32_t kMostBlocksInRow = 8;

// Where each paragraph's blocks begin, and their estimated heights.
class BlockTable {
  public:
    explicit BlockTable(const BlockIndex* index) {
        if (index == nullptr)
            return;
        heights_.reserve(static_cast<std::size_t>(index->BlockCount()));
        sliced_ = index->BlockCount() != index->ParagraphCount();
        index->VisitAll([&](bool continues, float height) {
            if (sliced_ && !continues)
                starts_.push_back(static_cast<std::int32_t>(heights_.size()));
            heights_.push_back(height);
        });
    }

    /// Of the 1-based paragraph; of the one behind the last the number of blocks.
    std::int32_t Start(std::int32_t paragraph) const {
        if (!sliced_)
            return std::min(paragraph - 1, Count());
        const auto at = static_cast<std::size_t>(paragraph - 1);
        return at < starts_.size() ? starts_[at] : Count();
    }
    std::int32_t Count() const { return static_cast<std::int32_t>(heights_.size()); }
    float Height(std::int32_t first, std::int32_t count) const {
        float height = 0;
        for (std::int32_t block = first; block < std::min(first + count, Count()); ++block)
            height += heights_[static_cast<std::size_t>(block)];
        return height;
    }

  private:
    bool sliced_ = false;
    std::vector<std::int32_t> starts_;
    std::vector<float> heights_;
};

class RowWriter {
  public:
    RowWriter(const BlockTable& original, const BlockTable& modified)
        : original_(original), modified_(modified) {}

    void Put(const PairedRow& row) {
        const bool pair = row.count.original > 0 && row.count.modified > 0;
        const std::int32_t longest = std::max(row.count.original, row.count.modified);
        if (longest <= kMostBlocksInRow) {
            Add(row);
            return;
        }
        for (std::int32_t at = 0; at < longest; ++at) {
            PairedRow part = row;
            for (const Side side : kBothSides) {
                part.block[side] = row.block[side] + std::min(at, row.count[side]);
                part.count[side] = at < row.count[side] ? 1 : 0;
            }
            part.of_pair = pair;
            Add(part);
        }
    }

    std::vector<PairedRow> rows;
    std::vector<float> heights;

  private:
    void Add(const PairedRow& row) {
        rows.push_back(row);
        heights.push_back(row.folded > 0
                              ? static_cast<float>(kFoldRowHeight)
                              : std::max(original_.Height(row.block.original, row.count.original),
                                         modified_.Height(row.block.modified, row.count.modified)));
    }

    const BlockTable& original_;
    const BlockTable& modified_;
};

}  // namespace

void PairedRows::Assign(std::vector<PairedRow> rows, std::vector<float> heights) {
    rows_ = std::move(rows);
    heights_.Assign(std::move(heights));
    runs_.clear();
    for (std::int32_t row = 0; row < Count(); ++row) {
        const std::int32_t record = At(row).record;
        if (record < 0)
            continue;
        if (!runs_.empty() && runs_.back().end() == row && At(row - 1).record == record)
            ++runs_.back().count;
        else
            runs_.push_back({row, 1});
    }
}

RowSpan PairedRows::RowsOfRecord(std::int32_t record) const {
    // Records ascend, but an edit may have taken the rows of some.
    const auto found = std::lower_bound(
        runs_.begin(), runs_.end(), record,
        [&](const RowSpan& run, std::int32_t wanted) { return At(run.first).record < wanted; });
    if (found == runs_.end() || At(found->first).record != record)
        return {};
    return *found;
}

ViewRow PairedRows::SideRows::At(std::int32_t row) const {
    const PairedRow& own = pair_->At(row);
    ViewRow what;
    what.first_block = own.count[side_] > 0 ? own.block[side_] : -1;
    what.block_count = own.count[side_];
    what.folded = own.folded;
    what.kind = own.kind;
    what.record = own.record;
    what.of_pair = own.of_pair;
    return what;
}

// Rows of room and folds tell the block that follows (or that they hide first), so the last row
// that does not lie behind the block has it.
std::int32_t PairedRows::SideRows::RowOfBlock(std::int32_t block) const {
    const auto behind = std::upper_bound(
        pair_->rows_.begin(), pair_->rows_.end(), block,
        [&](std::int32_t place, const PairedRow& row) { return place < row.block[side_]; });
    const auto at = static_cast<std::int32_t>(behind - pair_->rows_.begin());
    return std::max(0, at - 1);
}

RoomRun PairedRows::SideRows::RunAt(std::int32_t row) const {
    const PairedRow& own = pair_->At(row);
    RoomRun run{row, 1, own.record, own.kind, own.count[OtherSide(side_)]};
    const auto found = std::upper_bound(
        pair_->runs_.begin(), pair_->runs_.end(), row,
        [](std::int32_t place, const RowSpan& span) { return place < span.first; });
    if (own.record < 0 || found == pair_->runs_.begin())
        return run;
    run.first_row = std::prev(found)->first;
    run.row_count = std::prev(found)->count;
    run.paragraphs = run.row_count;
    return run;
}

double PairedRows::SideRows::LeastHeight(std::int32_t row) const {
    const auto& content = pair_->content_[OtherSide(side_)];
    return content ? content(row) : 0;
}

namespace {

// The folds in the order of rows, as somebody meets them who walks down.
class FoldWalk {
  public:
    /// `first_paragraph` of a row is what an opened fold is known by.
    FoldWalk(std::vector<RowSpan> folds, const std::set<std::int32_t>& opened,
             std::function<std::int32_t(std::int32_t row)> first_paragraph)
        : folds_(std::move(folds)),
          opened_(opened),
          first_paragraph_(std::move(first_paragraph)),
          next_(folds_.begin()) {}

    /// The fold that hides the row; nullptr for none. Rows ascend from call to call.
    const RowSpan* HidingRow(std::int32_t number) {
        while (next_ != folds_.end() && next_->end() <= number)
            ++next_;
        const bool inside = next_ != folds_.end() && next_->first <= number;
        return inside && !opened_.contains(first_paragraph_(next_->first)) ? &*next_ : nullptr;
    }

  private:
    std::vector<RowSpan> folds_;
    const std::set<std::int32_t>& opened_;
    std::function<std::int32_t(std::int32_t)> first_paragraph_;
    std::vector<RowSpan>::const_iterator next_;
};

// The blocks of both sides in row `at` of a run; none where a fold hides them.
void PutBlocks(const ParagraphRow& run, std::int32_t at, const PerSide<BlockTable>& tables,
               PairedRow& row) {
    const bool last = at + 1 == run.rows.count;
    for (const Side side : kBothSides) {
        const ParagraphSpan& span = run.paragraphs[side];
        const std::int32_t paragraph = span.first.value + std::min(at, span.count);
        const std::int32_t end = last ? span.end().value : paragraph + 1;
        row.block[side] = tables[side].Start(paragraph);
        if (row.folded == 0 && at < span.count)
            row.count[side] = tables[side].Start(end) - row.block[side];
    }
}

}  // namespace

void PairRows(const ParagraphRows& rows, const PerSide<const BlockIndex*>& indexes,
              const std::function<MarkKind(std::int32_t)>& kind_of, const FoldState& folds,
              PairedRows& paired) {
    const PerSide<BlockTable> tables{BlockTable(indexes.original), BlockTable(indexes.modified)};
    RowWriter writer(tables.original, tables.modified);
    FoldWalk walk(
        folds.folded ? FoldableRows(rows, folds.rule) : std::vector<RowSpan>(), folds.opened,
        [&rows](std::int32_t row) { return rows.Row(row).paragraphs.original.first.value; });
    for (std::int32_t first = 0; first < rows.Rows();) {
        const ParagraphRow run = rows.RunAt(first);
        const bool plain = run.record < 0 || run.kind == RowKind::Edited;
        const MarkKind kind = plain ? MarkKind::None : kind_of(run.record);
        for (std::int32_t at = 0; at < run.rows.count; ++at) {
            const std::int32_t number = run.rows.first + at;
            const RowSpan* fold = walk.HidingRow(number);
            if (fold != nullptr && number > fold->first)
                continue;
            PairedRow row;
            row.record = run.record;
            row.kind = kind;
            row.folded = fold != nullptr ? fold->count : 0;
            PutBlocks(run, at, tables, row);
            writer.Put(row);
        }
        first = run.rows.end();
    }
    paired.Assign(std::move(writer.rows), std::move(writer.heights));
}

namespace {

// Of paragraphs of one text, 0-based as rows are.
std::vector<RowSpan> FoldableParagraphs(const MarkSource& marks, std::int32_t count,
                                        const FoldRule& rule) {
    std::vector<RowSpan> folds;
    for (std::int32_t first = 0; first < count;) {
        std::int32_t end = first;
        while (end < count && marks.Of(ParagraphNumber{end + 1}).kind == MarkKind::None)
            ++end;
        AddFolds({first, end - first}, count, rule, folds);
        first = end + 1;
    }
    return folds;
}

}  // namespace

void FoldRows(const MarkSource& marks, const BlockIndex& index, const FoldState& folds,
              PairedRows& rows) {
    const BlockTable table(&index);
    const BlockTable none(nullptr);
    RowWriter writer(table, none);
    const std::int32_t count = index.ParagraphCount();
    FoldWalk walk(
        folds.folded ? FoldableParagraphs(marks, count, folds.rule) : std::vector<RowSpan>(),
        folds.opened, [](std::int32_t row) { return row + 1; });
    for (std::int32_t paragraph = 1; paragraph <= count; ++paragraph) {
        PairedRow row;
        row.block.original = table.Start(paragraph);
        if (const RowSpan* fold = walk.HidingRow(paragraph - 1)) {
            row.folded = fold->count;
            paragraph = fold->end();
        } else {
            row.count.original = table.Start(paragraph + 1) - row.block.original;
            const ParagraphMark mark = marks.Of(ParagraphNumber{paragraph});
            row.record = mark.record;
            row.kind = mark.kind;
        }
        writer.Put(row);
    }
    rows.Assign(std::move(writer.rows), std::move(writer.heights));
}

}  // namespace zorvane
