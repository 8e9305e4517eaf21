#include "compare/document/piece_text.h"

#include <algorithm>
#include <utility>

#include "common/base/append_in_parts.h"
#include "common/base/paragraph_break.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

constexpr std::size_t kFirstSource = 256;      // units; each further one is twice as large
constexpr std::size_t kMostSource = 1U << 16;  // up to this
constexpr std::size_t kUnread = 1U << 20;      // units that may lie about however short the text
constexpr std::int64_t kUnitsBetweenStops = 1 << 18;
constexpr std::size_t kMostPieces = 1U << 20;  // an edit moves half of them in some milliseconds

}  // namespace

void PieceText::Assign(std::u16string text) {
    sources_.clear();
    pieces_.Clear();
    stored_ = text.size();
    sources_.push_back(std::move(text));
    pieces_.Push(static_cast<std::int32_t>(stored_), Piece{});
}

std::u16string PieceText::TakeAll(RunWatcher* watcher) {
    std::u16string text;
    const auto first = pieces_.At(0);
    if (pieces_.Count() == 1 && first.value != nullptr && first.value->source == 0 &&
        first.value->offset == 0) {
        text = std::move(sources_.front());
        text.resize(static_cast<std::size_t>(Length()));
    } else {
        text = Take(0, Length(), watcher);
    }
    Assign({});
    return text;
}

std::u16string PieceText::Take(std::int32_t first, std::int32_t length, RunWatcher* watcher) const {
    std::u16string text;
    // Who adds a break behind the text need not move it.
    text.reserve(static_cast<std::size_t>(length) + kBreak.size());
    StopCheck stop(watcher, kUnitsBetweenStops);
    pieces_.Walk(first, length, [&](Piece piece, std::int32_t units) {
        return AppendInParts(View(piece, units), stop, text);
    });
    return text;
}

std::vector<std::u16string_view> PieceText::Pieces(std::int32_t first, std::int32_t length) const {
    std::vector<std::u16string_view> pieces;
    pieces_.Walk(first, length, [&](Piece piece, std::int32_t units) {
        pieces.push_back(View(piece, units));
        return true;
    });
    return pieces;
}

char16_t PieceText::At(std::int32_t position) const {
    const auto found = pieces_.At(position);
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): each position of the text has a piece.
    return View(found.value->Behind(found.offset), 1).front();
}

PieceText::Piece PieceText::Add(std::u16string_view text, StopCheck& stop) {
    if (sources_.empty())
        sources_.emplace_back();
    // What was assigned grows no more, lest it be copied.
    const std::u16string& last = sources_.back();
    if (sources_.size() == 1 || last.capacity() - last.size() < text.size()) {
        const std::size_t size =
            sources_.size() == 1 ? kFirstSource : std::min(last.capacity() * 2, kMostSource);
        sources_.emplace_back().reserve(std::max(size, text.size()));
    }
    std::u16string& source = sources_.back();
    const Piece piece{static_cast<std::uint32_t>(sources_.size() - 1),
                      static_cast<std::int32_t>(source.size())};
    if (AppendInParts(text, stop, source))
        stored_ += text.size();
    else
        source.resize(static_cast<std::size_t>(piece.offset));
    return piece;
}

bool PieceText::Replace(std::int32_t first, std::int32_t length, std::u16string_view text,
                        RunWatcher* watcher) {
    StopCheck stop(watcher, kUnitsBetweenStops);
    Piece piece;
    if (!text.empty())
        piece = Add(text, stop);
    if (stop.Stopped())
        return false;
    pieces_.Cut(first, length);
    pieces_.Push(static_cast<std::int32_t>(text.size()), piece);
    pieces_.Close();
    const auto read = static_cast<std::size_t>(Length());
    if (stored_ <= 2 * read + kUnread && pieces_.Count() <= kMostPieces)
        return true;
    std::u16string whole = Take(0, Length(), watcher);
    if (whole.size() == read)  // else it was stopped
        Assign(std::move(whole));
    return true;
}

std::int32_t PieceText::Next(char16_t unit, std::int32_t from) const {
    std::int32_t found = -1;
    std::int32_t begin = from;
    pieces_.Walk(from, Length() - from, [&](Piece piece, std::int32_t units) {
        const std::size_t at = FindUnit(View(piece, units), unit);
        if (at != std::u16string_view::npos)
            found = begin + static_cast<std::int32_t>(at);
        begin += units;
        return found < 0;
    });
    return found;
}

std::int32_t PieceText::Last(char16_t unit, std::int32_t before) const {
    constexpr std::int32_t kStep = 4096;
    while (before > 0) {
        const std::int32_t begin = std::max(before - kStep, 0);
        std::int32_t found = -1;
        std::int32_t place = begin;
        pieces_.Walk(begin, before - begin, [&](Piece piece, std::int32_t units) {
            const std::size_t at = View(piece, units).rfind(unit);
            if (at != std::u16string_view::npos)
                found = place + static_cast<std::int32_t>(at);
            place += units;
            return true;
        });
        if (found >= 0)
            return found;
        before = begin;
    }
    return -1;
}

}  // namespace zorvane
