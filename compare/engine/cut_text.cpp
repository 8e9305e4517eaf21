#include "compare/engine/cut_text.h"

#include <algorithm>

#include "common/base/paragraph_break.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

bool IsWanted(const PiecePlace& place, CutFor wanted) {
    if (wanted == CutFor::OriginalSide)
        return IsOriginalPiece(place.kind);
    return wanted == CutFor::ModifiedSide ? IsModifiedPiece(place.kind) : place.in_merged;
}

Side SpellingOf(PieceKind kind, CutFor wanted) {
    if (kind == PieceKind::Same) {
        const bool original = wanted == CutFor::OriginalSide || wanted == CutFor::Merged;
        return original ? Side::Original : Side::Modified;
    }
    return IsOriginalPiece(kind) ? Side::Original : Side::Modified;
}

std::u16string_view SideOf(const ChangeText& change, Side side) {
    return side == Side::Original ? change.original : change.modified;
}

}  // namespace

std::u16string_view CutText::TextOf(const ChangeText& change, const CutPiece& piece) const {
    return SideOf(change, piece.side)
        .substr(static_cast<std::size_t>(piece.begin),
                static_cast<std::size_t>(piece.end - piece.begin));
}

void CutText::Cut(const ChangeText& change, const std::vector<PiecePlace>& places, CutFor wanted) {
    const bool one_side = wanted == CutFor::OriginalSide || wanted == CutFor::ModifiedSide;
    pieces_.clear();
    paragraphs_.assign(1, {});
    for (const PiecePlace& place : places) {
        if (!IsWanted(place, wanted))
            continue;
        const Side side = SpellingOf(place.kind, wanted);
        Add(change,
            {one_side ? place.kind : place.merged_kind, side, place.begin[side], place.end[side]});
    }
}

void CutText::Add(const ChangeText& change, CutPiece piece) {
    const std::u16string_view text = SideOf(change, piece.side);
    const auto piece_end = static_cast<std::size_t>(piece.end);
    auto at = static_cast<std::size_t>(piece.begin);
    while (at < piece_end) {
        std::size_t end = FindBreak(text.substr(0, piece_end), at);
        const bool breaks = end != std::u16string_view::npos;
        end = breaks ? end : piece_end;
        if (end > at) {
            pieces_.push_back({piece.kind, piece.side, static_cast<std::int32_t>(at),
                               static_cast<std::int32_t>(end)});
            ++paragraphs_.back().piece_count;
        }
        if (!breaks)
            return;
        paragraphs_.back().end = piece.kind;
        paragraphs_.push_back({pieces_.size(), 0, PieceKind::Same});
        at = end + kBreak.size();
    }
}

CutKind CutKindOf(const CutText& text, std::size_t index) {
    const auto pieces = text.PiecesOf(index);
    const auto is_same = [](const CutPiece& piece) { return piece.kind == PieceKind::Same; };
    const auto in_original = [](const CutPiece& piece) { return IsOriginalPiece(piece.kind); };
    const auto in_modified = [](const CutPiece& piece) { return IsModifiedPiece(piece.kind); };
    const PieceKind end = text.Paragraph(index).end;
    if (std::all_of(pieces.begin(), pieces.end(), is_same)) {
        if (end == PieceKind::Same || !pieces.empty())
            return end == PieceKind::Same ? CutKind::Same : CutKind::Changed;
        return IsOriginalPiece(end) ? CutKind::Deleted : CutKind::Added;
    }
    if (std::none_of(pieces.begin(), pieces.end(), in_modified))
        return CutKind::Deleted;
    return std::none_of(pieces.begin(), pieces.end(), in_original) ? CutKind::Added
                                                                   : CutKind::Changed;
}

bool BreakStandsOut(const CutText& text, std::size_t index) {
    const PieceKind end = text.Paragraph(index).end;
    const auto pieces = text.PiecesOf(index);
    return end != PieceKind::Same && (pieces.empty() || pieces.back().kind != end);
}

}  // namespace zorvane
