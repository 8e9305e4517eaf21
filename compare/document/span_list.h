// Values over stretches of a text, with a gap at the place of the last edit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zorvane {

/// What a text consists of, span by span. The spans stand in two stacks: those in front of the last
/// edit know where they begin, those behind it (turned round) how far their begin is from the
/// text's end. So an edit moves the spans between it and the last one and no others, and a place is
/// found by a binary search.
///
/// `Value` has `Behind(units)`, the value of the rest of a span, and `Continues(value, length)`,
/// true when it can be one span with `value` over the `length` units in front of it. Neighbours
/// that could be one span are one, and no span is empty.
template <class Value>
class SpanList {
  public:
    std::int32_t Length() const { return front_length_ + back_length_; }
    std::size_t Count() const { return front_.size() + back_.size(); }

    void Clear() {
        front_.clear();
        back_.clear();
        front_length_ = back_length_ = 0;
    }

    /// Takes a range out and leaves the gap there: what is pushed then takes its place. `Close`
    /// ends the edit.
    void Cut(std::int32_t first, std::int32_t length) {
        MoveGap(first);
        while (length > 0 && !back_.empty()) {
            const std::int32_t span = NearestLength();
            const std::int32_t cut = std::min(span, length);
            length -= cut;
            back_length_ -= cut;
            if (cut == span)
                back_.pop_back();
            else
                back_.back() = {back_length_, back_.back().value.Behind(cut)};
        }
    }
    void Push(std::int32_t length, const Value& value) {
        if (length == 0)
            return;
        if (front_.empty() || !value.Continues(front_.back().value, LastLength()))
            front_.push_back({front_length_, value});
        front_length_ += length;
    }
    void Close() {
        if (front_.empty() || back_.empty() ||
            !back_.back().value.Continues(front_.back().value, LastLength()))
            return;
        const std::int32_t span = NearestLength();
        front_length_ += span;
        back_length_ -= span;
        back_.pop_back();
    }

    /// Calls `visit(value, length)` for the spans of a range, cut to it, as long as it gives true.
    template <class Visit>
    void Walk(std::int32_t first, std::int32_t length, const Visit& visit) const {
        if (length <= 0)
            return;
        const std::int32_t end = std::min(first + length, Length());
        for (Place at = Find(first); first < end; ++at.index) {
            const std::int32_t span_end = std::min(EndOf(at.index), end);
            const Value& value = ValueOf(at.index);
            const std::int32_t offset = first - at.begin;
            if (!visit(offset > 0 ? value.Behind(offset) : value, span_end - first))
                return;
            first = at.begin = span_end;
        }
    }

    struct Found {
        const Value* value = nullptr;  ///< nothing behind the last span
        std::int32_t offset = 0;       ///< in the span
    };
    Found At(std::int32_t position) const {
        if (position < 0 || position >= Length())
            return {};
        const Place place = Find(position);
        return {&ValueOf(place.index), position - place.begin};
    }

  private:
    // In front of the gap `place` counts from the text's begin, behind it to the text's end.
    struct Span {
        std::int32_t place = 0;
        Value value;
    };
    struct Place {
        std::size_t index = 0;
        std::int32_t begin = 0;
    };

    std::int32_t LastLength() const { return front_length_ - front_.back().place; }
    std::int32_t NearestLength() const {
        return back_length_ - (back_.size() > 1 ? back_[back_.size() - 2].place : 0);
    }

    // Spans by number from the text's begin.
    const Value& ValueOf(std::size_t index) const {
        return index < front_.size() ? front_[index].value : back_[Count() - 1 - index].value;
    }
    std::int32_t BeginOf(std::size_t index) const {
        return index < front_.size() ? front_[index].place
                                     : Length() - back_[Count() - 1 - index].place;
    }
    std::int32_t EndOf(std::size_t index) const {
        return index + 1 < Count() ? BeginOf(index + 1) : Length();
    }
    Place Find(std::int32_t position) const {
        std::size_t index = 0;
        if (position < front_length_) {
            const auto behind = std::upper_bound(
                front_.begin(), front_.end(), position,
                [](std::int32_t wanted, const Span& span) { return wanted < span.place; });
            index = static_cast<std::size_t>(behind - front_.begin()) - 1;
        } else {
            // Of those that reach at least as far in front of the end, the one with the least.
            const std::int32_t reach = Length() - position;
            const auto found = std::lower_bound(
                back_.begin(), back_.end(), reach,
                [](const Span& span, std::int32_t wanted) { return span.place < wanted; });
            index = Count() - 1 - static_cast<std::size_t>(found - back_.begin());
        }
        return {index, BeginOf(index)};
    }

    void MoveGap(std::int32_t place) {
        while (front_length_ > place) {
            const Span span = front_.back();
            const std::int32_t cut = std::max(place - span.place, 0);
            if (cut == 0)
                front_.pop_back();
            back_length_ += front_length_ - span.place - cut;
            front_length_ = span.place + cut;
            back_.push_back({back_length_, cut > 0 ? span.value.Behind(cut) : span.value});
        }
        while (front_length_ < place && !back_.empty()) {
            const std::int32_t length = NearestLength();
            const std::int32_t moved = std::min(length, place - front_length_);
            const Value value = back_.back().value;
            back_length_ -= moved;
            if (moved == length)
                back_.pop_back();
            else
                back_.back() = {back_length_, value.Behind(moved)};
            Push(moved, value);
        }
    }

    std::vector<Span> front_;
    std::vector<Span> back_;  // the span next to the gap is the last
    std::int32_t front_length_ = 0;
    std::int32_t back_length_ = 0;
};

}  // namespace zorvane
