#include "compare/document/block_index.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "common/base/paragraph_break.h"
#include "common/base/surrogates.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostEntries = 512;
constexpr std::size_t kFilledEntries = 448;  // of a new chunk, so that first edits do not split it
constexpr std::size_t kFewEntries = 128;     // a smaller chunk joins the one behind

}  // namespace

BlockIndex::BlockIndex(const Editor& editor, const BlockRules& rules)
    : editor_(&editor), rules_(rules) {
    BlockIndex::Reset();
}

void BlockIndex::SetRules(const BlockRules& rules) {
    rules_ = rules;
    Reset();
}

float BlockIndex::Estimate(std::int32_t length) const {
    if (rules_.units_in_row <= 0)
        return rules_.row_height + rules_.room;
    const std::int32_t rows = std::max((length + rules_.units_in_row - 1) / rules_.units_in_row, 1);
    return rules_.row_height * static_cast<float>(rows) + rules_.room;
}

// ---- cutting a text into blocks ----

BlockIndex::Entry BlockIndex::NewEntry(std::int32_t length, std::int32_t text_length,
                                       bool continues) const {
    constexpr std::uint32_t kLengthBits = 0x3FFF'FFFF;
    return {static_cast<std::uint32_t>(length) & kLengthBits, false, continues,
            Estimate(text_length)};
}

void BlockIndex::AppendParagraph(TextRange range, bool has_break,
                                 std::vector<Entry>& entries) const {
    const std::int32_t ending = has_break ? kBreakLength : 0;
    CharPos first = range.first;
    bool continues = false;
    // In equal slices: a rest of a few units would be cut off again by each letter typed.
    const std::int32_t longest = std::max(rules_.longest_block, 2);
    for (std::int32_t slices = (range.length - ending + longest - 1) / longest; slices > 1;
         --slices) {
        std::int32_t slice = (range.end() - first - ending + slices - 1) / slices;
        // A character of two units stays whole.
        const std::u16string last = editor_->Text({first + (slice - 1), 1});
        if (!last.empty() && IsHighSurrogate(last.front()))
            --slice;
        entries.push_back(NewEntry(slice, slice, continues));
        first = first + slice;
        continues = true;
    }
    const std::int32_t rest = range.end() - first;
    entries.push_back(NewEntry(rest, rest - ending, continues));
}

// Behind a break at the range's end comes an empty block, which is there if the text ends too.
std::vector<BlockIndex::Entry> BlockIndex::Cut(TextRange range) const {
    std::vector<Entry> entries;
    CharPos begin = range.first;
    CharPos piece_begin = range.first;
    for (const std::u16string_view piece : editor_->TextPieces(range)) {
        for (std::size_t at = 0; (at = FindUnit(piece, u'\n', at)) != std::u16string_view::npos;) {
            ++at;
            const CharPos end = piece_begin + static_cast<std::int32_t>(at);
            AppendParagraph(TextRange::Between(begin, end), true, entries);
            begin = end;
        }
        piece_begin = piece_begin + static_cast<std::int32_t>(piece.size());
    }
    AppendParagraph(TextRange::Between(begin, range.end()), false, entries);
    return entries;
}

// ---- sums ----

void BlockIndex::SumUp(Chunk& chunk) const {
    chunk.length = 0;
    chunk.paragraphs = 0;
    chunk.height = 0;
    for (const Entry& entry : chunk.entries) {
        chunk.length += static_cast<std::int32_t>(entry.length);
        chunk.paragraphs += entry.continues ? 0 : 1;
        chunk.height += static_cast<double>(entry.height);
    }
}

// Summed anew each time: differences would drift.
void BlockIndex::SumUpAll() {
    blocks_ = 0;
    paragraphs_ = 0;
    height_ = 0;
    for (const Chunk& chunk : chunks_) {
        blocks_ += static_cast<std::int32_t>(chunk.entries.size());
        paragraphs_ += chunk.paragraphs;
        height_ += chunk.height;
    }
}

void BlockIndex::Reset() {
    chunks_.assign(1, {});
    PutEntries({}, 0, Cut({CharPos{0}, editor_->Length()}));
}

// ---- look-ups ----

void BlockIndex::GoBehind(const Entry& entry, Place& place) const {
    ++place.entry;
    ++place.block;
    place.first += static_cast<std::int32_t>(entry.length);
    place.paragraphs += entry.continues ? 0 : 1;
    place.y += static_cast<double>(entry.height);
}

// The first block that does not lie in front of what is looked for, or the last one.
// `before(place)` is told the place behind a block or a chunk.
template <class Before>
BlockIndex::Place BlockIndex::Find(const Before& before) const {
    Place place;
    for (; place.chunk + 1 < chunks_.size(); ++place.chunk) {
        const Chunk& chunk = chunks_[place.chunk];
        Place behind = place;
        behind.block += static_cast<std::int32_t>(chunk.entries.size());
        behind.first += chunk.length;
        behind.paragraphs += chunk.paragraphs;
        behind.y += chunk.height;
        if (!before(behind))
            break;
        place = behind;
    }
    const Chunk& chunk = chunks_[place.chunk];
    while (place.entry + 1 < chunk.entries.size()) {
        Place behind = place;
        GoBehind(chunk.entries[place.entry], behind);
        if (!before(behind))
            break;
        place = behind;
    }
    return place;
}

Block BlockIndex::BlockAt(const Place& place) const {
    const Entry& entry = chunks_[place.chunk].entries[place.entry];
    Block block;
    block.number = place.block;
    block.first = CharPos{place.first};
    block.length = static_cast<std::int32_t>(entry.length);
    block.continues = entry.continues;
    block.paragraph = ParagraphNumber{place.paragraphs + (block.continues ? 0 : 1)};
    block.y = place.y;
    block.height = entry.height;
    block.exact = entry.exact;
    return block;
}

Block BlockIndex::At(std::int32_t block) const {
    return BlockAt(Find([block](const Place& behind) { return behind.block <= block; }));
}

BlockIndex::Place BlockIndex::PlaceOfChar(std::int32_t position) const {
    return Find([position](const Place& behind) { return behind.first <= position; });
}

Block BlockIndex::OfChar(CharPos position) const {
    return BlockAt(PlaceOfChar(position.value));
}

Block BlockIndex::AtY(double y) const {
    return BlockAt(Find([y](const Place& behind) { return behind.y <= y; }));
}

Block BlockIndex::OfParagraph(ParagraphNumber number) const {
    const std::int32_t wanted = std::clamp(number.value, 1, paragraphs_);
    return BlockAt(Find([wanted](const Place& behind) { return behind.paragraphs < wanted; }));
}

void BlockIndex::SetHeight(std::int32_t block, float height) {
    const Place place = Find([block](const Place& behind) { return behind.block <= block; });
    Chunk& chunk = chunks_[place.chunk];
    Entry& entry = chunk.entries[place.entry];
    entry.exact = true;
    if (entry.height == height)
        return;
    entry.height = height;
    SumUp(chunk);
    SumUpAll();
}

// ---- edits ----

bool BlockIndex::StepBack(Place& place) const {
    if (place.block == 0)
        return false;
    if (place.entry == 0)
        place.entry = chunks_[--place.chunk].entries.size();
    const Entry& entry = chunks_[place.chunk].entries[--place.entry];
    --place.block;
    place.first -= static_cast<std::int32_t>(entry.length);
    place.paragraphs -= entry.continues ? 0 : 1;
    place.y -= static_cast<double>(entry.height);
    return true;
}

void BlockIndex::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    Place from = PlaceOfChar(first.value);
    Place last = PlaceOfChar(first.value + removed);
    // A small slice is put together with the one in front of it, so that edits leave no crumbs.
    const Entry& touched = chunks_[from.chunk].entries[from.entry];
    if (touched.continues && static_cast<std::int32_t>(touched.length) < rules_.longest_block / 4)
        StepBack(from);
    const Entry old = chunks_[from.chunk].entries[from.entry];
    const Entry& end_entry = chunks_[last.chunk].entries[last.entry];
    const std::int32_t old_end = last.first + static_cast<std::int32_t>(end_entry.length);
    const auto count = static_cast<std::size_t>(last.block - from.block) + 1;
    const bool at_end = last.block + 1 == blocks_;
    std::vector<Entry> entries =
        Cut(TextRange::Between(CharPos{from.first}, CharPos{old_end + inserted - removed}));
    entries.front().continues = old.continues;
    if (!at_end && entries.back().length == 0 && entries.size() > 1)
        entries.pop_back();  // the next paragraph stands there
    if (count == 1 && entries.size() == 1)
        entries.front().height = old.height;  // the better estimate, and nothing jumps
    PutEntries(from, count, entries);
}

void BlockIndex::Reformatted(CharPos first, std::int32_t length) {
    const Place from = PlaceOfChar(first.value);
    const std::int32_t end = first.value + length;
    std::int32_t begin = from.first;
    std::size_t entry = from.entry;
    for (std::size_t chunk = from.chunk; chunk < chunks_.size(); ++chunk, entry = 0) {
        std::vector<Entry>& entries = chunks_[chunk].entries;
        for (; entry < entries.size(); ++entry) {
            if (begin >= end && begin > from.first)
                return;
            entries[entry].exact = false;
            begin += static_cast<std::int32_t>(entries[entry].length);
        }
    }
}

void BlockIndex::PutEntries(const Place& from, std::size_t count,
                            const std::vector<Entry>& entries) {
    std::size_t last = from.chunk;
    std::size_t left = from.entry + count;
    while (left > chunks_[last].entries.size())
        left -= chunks_[last++].entries.size();
    const auto offset = [](std::size_t index) { return static_cast<std::ptrdiff_t>(index); };
    Chunk& chunk = chunks_[from.chunk];
    const std::vector<Entry> tail(chunks_[last].entries.begin() + offset(left),
                                  chunks_[last].entries.end());
    chunk.entries.resize(from.entry);
    chunk.entries.insert(chunk.entries.end(), entries.begin(), entries.end());
    chunk.entries.insert(chunk.entries.end(), tail.begin(), tail.end());
    chunks_.erase(chunks_.begin() + offset(from.chunk) + 1, chunks_.begin() + offset(last) + 1);
    Balance(from.chunk);
    SumUpAll();
}

// Cuts a chunk that is too large; joins one that is too small with the one behind or in front.
void BlockIndex::Balance(std::size_t at) {
    if (chunks_[at].entries.size() < kFewEntries && chunks_.size() > 1) {
        at = at + 1 < chunks_.size() ? at : at - 1;
        std::vector<Entry>& entries = chunks_[at].entries;
        const std::vector<Entry>& behind = chunks_[at + 1].entries;
        entries.insert(entries.end(), behind.begin(), behind.end());
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    }
    if (chunks_[at].entries.size() <= kMostEntries)
        return SumUp(chunks_[at]);
    const std::vector<Entry> entries = std::move(chunks_[at].entries);
    std::vector<Chunk> cut;
    cut.reserve(entries.size() / kFilledEntries + 1);
    for (auto begin = entries.begin(); begin != entries.end();) {
        const std::size_t left = static_cast<std::size_t>(entries.end() - begin);
        const std::size_t size = left < 2 * kFilledEntries && left > kFilledEntries
                                     ? left / 2
                                     : std::min(left, kFilledEntries);
        const auto end = begin + static_cast<std::ptrdiff_t>(size);
        cut.emplace_back().entries.assign(begin, end);
        SumUp(cut.back());
        begin = end;
    }
    const auto place = chunks_.begin() + static_cast<std::ptrdiff_t>(at);
    *place = std::move(cut.front());
    chunks_.insert(place + 1, std::make_move_iterator(cut.begin() + 1),
                   std::make_move_iterator(cut.end()));
}

}  // namespace zorvane
