// A text in pieces that tell what stayed, went and came; its paragraphs, and which of two sides
// belong beside each other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// How a piece of the merged text came about.
enum class PieceKind : std::uint8_t { Same, Deleted, Added, ChangedOld, ChangedNew };
constexpr bool IsOriginalPiece(PieceKind kind) {
    return kind != PieceKind::Added && kind != PieceKind::ChangedNew;
}
constexpr bool IsModifiedPiece(PieceKind kind) {
    return kind != PieceKind::Deleted && kind != PieceKind::ChangedOld;
}
struct Piece {
    PieceKind kind = PieceKind::Same;
    std::u16string text;
};

/// Adds a piece; text of the same kind as the last goes on in it.
void AppendPiece(std::vector<Piece>& pieces, PieceKind kind, std::u16string_view text);

/// One paragraph of a text in pieces. A break is no part of them.
struct PieceParagraph {
    std::vector<Piece> pieces;
    PieceKind end = PieceKind::Same;  ///< how the break behind it came about

    /// Whether the break came or went by itself, which nothing in the paragraph tells.
    bool BreakStandsOut() const {
        return end != PieceKind::Same && (pieces.empty() || pieces.back().kind != end);
    }
};

/// Pieces cut at paragraph breaks.
std::vector<PieceParagraph> SplitPieces(const std::vector<Piece>& pieces);

/// Pairs of paragraphs that belong beside each other, for a change of several: 0-based, -1 for
/// none. Both columns ascend. By the text that stayed; what shares none is paired by its order.
struct ParagraphPair {
    std::int32_t original = -1;
    std::int32_t modified = -1;
};
std::vector<ParagraphPair> PairParagraphs(const std::vector<PieceParagraph>& merged,
                                          std::int32_t originals, std::int32_t modifieds);

}  // namespace zorvane
