#include "compare/document/gap_text.h"

#include <algorithm>

namespace zorvane {
namespace {

using Difference = std::u16string::difference_type;

constexpr char16_t kLineInParagraph = 11;

bool EndsLine(char16_t unit) {
    return unit == u'\n' || unit == kLineInParagraph;
}

}  // namespace

void GapText::Assign(std::u16string text) {
    buffer_ = std::move(text);
    gap_begin_ = gap_end_ = buffer_.size();
}

std::vector<std::u16string_view> GapText::Pieces(std::int32_t first, std::int32_t length) const {
    const auto begin = static_cast<std::size_t>(first);
    const auto end = begin + static_cast<std::size_t>(length);
    const std::size_t gap = gap_end_ - gap_begin_;
    const std::u16string_view all = buffer_;
    std::vector<std::u16string_view> pieces;
    if (begin < std::min(end, gap_begin_))
        pieces.push_back(all.substr(begin, std::min(end, gap_begin_) - begin));
    const std::size_t from = std::max(begin, gap_begin_);
    if (end > from)
        pieces.push_back(all.substr(from + gap, end - from));
    return pieces;
}

std::u16string GapText::Take(std::int32_t first, std::int32_t length) const {
    const auto begin = static_cast<std::size_t>(first);
    const auto end = begin + static_cast<std::size_t>(length);
    const std::size_t gap = gap_end_ - gap_begin_;
    std::u16string text;
    text.reserve(end - begin);
    if (begin < gap_begin_)
        text.append(buffer_, begin, std::min(end, gap_begin_) - begin);
    if (end > gap_begin_) {
        const std::size_t from = std::max(begin, gap_begin_);
        text.append(buffer_, from + gap, end - from);
    }
    return text;
}

void GapText::MoveGap(std::size_t place) {
    const auto begin = buffer_.begin();
    if (place < gap_begin_) {
        std::copy_backward(begin + static_cast<Difference>(place),
                           begin + static_cast<Difference>(gap_begin_),
                           begin + static_cast<Difference>(gap_end_));
    } else if (place > gap_begin_) {
        std::copy(begin + static_cast<Difference>(gap_end_),
                  begin + static_cast<Difference>(gap_end_ + place - gap_begin_),
                  begin + static_cast<Difference>(gap_begin_));
    }
    gap_end_ = gap_end_ - gap_begin_ + place;
    gap_begin_ = place;
}

std::u16string GapText::TakeAll() {
    MoveGap(static_cast<std::size_t>(Length()));
    buffer_.resize(gap_begin_);
    std::u16string text = std::move(buffer_);
    Assign({});
    return text;
}

void GapText::GrowGap(std::size_t wanted) {
    if (gap_end_ - gap_begin_ >= wanted)
        return;
    // Made anew, since a string that grows by itself takes twice its size.
    const std::size_t gap = wanted + buffer_.size() / 4 + 64;
    std::u16string grown;
    grown.reserve(buffer_.size() - (gap_end_ - gap_begin_) + gap);
    grown.append(buffer_, 0, gap_begin_).append(gap, u'\0').append(buffer_, gap_end_);
    buffer_ = std::move(grown);
    gap_end_ = gap_begin_ + gap;
}

void GapText::Replace(std::int32_t first, std::int32_t length, std::u16string_view text) {
    MoveGap(static_cast<std::size_t>(first));
    gap_end_ += static_cast<std::size_t>(length);
    GrowGap(text.size());
    std::copy(text.begin(), text.end(), buffer_.begin() + static_cast<Difference>(gap_begin_));
    gap_begin_ += text.size();
}

std::int32_t GapText::NextLineEnd(std::int32_t from, std::int32_t before) const {
    for (std::int32_t at = from; at < before; ++at) {
        if (EndsLine(At(at)))
            return at;
    }
    return -1;
}

std::int32_t GapText::LastLineEnd(std::int32_t before) const {
    for (std::int32_t at = before - 1; at >= 0; --at) {
        if (EndsLine(At(at)))
            return at;
    }
    return -1;
}

}  // namespace zorvane
