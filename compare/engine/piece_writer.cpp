// Differences to pieces of text.
#include <algorithm>

#include "common/base/append_in_parts.h"
#include "common/base/unit_search.h"
#include "compare/engine/pairing/letter_finder.h"
#include "compare/engine/pieces.h"

namespace zorvane {
namespace {

// In the same blank, line break or cell mark, which is then not what changed.
bool EndAlike(std::u16string_view original, std::u16string_view modified) {
    constexpr std::u16string_view kSeparators = u" \v\a";
    return !original.empty() && !modified.empty() && original.back() == modified.back() &&
           kSeparators.find(original.back()) != std::u16string_view::npos;
}

// Blanks against a break: where both sides stand in one text, the break tells it all.
bool GivesWay(std::u16string_view own, std::u16string_view other) {
    return OnlyBlanks(own) && HasLineFeed(other);
}

PieceKind WholeKind(Side side) {
    return side == Side::Original ? PieceKind::Deleted : PieceKind::Added;
}

PieceKind ChangedKind(Side side) {
    return side == Side::Original ? PieceKind::ChangedOld : PieceKind::ChangedNew;
}

// Lays the differences, ascending, over both texts.
class PieceFinder {
  public:
    PieceFinder(const Comparison& comparison, const ChangeText& change,
                std::vector<PiecePlace>& pieces)
        : comparison_(comparison), change_(change), pieces_(pieces) {}

    void Find() {
        pieces_.clear();
        for (const SectionDetail& section : change_.sections)
            Section(section);
        Same({static_cast<std::int32_t>(change_.original.size()),
              static_cast<std::int32_t>(change_.modified.size())});
    }

  private:
    using Ends = PerSide<std::int32_t>;

    void Section(const SectionDetail& section) {
        const Ends begin{section.places.original.begin, section.places.modified.begin};
        Same(begin);
        const auto letters = comparison_.CharactersOf(section);
        for (const DetailRecord& letter : letters) {
            Same({begin.original + letter.places.original.begin,
                  begin.modified + letter.places.modified.begin});
            Different(letter.type, {begin.original + letter.places.original.end,
                                    begin.modified + letter.places.modified.end});
        }
        const Ends end{section.places.original.end, section.places.modified.end};
        if (letters.empty())
            Different(section.type, end);
        else
            Same(end);
    }

    void Same(const Ends& end) {
        PiecePlace piece;
        piece.begin = at_;
        piece.end = end;
        at_ = end;
        if (piece.begin == piece.end)
            return;
        if (!pieces_.empty() && pieces_.back().kind == PieceKind::Same)
            pieces_.back().end = end;
        else
            pieces_.push_back(piece);
    }

    void Different(DifferenceType type, Ends end) {
        const Ends whole_end = end;
        PerSide<std::u16string_view> texts{
            UnitRange{at_.original, end.original}.In(change_.original),
            UnitRange{at_.modified, end.modified}.In(change_.modified)};
        const bool change = type == DifferenceType::Change;
        if (change && EndAlike(texts.original, texts.modified)) {
            for (const Side side : kBothSides) {
                texts[side].remove_suffix(1);
                --end[side];
            }
        }
        const bool both = change && !texts.original.empty() && !texts.modified.empty();
        const PerSide<bool> gives_way{both && GivesWay(texts.original, texts.modified),
                                      both && GivesWay(texts.modified, texts.original)};
        const bool alone = gives_way.original || gives_way.modified;
        for (const Side side : kBothSides) {
            PiecePlace piece;
            piece.kind = both ? ChangedKind(side) : WholeKind(side);
            piece.merged_kind = alone ? WholeKind(side) : piece.kind;
            piece.in_merged = !gives_way[side];
            piece.begin = at_;
            at_[side] = end[side];
            piece.end = at_;
            if (!texts[side].empty())
                Add(piece);
        }
        Same(whole_end);
    }

    void Add(const PiecePlace& piece) {
        const bool goes_on = !pieces_.empty() && pieces_.back().kind == piece.kind &&
                             pieces_.back().merged_kind == piece.merged_kind &&
                             pieces_.back().in_merged == piece.in_merged;
        if (goes_on)
            pieces_.back().end = piece.end;
        else
            pieces_.push_back(piece);
    }

    const Comparison& comparison_;
    const ChangeText& change_;
    std::vector<PiecePlace>& pieces_;
    Ends at_;
};

// Text of the same kind as the last goes on in it.
void AppendPiece(std::vector<Piece>& pieces, PieceKind kind, std::u16string_view text,
                 StopCheck& stop) {
    if (text.empty())
        return;
    if (pieces.empty() || pieces.back().kind != kind) {
        pieces.push_back({kind, {}});
        pieces.back().text.reserve(text.size());
    }
    AppendInParts(text, stop, pieces.back().text);
}

}  // namespace

void FindPieces(const Comparison& comparison, const ChangeText& change,
                std::vector<PiecePlace>& pieces) {
    PieceFinder(comparison, change, pieces).Find();
}

std::vector<Piece> MergedPieces(const Comparison& comparison, const ChangeText& change,
                                RunWatcher* watcher) {
    std::vector<PiecePlace> places;
    FindPieces(comparison, change, places);
    std::vector<Piece> pieces;
    StopCheck stop(watcher);
    for (const PiecePlace& place : places) {
        if (!place.in_merged)
            continue;
        const Side side = IsOriginalPiece(place.kind) ? Side::Original : Side::Modified;
        AppendPiece(pieces, place.merged_kind,
                    place.Of(side, side == Side::Original ? change.original : change.modified),
                    stop);
    }
    return pieces;
}

std::vector<Piece> SidePieces(const Comparison& comparison, const ChangeText& change, Side side,
                              RunWatcher* watcher) {
    std::vector<PiecePlace> places;
    FindPieces(comparison, change, places);
    std::vector<Piece> pieces;
    const bool original = side == Side::Original;
    StopCheck stop(watcher);
    for (const PiecePlace& place : places) {
        if (original ? IsOriginalPiece(place.kind) : IsModifiedPiece(place.kind))
            AppendPiece(pieces, place.kind,
                        place.Of(side, original ? change.original : change.modified), stop);
    }
    return pieces;
}

std::vector<Piece> WholePiece(PieceKind kind, std::u16string_view text, RunWatcher* watcher) {
    std::vector<Piece> pieces;
    StopCheck stop(watcher);
    AppendPiece(pieces, kind, text, stop);
    return pieces;
}

}  // namespace zorvane
