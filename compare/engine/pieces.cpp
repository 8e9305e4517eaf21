#include "compare/engine/pieces.h"

#include <algorithm>
#include <utility>

#include "common/base/paragraph_break.h"
#include "common/base/unit_search.h"

namespace zorvane {

std::u16string_view ToldText(PieceKind kind, std::u16string_view text, std::u16string& buffer) {
    constexpr char16_t kNoBreakSpace = u'\u00A0';
    const bool changed = kind == PieceKind::ChangedOld || kind == PieceKind::ChangedNew;
    if (kind == PieceKind::Same || text.find(kNoBreakSpace) == text.npos ||
        (!changed && text.find_first_not_of(u" \u00A0") != text.npos))
        return text;
    buffer.clear();
    for (const char16_t unit : text) {
        if (unit == kNoBreakSpace)
            buffer += u"\\u00a0";
        else
            buffer += unit;
    }
    return buffer;
}

namespace {

// Paragraphs belong together when at least this part of the shorter one stayed.
constexpr std::int32_t kLeastSharedPart = 4;

struct SharedText {
    std::int32_t original;
    std::int32_t modified;
    std::int32_t length;
};

std::int32_t LengthOf(const PieceParagraph& paragraph, bool (*counts)(PieceKind)) {
    std::int32_t length = 0;
    for (const Piece& piece : paragraph.pieces)
        length += counts(piece.kind) ? static_cast<std::int32_t>(piece.text.size()) : 0;
    return length;
}

bool Stayed(PieceKind kind) {
    return kind == PieceKind::Same;
}

// How much text each two paragraphs share, in reading order, without what is too little.
std::vector<SharedText> FindSharedText(const std::vector<PieceParagraph>& merged,
                                       std::size_t originals, std::size_t modifieds) {
    std::vector<SharedText> shared;
    std::vector<std::int32_t> original_lengths(originals, 0);
    std::vector<std::int32_t> modified_lengths(modifieds, 0);
    std::size_t original = 0;
    std::size_t modified = 0;
    for (const PieceParagraph& paragraph : merged) {
        if (original >= originals || modified >= modifieds)
            break;
        original_lengths[original] += LengthOf(paragraph, IsOriginalPiece);
        modified_lengths[modified] += LengthOf(paragraph, IsModifiedPiece);
        if (const std::int32_t same = LengthOf(paragraph, Stayed); same > 0)
            shared.push_back(
                {static_cast<std::int32_t>(original), static_cast<std::int32_t>(modified), same});
        original += IsOriginalPiece(paragraph.end) ? 1U : 0U;
        modified += IsModifiedPiece(paragraph.end) ? 1U : 0U;
    }
    std::erase_if(shared, [&](const SharedText& text) {
        return text.length * kLeastSharedPart <
               std::min(original_lengths[static_cast<std::size_t>(text.original)],
                        modified_lengths[static_cast<std::size_t>(text.modified)]);
    });
    return shared;
}

// The chain of pairs, both sides ascending, with the most shared text. Since the list ascends on
// both sides, what may stand in front of a pair is always a front part of the list: linear time.
std::vector<SharedText> BestChain(const std::vector<SharedText>& shared) {
    std::vector<std::size_t> in_front(shared.size(), 0);
    std::vector<std::int64_t> best(shared.size() + 1, 0);
    std::size_t below_original = 0;
    std::size_t below_modified = 0;
    for (std::size_t i = 0; i < shared.size(); ++i) {
        while (shared[below_original].original < shared[i].original)
            ++below_original;
        while (shared[below_modified].modified < shared[i].modified)
            ++below_modified;
        in_front[i] = std::min(below_original, below_modified);
        best[i + 1] = std::max(best[i], shared[i].length + best[in_front[i]]);
    }
    std::vector<SharedText> chain;
    std::size_t at = shared.size();
    while (at > 0) {
        if (best[at] == best[at - 1]) {
            --at;
            continue;
        }
        chain.push_back(shared[at - 1]);
        at = in_front[at - 1];
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

}  // namespace

std::vector<PieceParagraph> SplitPieces(std::vector<Piece> pieces) {
    std::vector<PieceParagraph> paragraphs(1);
    for (Piece& piece : pieces) {
        std::size_t from = 0;
        std::size_t end = FindBreak(piece.text);
        for (; end != std::u16string::npos; end = FindBreak(piece.text, from)) {
            if (end > from)
                paragraphs.back().pieces.push_back(
                    {piece.kind, piece.text.substr(from, end - from)});
            paragraphs.back().end = piece.kind;
            paragraphs.emplace_back();
            from = end + kBreak.size();
        }
        if (from == piece.text.size())
            continue;
        if (from > 0)
            piece.text.erase(0, from);
        paragraphs.back().pieces.push_back(std::move(piece));
    }
    return paragraphs;
}

std::vector<ParagraphPair> PairParagraphs(const std::vector<PieceParagraph>& merged,
                                          std::int32_t originals, std::int32_t modifieds) {
    std::vector<ParagraphPair> pairs;
    std::int32_t original = 0;
    std::int32_t modified = 0;
    const auto pair_by_order_up_to = [&](std::int32_t original_end, std::int32_t modified_end) {
        while (original < original_end || modified < modified_end) {
            pairs.push_back({original < original_end ? original++ : -1,
                             modified < modified_end ? modified++ : -1});
        }
    };
    for (const SharedText& text : BestChain(FindSharedText(
             merged, static_cast<std::size_t>(originals), static_cast<std::size_t>(modifieds)))) {
        pair_by_order_up_to(text.original, text.modified);
        pairs.push_back({original++, modified++});
    }
    pair_by_order_up_to(originals, modifieds);
    return pairs;
}

}  // namespace zorvane
