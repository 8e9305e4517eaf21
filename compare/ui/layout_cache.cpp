#include "compare/ui/layout_cache.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zorvane {
namespace {

constexpr std::size_t kMostLayouts = 600;
// A paragraph's first letters tell its direction; more are not looked at.
constexpr std::int32_t kDirectionUnits = 1000;

bool EndsInBreak(std::u16string_view text) {
    return text.size() >= 2 && text[text.size() - 2] == u'\r' && text.back() == u'\n';
}

// What of a paragraph's marks lies in a slice, counted from the slice's begin.
std::vector<WordMark> Cut(const std::vector<WordMark>& words, std::int32_t first,
                          std::int32_t length) {
    std::vector<WordMark> cut;
    for (WordMark word : words) {
        const std::int32_t begin = std::max(word.first, first);
        const std::int32_t end = std::min(word.first + word.length, first + length);
        if (begin >= end)
            continue;
        word.gap_behind = word.gap_behind && end == word.first + word.length;
        word.first = begin - first;
        word.length = end - begin;
        cut.push_back(word);
    }
    return cut;
}

}  // namespace

BlockText LayoutCache::TextOf(const Block& block) const {
    RichText rich = document_->Rich({block.first, block.length});
    BlockText text;
    text.first_slice = !block.continues;
    text.last_slice = EndsInBreak(rich.text) || block.number + 1 == index_->BlockCount();
    if (EndsInBreak(rich.text))
        rich.text.resize(rich.text.size() - 2);
    text.text = std::move(rich.text);
    text.runs = std::move(rich.char_runs);
    text.default_format =
        text.runs.empty() ? document_->FormatAt(block.first) : text.runs.front().format;
    text.paragraph = rich.paragraph_runs.empty() ? document_->ParagraphFormatAt(block.first)
                                                 : rich.paragraph_runs.front().format;
    text.begins_table = !document_->Text({block.first - 3, 3}).starts_with(u'\a');
    CharPos begin = block.first;
    if (block.continues)
        begin = index_->OfParagraph(block.paragraph).first;
    text.right_to_left = text.paragraph.right_to_left;
    if (!text.right_to_left) {
        text.right_to_left = block.continues
                                 ? StartsRightToLeft(document_->Text({begin, kDirectionUnits}))
                                 : MayBeBidi(text.text) && StartsRightToLeft(text.text);
    }
    if (marks_ != nullptr) {
        text.mark = marks_->Of(block.paragraph);
        if (text.mark.kind != MarkKind::None)
            text.words = Cut(marks_->Words(block.paragraph), block.first - begin,
                             static_cast<std::int32_t>(text.text.size()));
    }
    // At the border of two slices it is in the second, as the caret is.
    if (HasPreedit() && index_->OfChar(preedit_place_).number == block.number) {
        text.preedit = preedit_;
        text.preedit.at =
            std::min(preedit_place_ - block.first, static_cast<std::int32_t>(text.text.size()));
    }
    return text;
}

const ParagraphLayout& LayoutCache::Of(std::int32_t block) {
    const auto found = layouts_.find(block);
    if (found != layouts_.end()) {
        found->second.used = ++clock_;
        return *found->second.layout;
    }
    DropOld();
    const Block own = index_->At(block);
    auto layout = std::make_unique<ParagraphLayout>(TextOf(own), style_, formats_);
    ++made_;
    return *layouts_.emplace(block, Entry{std::move(layout), ++clock_, own}).first->second.layout;
}

// The older half goes, so that it is seldom done.
void LayoutCache::DropOld() {
    if (layouts_.size() < kMostLayouts)
        return;
    std::vector<std::uint64_t> used;
    used.reserve(layouts_.size());
    for (const auto& [block, entry] : layouts_)
        used.push_back(entry.used);
    const auto middle = used.begin() + static_cast<std::ptrdiff_t>(used.size() / 2);
    std::nth_element(used.begin(), middle, used.end());
    std::erase_if(layouts_, [&](const auto& item) { return item.second.used < *middle; });
}

void LayoutCache::SetStyle(const TextStyle& style) {
    style_ = style;
    formats_.Clear();
    Clear();
}

void LayoutCache::SetMarks(const MarkSource* marks) {
    marks_ = marks;
    Clear();
}

void LayoutCache::SetPreedit(CharPos at, const Preedit& preedit) {
    layouts_.erase(index_->OfChar(preedit_place_).number);
    preedit_ = preedit;
    preedit_place_ = at;
    layouts_.erase(index_->OfChar(at).number);
}

void LayoutCache::Clear() {
    layouts_.clear();
}

void LayoutCache::Drop(std::int32_t first, std::int32_t last) {
    std::erase_if(layouts_,
                  [&](const auto& item) { return item.first >= first && item.first <= last; });
}

void LayoutCache::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted,
                           std::int32_t moved) {
    // All slices of a paragraph run as its first letters do.
    const Block touched = index_->OfChar(first);
    const CharPos begin = index_->OfParagraph(touched.paragraph).first;
    const bool right_to_left = document_->ParagraphFormatAt(begin).right_to_left ||
                               StartsRightToLeft(document_->Text({begin, kDirectionUnits}));
    std::unordered_map<std::int32_t, Entry> kept;
    for (auto& [number, entry] : layouts_) {
        const Block& old = entry.block;
        const bool behind = old.first >= first + removed;
        if (!behind && old.first + old.length > first)
            continue;
        const std::int32_t now = number + (behind ? moved : 0);
        const Block block = index_->At(now);
        const CharPos place = old.first + (behind ? inserted - removed : 0);
        if (block.number != now || block.first != place || block.length != old.length ||
            block.continues != old.continues)
            continue;
        if (block.paragraph == touched.paragraph && entry.layout->RightToLeft() != right_to_left)
            continue;
        entry.block = block;
        kept.emplace(now, std::move(entry));
    }
    layouts_ = std::move(kept);
    // An insertion at the very begin or end of a block is in it.
    Drop(touched.number, index_->OfChar(first + inserted).number);
}

}  // namespace zorvane
