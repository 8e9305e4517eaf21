#include "compare/document/gap_text.h"

#include <algorithm>

namespace zorvane {
namespace {

using Difference = std::u16string::difference_type;

}  // namespace

void GapText::Assign(std::u16string text) {
    buffer_ = std::move(text);
    gap_begin_ = gap_end_ = buffer_.size();
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
    const std::size_t more = wanted + buffer_.size() / 4 + 64;
    buffer_.insert(gap_begin_, more, u'\0');
    gap_end_ += more;
}

void GapText::Replace(std::int32_t first, std::int32_t length, std::u16string_view text) {
    MoveGap(static_cast<std::size_t>(first));
    gap_end_ += static_cast<std::size_t>(length);
    GrowGap(text.size());
    std::copy(text.begin(), text.end(), buffer_.begin() + static_cast<Difference>(gap_begin_));
    gap_begin_ += text.size();
}

std::int32_t GapText::Find(char16_t unit, std::int32_t from) const {
    const std::size_t gap = gap_end_ - gap_begin_;
    auto at = static_cast<std::size_t>(from);
    if (at < gap_begin_) {
        const std::u16string_view front(buffer_.data(), gap_begin_);
        const std::size_t found = front.find(unit, at);
        if (found != std::u16string_view::npos)
            return static_cast<std::int32_t>(found);
        at = gap_begin_;
    }
    const std::size_t found = buffer_.find(unit, at + gap);
    return found == std::u16string::npos ? -1 : static_cast<std::int32_t>(found - gap);
}

std::int32_t GapText::FindLast(char16_t unit, std::int32_t before) const {
    for (std::int32_t at = before - 1; at >= 0; --at) {
        if (At(at) == unit)
            return at;
    }
    return -1;
}

}  // namespace zorvane
