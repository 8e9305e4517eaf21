// The runs of rows of two texts side by side, kept so that each is found by row, by paragraph or by
// record in a logarithm, and edited for the price of a few hundred numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "common/base/side.h"

namespace zorvane {

enum class RowKind : std::uint8_t {
    Equal,     ///< a pair without a difference
    Ignored,   ///< on one side alone and without a record: blank, and not looked at
    Changed,   ///< a pair of a changed record, or what was split or joined
    OneSided,  ///< deleted or added
    Edited     ///< the text was edited since it was compared
};

/// Rows of one kind that follow each other. The first paragraphs of both sides stand opposite each
/// other, then the second ones and so on; what one side has more stands against the other's last
/// paragraph, in the same row. Where one side has none each paragraph has a row of its own.
struct RowPiece {
    RowKind kind = RowKind::Equal;
    std::int32_t record = -1;  ///< 0-based; -1: of none
    PerSide<std::int32_t> counts{0, 0};

    std::int32_t Rows() const;
    friend bool operator==(const RowPiece&, const RowPiece&) = default;
};

/// What lies in front of a place.
struct RowSums {
    std::int32_t rows = 0;
    PerSide<std::int32_t> paragraphs{0, 0};
    void Add(const RowPiece& piece);
    void Add(const RowSums& sums);
};

class RowPieces {
  public:
    /// A piece, or the place behind the last one.
    struct Place {
        std::size_t chunk = 0;
        std::size_t piece = 0;
        RowSums before;
    };

    void Assign(std::span<const RowPiece> pieces);
    const RowSums& Totals() const { return totals_; }
    std::size_t Count() const;
    Place Begin() const { return {}; }
    Place End() const { return {chunks_.size(), 0, totals_}; }
    bool IsEnd(const Place& place) const { return place.chunk == chunks_.size(); }
    /// Only of a piece.
    const RowPiece& At(const Place& place) const {
        return chunks_[place.chunk].pieces[place.piece];
    }
    Place Next(Place place) const;
    /// Only of a place that is not the first.
    Place Previous(Place place) const;

    /// The piece that holds a row or a paragraph, both 0-based; the end for what lies behind.
    Place OfRow(std::int32_t row) const;
    Place OfParagraph(Side side, std::int32_t paragraph) const;
    /// The first piece of the record, or of the next one that has any.
    Place OfRecord(std::int32_t record) const;

    /// Puts other pieces in the place of those from `begin` up to `end`.
    void Replace(const Place& begin, const Place& end, std::span<const RowPiece> pieces);

  private:
    // At most 256 pieces, so that an edit moves and sums few.
    struct Chunk {
        std::vector<RowPiece> pieces;
        std::vector<RowSums> before;    // each piece, from the chunk's begin
        RowSums start;                  // of the chunk
        std::int32_t last_record = -1;  // of the pieces up to its end
    };

    template <class Measure>
    Place Find(std::int32_t value, const Measure& measure) const;
    static void AppendChunks(std::span<const RowPiece> pieces, std::vector<Chunk>& chunks);
    void SumUp(std::size_t from);

    std::vector<Chunk> chunks_;
    RowSums totals_;
};

}  // namespace zorvane
