#include "compare/view/row_pieces.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zorvane {
namespace {

constexpr std::size_t kMostPieces = 256;

}  // namespace

std::int32_t RowPiece::Rows() const {
    const auto [less, more] = std::minmax(counts.original, counts.modified);
    return less == 0 ? more : less;
}

void RowSums::Add(const RowPiece& piece) {
    rows += piece.Rows();
    paragraphs.original += piece.counts.original;
    paragraphs.modified += piece.counts.modified;
}

void RowSums::Add(const RowSums& sums) {
    rows += sums.rows;
    paragraphs.original += sums.paragraphs.original;
    paragraphs.modified += sums.paragraphs.modified;
}

void RowPieces::Assign(std::span<const RowPiece> pieces) {
    chunks_.clear();
    AppendChunks(pieces, chunks_);
    SumUp(0);
}

std::size_t RowPieces::Count() const {
    std::size_t count = 0;
    for (const Chunk& chunk : chunks_)
        count += chunk.pieces.size();
    return count;
}

// Three quarters full, so that a few edits do not cut them again.
void RowPieces::AppendChunks(std::span<const RowPiece> pieces, std::vector<Chunk>& chunks) {
    constexpr std::size_t kFill = kMostPieces / 4 * 3;
    while (!pieces.empty()) {
        const std::size_t count = pieces.size() <= kMostPieces ? pieces.size() : kFill;
        Chunk chunk;
        chunk.pieces.assign(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(count));
        chunk.before.reserve(count);
        RowSums sums;
        for (const RowPiece& piece : chunk.pieces) {
            chunk.before.push_back(sums);
            sums.Add(piece);
        }
        chunks.push_back(std::move(chunk));
        pieces = pieces.subspan(count);
    }
}

void RowPieces::SumUp(std::size_t from) {
    RowSums sums;
    std::int32_t record = -1;
    if (from > 0) {
        const Chunk& front = chunks_[from - 1];
        sums = front.start;
        sums.Add(front.before.back());
        sums.Add(front.pieces.back());
        record = front.last_record;
    }
    for (std::size_t at = from; at < chunks_.size(); ++at) {
        Chunk& chunk = chunks_[at];
        chunk.start = sums;
        sums.Add(chunk.before.back());
        sums.Add(chunk.pieces.back());
        const auto last = std::find_if(chunk.pieces.rbegin(), chunk.pieces.rend(),
                                       [](const RowPiece& piece) { return piece.record >= 0; });
        record = last == chunk.pieces.rend() ? record : last->record;
        chunk.last_record = record;
    }
    totals_ = sums;
}

RowPieces::Place RowPieces::Next(Place place) const {
    place.before.Add(At(place));
    if (++place.piece == chunks_[place.chunk].pieces.size())
        return {place.chunk + 1, 0, place.before};
    return place;
}

RowPieces::Place RowPieces::Previous(Place place) const {
    if (place.piece == 0)
        place.piece = chunks_[--place.chunk].pieces.size();
    --place.piece;
    place.before = chunks_[place.chunk].start;
    place.before.Add(chunks_[place.chunk].before[place.piece]);
    return place;
}

// The last piece that begins at `value` or in front of it: behind those that are empty in this
// measure.
template <class Measure>
RowPieces::Place RowPieces::Find(std::int32_t value, const Measure& measure) const {
    if (value >= measure(totals_))
        return End();
    const auto chunk =
        std::prev(std::partition_point(chunks_.begin(), chunks_.end(), [&](const Chunk& one) {
            return measure(one.start) <= value;
        }));
    const std::int32_t inside = value - measure(chunk->start);
    const auto before = std::prev(
        std::partition_point(chunk->before.begin(), chunk->before.end(),
                             [&](const RowSums& sums) { return measure(sums) <= inside; }));
    Place place{static_cast<std::size_t>(chunk - chunks_.begin()),
                static_cast<std::size_t>(before - chunk->before.begin()), chunk->start};
    place.before.Add(*before);
    return place;
}

RowPieces::Place RowPieces::OfRow(std::int32_t row) const {
    return Find(row, [](const RowSums& sums) { return sums.rows; });
}

RowPieces::Place RowPieces::OfParagraph(Side side, std::int32_t paragraph) const {
    return Find(paragraph, [side](const RowSums& sums) { return sums.paragraphs[side]; });
}

RowPieces::Place RowPieces::OfRecord(std::int32_t record) const {
    const auto chunk = std::partition_point(
        chunks_.begin(), chunks_.end(), [&](const Chunk& one) { return one.last_record < record; });
    if (chunk == chunks_.end())
        return End();
    const auto piece = std::find_if(chunk->pieces.begin(), chunk->pieces.end(),
                                    [&](const RowPiece& one) { return one.record >= record; });
    const auto index = static_cast<std::size_t>(piece - chunk->pieces.begin());
    Place place{static_cast<std::size_t>(chunk - chunks_.begin()), index, chunk->start};
    place.before.Add(chunk->before[index]);
    return place;
}

void RowPieces::Replace(const Place& begin, const Place& end, std::span<const RowPiece> pieces) {
    std::vector<RowPiece> whole;
    const auto append = [&](std::size_t chunk, std::size_t from, std::size_t to) {
        const std::vector<RowPiece>& all = chunks_[chunk].pieces;
        whole.insert(whole.end(), all.begin() + static_cast<std::ptrdiff_t>(from),
                     all.begin() + static_cast<std::ptrdiff_t>(to));
    };
    const bool at_end = begin.chunk == chunks_.size() && begin.chunk > 0;
    const std::size_t first = at_end ? begin.chunk - 1 : begin.chunk;
    if (first < chunks_.size())
        append(first, 0, at_end ? chunks_[first].pieces.size() : begin.piece);
    whole.insert(whole.end(), pieces.begin(), pieces.end());
    std::size_t last = end.chunk;
    if (!IsEnd(end) && (end.piece > 0 || end.chunk == first)) {
        append(end.chunk, end.piece, chunks_[end.chunk].pieces.size());
        ++last;
    }
    std::vector<Chunk> made;
    AppendChunks(whole, made);
    const auto from = chunks_.begin() + static_cast<std::ptrdiff_t>(first);
    if (made.size() == last - first) {
        std::move(made.begin(), made.end(), from);
    } else {
        chunks_.erase(from, chunks_.begin() + static_cast<std::ptrdiff_t>(last));
        chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(first),
                       std::make_move_iterator(made.begin()), std::make_move_iterator(made.end()));
    }
    SumUp(first);
}

}  // namespace zorvane
