// The paragraphs of one stretch, cut into words and runs, with what each run weighs there.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "compare/engine/compare_options.h"
#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"
#include "compare/engine/pairing/word_runs.h"

namespace zorvane {

/// A word of a paragraph: what it must equal, and where its runs end.
struct StretchWord {
    std::uint32_t hash = 0;  ///< of the word as it is compared, all signs included
    std::uint32_t run_end = 0;
};

/// Some neighbouring paragraphs as one sequence.
struct Sequence {
    std::span<const std::uint32_t> runs;  ///< ids
    std::span<const StretchWord> words;
    std::uint32_t first_run = 0;  ///< what `run_end` counts from
    std::int64_t weight = 0;
    std::int32_t WordCount() const { return static_cast<std::int32_t>(words.size()); }
};

/// Paragraphs are numbered from 0 within the stretch.
class StretchText {
  public:
    StretchText(const CompareSide& first, const CompareSide& second, const PlaceRange& range);
    /// Places from anywhere, ascending; `Range()` then says nothing.
    StretchText(const CompareSide& first, const CompareSide& second,
                std::span<const std::int32_t> first_places,
                std::span<const std::int32_t> second_places);

    /// Who may stop whatever is done with it.
    RunWatcher* Watcher() const { return watcher_; }
    std::int32_t FirstCount() const { return static_cast<std::int32_t>(first_.numbers.size()); }
    std::int32_t SecondCount() const { return static_cast<std::int32_t>(second_.numbers.size()); }
    const PlaceRange& Range() const { return range_; }
    Sequence First(std::int32_t begin, std::int32_t end) const { return Of(first_, begin, end); }
    Sequence Second(std::int32_t begin, std::int32_t end) const { return Of(second_, begin, end); }
    /// Equal paragraphs have equal numbers.
    std::uint32_t FirstNumber(std::int32_t at) const { return Of(first_, at); }
    std::uint32_t SecondNumber(std::int32_t at) const { return Of(second_, at); }
    bool Equal(std::int32_t first, std::int32_t second) const {
        return FirstNumber(first) == SecondNumber(second);
    }
    std::span<const std::uint32_t> FirstNumbers() const { return first_.numbers; }
    std::span<const std::uint32_t> SecondNumbers() const { return second_.numbers; }
    std::uint32_t NumberCount() const { return number_count_; }

    std::int32_t RunCount() const { return static_cast<std::int32_t>(weights_.size()); }
    /// Thousandths, by the kind of run and by how few paragraphs of the stretch hold it.
    std::int32_t Weight(std::uint32_t run) const { return weights_[run]; }
    /// The larger number of paragraphs, of either side, that hold the run.
    std::int32_t Holders(std::uint32_t run) const { return holders_[run]; }
    std::int64_t WeightOf(std::span<const std::uint32_t> runs) const;
    /// The weight of a run that was cut from another form of the same texts.
    std::int32_t Weight(const WordRun& run) const;

  private:
    struct SideText {
        std::vector<std::uint32_t> runs;
        std::vector<std::uint32_t> run_begin{0};
        std::vector<StretchWord> words;
        std::vector<std::uint32_t> word_begin{0};
        std::vector<std::uint32_t> numbers;
        std::vector<std::int64_t> weight_before{0};
    };
    class Builder;
    class RunTable;

    static Sequence Of(const SideText& side, std::int32_t begin, std::int32_t end);
    static std::uint32_t Of(const SideText& side, std::int32_t at) {
        return side.numbers[static_cast<std::size_t>(at)];
    }
    void AddWeights(SideText& side) const;

    PlaceRange range_;
    SideText first_;
    SideText second_;
    std::vector<std::int32_t> weights_;
    std::vector<std::int32_t> holders_;
    std::shared_ptr<const RunTable> table_;
    std::uint32_t number_count_ = 0;
    RunWatcher* watcher_ = nullptr;
};

}  // namespace zorvane
