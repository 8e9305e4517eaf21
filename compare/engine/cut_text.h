// The pieces of a change, cut into the paragraphs that a view of it shows. No text is copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "compare/engine/pieces.h"

namespace zorvane {

/// A part of a piece: in one paragraph, and lying in the text of one side.
struct CutPiece {
    PieceKind kind = PieceKind::Same;
    Side side = Side::Original;
    std::int32_t begin = 0;
    std::int32_t end = 0;
};

struct CutParagraph {
    std::size_t first_piece = 0;
    std::size_t piece_count = 0;
    PieceKind end = PieceKind::Same;  ///< how the break behind it came about
};

/// Which pieces a view shows, and whose spelling what stayed has.
enum class CutFor {
    OriginalSide,
    ModifiedSide,
    Merged,            ///< everything; what stayed is the original's
    MergedAsModified,  ///< everything; what stayed is the modified's
};

class CutText {
  public:
    void Cut(const ChangeText& change, const std::vector<PiecePlace>& places, CutFor wanted);

    std::size_t Count() const { return paragraphs_.size(); }
    const CutParagraph& Paragraph(std::size_t index) const { return paragraphs_[index]; }
    std::span<const CutPiece> PiecesOf(std::size_t index) const {
        return std::span(pieces_).subspan(paragraphs_[index].first_piece,
                                          paragraphs_[index].piece_count);
    }
    std::u16string_view TextOf(const ChangeText& change, const CutPiece& piece) const;

  private:
    void Add(const ChangeText& change, CutPiece piece);

    std::vector<CutPiece> pieces_;
    std::vector<CutParagraph> paragraphs_;
};

/// What stands in a paragraph of a change, and so by which sign it is told.
enum class CutKind : std::uint8_t { Same, Changed, Deleted, Added };
CutKind CutKindOf(const CutText& text, std::size_t index);

/// Whether the break came or went by itself, which nothing in the paragraph tells.
bool BreakStandsOut(const CutText& text, std::size_t index);

}  // namespace zorvane
