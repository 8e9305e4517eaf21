// A text in pieces that tell what stayed, went and came; its paragraphs, and which of two sides
// belong beside each other.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compare/engine/comparison.h"

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

/// A piece by its places in the two texts; of what one side alone has the other place is empty.
struct PiecePlace {
    PieceKind kind = PieceKind::Same;
    PieceKind merged_kind = PieceKind::Same;  ///< as part of the merged text
    bool in_merged = true;  ///< not: a blank that a break of the other side takes the place of
    PerSide<std::int32_t> begin;
    PerSide<std::int32_t> end;

    std::u16string_view Of(Side side, std::u16string_view text) const {
        return text.substr(static_cast<std::size_t>(begin[side]),
                           static_cast<std::size_t>(end[side] - begin[side]));
    }
};

/// What a change is looked at in: both its texts and the differences in them.
struct ChangeText {
    std::u16string_view original;
    std::u16string_view modified;
    std::span<const SectionDetail> sections;
};

/// Both texts in pieces, in reading order: what went stands in front of what came for it. Cheap: no
/// text is copied.
void FindPieces(const Comparison& comparison, const ChangeText& change,
                std::vector<PiecePlace>& pieces);

/// The text with everything in it: what stayed, what went and what came, in reading order. What
/// stayed is the original's spelling. A blank, cell mark or line break that both words of a change
/// end in stays; a blank that a break takes the place of is left out, the break being what a reader
/// sees.
/// After a stop some of it is missing; likewise below.
std::vector<Piece> MergedPieces(const Comparison& comparison, const ChangeText& change,
                                RunWatcher* watcher = nullptr);
/// The text of one side in pieces. What stayed is that side's own spelling.
std::vector<Piece> SidePieces(const Comparison& comparison, const ChangeText& change, Side side,
                              RunWatcher* watcher = nullptr);
/// A text that is one piece.
std::vector<Piece> WholePiece(PieceKind kind, std::u16string_view text,
                              RunWatcher* watcher = nullptr);

/// The text of a piece with a no-break space as \u00a0 where it is what changed, since it looks
/// like a blank; in `buffer` where it is another text.
std::u16string_view ToldText(PieceKind kind, std::u16string_view text, std::u16string& buffer);

/// One paragraph of a text in pieces. A break is no part of them.
struct PieceParagraph {
    std::vector<Piece> pieces;
    PieceKind end = PieceKind::Same;  ///< how the break behind it came about

    /// Whether the break came or went by itself, which nothing in the paragraph tells.
    bool BreakStandsOut() const {
        return end != PieceKind::Same && (pieces.empty() || pieces.back().kind != end);
    }
};

/// Pieces cut at paragraph breaks; only such as hold a break are copied.
std::vector<PieceParagraph> SplitPieces(std::vector<Piece> pieces);

/// Pairs of paragraphs that belong beside each other, for a change of several: 0-based, -1 for
/// none. Both columns ascend. By the text that stayed; what shares none is paired by its order.
struct ParagraphPair {
    std::int32_t original = -1;
    std::int32_t modified = -1;
};
std::vector<ParagraphPair> PairParagraphs(const std::vector<PieceParagraph>& merged,
                                          std::int32_t originals, std::int32_t modifieds);

}  // namespace zorvane
