// Runs of formats with a gap at the place of the last edit.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace zorvane {

/// The runs of one kind of format over a text. They stand in two stacks, those in front of the last
/// edit and those behind it (turned round), so that an edit costs by the number of runs between it
/// and the last one. `Run` has `length` and `format`; neighbours never hold equal formats.
template <class Run>
class GapRuns {
  public:
    using FormatOf = decltype(Run::format);

    void Assign(std::vector<Run> runs) {
        front_ = std::move(runs);
        back_.clear();
        front_length_ = 0;
        for (const Run& run : front_)
            front_length_ += run.length;
    }

    /// The runs of a range, cut to it.
    std::vector<Run> Take(std::int32_t first, std::int32_t length) const {
        std::vector<Run> taken;
        if (length == 0)
            return taken;
        const std::int32_t end = first + length;
        std::int32_t at = front_length_;
        std::size_t index = front_.size();
        while (index > 0 && at > first)
            at -= front_[--index].length;
        for (; index < front_.size() && at < end; ++index)
            TakeRun(front_[index], at, first, end, taken);
        if (at < front_length_)
            return taken;
        at = front_length_;
        for (std::size_t behind = back_.size(); behind > 0 && at < end; --behind)
            TakeRun(back_[behind - 1], at, first, end, taken);
        return taken;
    }

    /// Moves all runs out.
    std::vector<Run> TakeAll() {
        while (!back_.empty()) {
            PushFront(back_.back());
            back_.pop_back();
        }
        std::vector<Run> runs = std::move(front_);
        Assign({});
        return runs;
    }

    /// The format at a position, or nothing behind the last run.
    const FormatOf* At(std::int32_t position) const {
        std::int32_t at = front_length_;
        for (std::size_t index = front_.size(); index > 0 && position < at; --index) {
            at -= front_[index - 1].length;
            if (position >= at)
                return &front_[index - 1].format;
        }
        at = front_length_;
        for (std::size_t behind = back_.size(); behind > 0; --behind) {
            at += back_[behind - 1].length;
            if (position < at)
                return &back_[behind - 1].format;
        }
        return nullptr;
    }

    void Replace(std::int32_t first, std::int32_t length, const std::vector<Run>& runs) {
        MoveGap(first);
        Drop(length);
        for (const Run& run : runs)
            PushFront(run);
        JoinAcrossGap();
    }

    /// Changes the format of a range by `change(format)`.
    template <class Change>
    void ChangeFormats(std::int32_t first, std::int32_t length, const Change& change) {
        MoveGap(first);
        std::int32_t left = length;
        while (left > 0 && !back_.empty()) {
            Run run = back_.back();
            back_.pop_back();
            if (run.length > left) {
                Run rest = run;
                rest.length -= left;
                run.length = left;
                back_.push_back(std::move(rest));
            }
            left -= run.length;
            change(run.format);
            PushFront(run);
        }
        JoinAcrossGap();
    }

  private:
    static void TakeRun(const Run& run, std::int32_t& at, std::int32_t first, std::int32_t end,
                        std::vector<Run>& taken) {
        const std::int32_t begin = at > first ? at : first;
        at += run.length;
        const std::int32_t stop = at < end ? at : end;
        if (stop <= begin)
            return;
        if (!taken.empty() && taken.back().format == run.format) {
            taken.back().length += stop - begin;
            return;
        }
        taken.push_back(run);
        taken.back().length = stop - begin;
    }

    void PushFront(const Run& run) {
        if (run.length == 0)
            return;
        front_length_ += run.length;
        if (!front_.empty() && front_.back().format == run.format)
            front_.back().length += run.length;
        else
            front_.push_back(run);
    }

    void PushBack(Run run) {
        if (run.length == 0)
            return;
        if (!back_.empty() && back_.back().format == run.format)
            back_.back().length += run.length;
        else
            back_.push_back(std::move(run));
    }

    void MoveGap(std::int32_t place) {
        while (front_length_ > place) {
            Run run = std::move(front_.back());
            front_.pop_back();
            front_length_ -= run.length;
            if (front_length_ < place) {
                Run head = run;
                head.length = place - front_length_;
                run.length -= head.length;
                front_length_ += head.length;
                front_.push_back(std::move(head));
            }
            PushBack(std::move(run));
        }
        while (front_length_ < place && !back_.empty()) {
            Run run = std::move(back_.back());
            back_.pop_back();
            if (front_length_ + run.length > place) {
                Run tail = run;
                run.length = place - front_length_;
                tail.length -= run.length;
                back_.push_back(std::move(tail));
            }
            PushFront(run);
        }
    }

    void Drop(std::int32_t length) {
        while (length > 0 && !back_.empty()) {
            Run& run = back_.back();
            const std::int32_t cut = run.length < length ? run.length : length;
            run.length -= cut;
            length -= cut;
            if (run.length == 0)
                back_.pop_back();
        }
    }

    void JoinAcrossGap() {
        if (front_.empty() || back_.empty() || !(front_.back().format == back_.back().format))
            return;
        back_.back().length += front_.back().length;
        front_length_ -= front_.back().length;
        front_.pop_back();
    }

    std::vector<Run> front_;
    std::vector<Run> back_;  // the run next to the gap is the last
    std::int32_t front_length_ = 0;
};

}  // namespace zorvane
