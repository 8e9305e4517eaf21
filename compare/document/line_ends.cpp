#include "compare/document/line_ends.h"

#include <algorithm>

#include "common/base/unit_search.h"

namespace zorvane {
namespace {

constexpr char16_t kLineInParagraph = 11;

}  // namespace

void LineEnds::Forget() {
    front_ = {};
    back_ = {};
    length_ = 0;
    known_ = false;
}

void LineEnds::PushAll(std::u16string_view text, std::int32_t first) {
    for (std::size_t at = 0;
         (at = FindEitherUnit(text, u'\n', kLineInParagraph, at)) != std::u16string_view::npos;
         ++at)
        front_.push_back(first + static_cast<std::int32_t>(at));
}

void LineEnds::Build(std::span<const std::u16string_view> pieces) {
    Forget();
    known_ = true;
    for (const std::u16string_view piece : pieces) {
        PushAll(piece, length_);
        length_ += static_cast<std::int32_t>(piece.size());
    }
}

void LineEnds::Replaced(std::int32_t first, std::int32_t removed, std::u16string_view text) {
    if (!known_)
        return;
    for (; !front_.empty() && front_.back() >= first; front_.pop_back())
        back_.push_back(length_ - front_.back());
    for (; !back_.empty() && length_ - back_.back() < first; back_.pop_back())
        front_.push_back(length_ - back_.back());
    while (!back_.empty() && length_ - back_.back() < first + removed)
        back_.pop_back();
    PushAll(text, first);
    length_ += static_cast<std::int32_t>(text.size()) - removed;
}

std::int32_t LineEnds::CountBefore(std::int32_t position) const {
    const auto in_front = std::lower_bound(front_.begin(), front_.end(), position);
    if (in_front != front_.end())
        return static_cast<std::int32_t>(in_front - front_.begin());
    // Those behind the gap that are nearer to the end than the position lie behind it.
    const auto behind = std::upper_bound(back_.begin(), back_.end(), length_ - position);
    return Count() - static_cast<std::int32_t>(behind - back_.begin());
}

std::int32_t LineEnds::At(std::int32_t number) const {
    const auto index = static_cast<std::size_t>(number);
    if (index < front_.size())
        return front_[index];
    return length_ - back_[back_.size() - 1 - (index - front_.size())];
}

}  // namespace zorvane
