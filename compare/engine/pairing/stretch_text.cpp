#include "compare/engine/pairing/stretch_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "compare/engine/line_table.h"

namespace zorvane {
namespace {

constexpr std::int32_t kFewestParagraphs = 16;  // so that in a short stretch nothing is common

}  // namespace

// Runs by their hash. 64 bits: a collision would only make a run weigh a little less.
class StretchText::RunTable {
  public:
    explicit RunTable(std::size_t expected) {
        std::size_t size = 64;
        while (size < expected)
            size *= 2;
        slots_.resize(size);
    }

    struct Entry {
        std::uint64_t hash;
        std::int32_t factor;
        std::int32_t firsts;
        std::int32_t seconds;
        std::int32_t last_holder;
    };

    std::uint32_t IdOf(const WordRun& run) {
        std::size_t at = run.hash & (slots_.size() - 1);
        while (slots_[at] != 0) {
            if (entries_[slots_[at] - 1].hash == run.hash)
                return slots_[at] - 1;
            at = (at + 1) & (slots_.size() - 1);
        }
        entries_.push_back({run.hash, run.factor, 0, 0, -1});
        slots_[at] = static_cast<std::uint32_t>(entries_.size());
        if (entries_.size() * 2 > slots_.size())
            Grow();
        return static_cast<std::uint32_t>(entries_.size() - 1);
    }
    std::vector<Entry>& Entries() { return entries_; }
    /// Nothing where it never was.
    std::optional<std::uint32_t> Find(std::uint64_t hash) const {
        std::size_t at = hash & (slots_.size() - 1);
        while (slots_[at] != 0) {
            if (entries_[slots_[at] - 1].hash == hash)
                return slots_[at] - 1;
            at = (at + 1) & (slots_.size() - 1);
        }
        return std::nullopt;
    }

  private:
    void Grow() {
        slots_.assign(slots_.size() * 2, 0);
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            std::size_t at = entries_[i].hash & (slots_.size() - 1);
            while (slots_[at] != 0)
                at = (at + 1) & (slots_.size() - 1);
            slots_[at] = static_cast<std::uint32_t>(i + 1);
        }
    }

    std::vector<std::uint32_t> slots_;
    std::vector<Entry> entries_;
};

namespace {

// What a run weighs by how many paragraphs hold it: full when one does, next to nothing when all
// do.
class Rarities {
  public:
    explicit Rarities(std::int32_t paragraphs)
        : paragraphs_(paragraphs), all_(std::log2(1.0 + paragraphs)) {
        for (std::size_t holders = 1; holders < few_.size(); ++holders)
            few_[holders] = Of(static_cast<std::int32_t>(holders));
    }
    std::int32_t WeightOf(std::int32_t factor, std::int32_t holders) const {
        const auto index = static_cast<std::size_t>(holders);
        const double rarity = index < few_.size() ? few_[index] : Of(holders);
        return static_cast<std::int32_t>(std::lround(factor * rarity));
    }

  private:
    double Of(std::int32_t holders) const {
        return std::log2(1.0 + static_cast<double>(paragraphs_) / holders) / all_;
    }

    std::int32_t paragraphs_;
    double all_;
    std::array<double, 17> few_{};
};

// Hashes the words of a text one by one, in the order in which `CutIntoRuns` ends them.
class WordHashes {
  public:
    explicit WordHashes(std::u16string_view text) : text_(text) {}
    std::uint32_t Next() {
        while (at_ < text_.size() && PartsWords(text_[at_]))
            ++at_;
        std::uint64_t hash = 0;
        for (; at_ < text_.size() && !PartsWords(text_[at_]); ++at_)
            hash = (hash ^ text_[at_]) * 0x9E3779B97F4A7C15U + (hash >> 31U);
        return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
    }

  private:
    std::u16string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

class StretchText::Builder {
  public:
    Builder(std::size_t paragraphs, RunWatcher* watcher)
        : table_(std::make_shared<RunTable>(paragraphs * 8)), runs_(*table_), stop_(watcher) {
        lines_.Clear(paragraphs);
    }

    void Reserve(SideText& side, std::size_t count) {
        side.numbers.reserve(count);
        side.run_begin.reserve(count + 1);
        side.word_begin.reserve(count + 1);
    }

    void Add(SideText& side, const CompareSide& from, std::int32_t place, bool is_first) {
        side.numbers.push_back(lines_.NumberOf(from.Key(place)));
        const std::u16string_view text = from.KeyText(place, buffer_);
        cut_.clear();
        if (stop_.KeepGoing(static_cast<std::int64_t>(text.size())))
            CutIntoRuns(text, cut_, &stop_);
        AddRuns(side, text, is_first);
        ++holder_;
    }

    void Finish(StretchText& text) {
        const std::int32_t paragraphs =
            std::max({text.FirstCount(), text.SecondCount(), kFewestParagraphs});
        text.number_count_ = lines_.Count();
        text.weights_.reserve(runs_.Entries().size());
        text.holders_.reserve(runs_.Entries().size());
        const Rarities rarities(paragraphs);
        for (const RunTable::Entry& entry : runs_.Entries()) {
            const std::int32_t holders = std::max(entry.firsts, entry.seconds);
            text.holders_.push_back(holders);
            text.weights_.push_back(rarities.WeightOf(entry.factor, holders));
        }
        text.table_ = table_;
        text.AddWeights(text.first_);
        text.AddWeights(text.second_);
    }

  private:
    void AddRuns(SideText& side, std::u16string_view text, bool is_first) {
        WordHashes hashes(text);
        for (const WordRun& run : cut_) {
            if (!stop_.KeepGoing())
                break;
            const std::uint32_t id = runs_.IdOf(run);
            RunTable::Entry& entry = runs_.Entries()[id];
            if (entry.last_holder != holder_) {
                entry.last_holder = holder_;
                ++(is_first ? entry.firsts : entry.seconds);
            }
            side.runs.push_back(id);
            if (run.ends_word)
                side.words.push_back({hashes.Next(), static_cast<std::uint32_t>(side.runs.size())});
        }
        side.run_begin.push_back(static_cast<std::uint32_t>(side.runs.size()));
        side.word_begin.push_back(static_cast<std::uint32_t>(side.words.size()));
    }

    LineTable lines_;
    std::shared_ptr<RunTable> table_;
    RunTable& runs_;
    std::int32_t holder_ = 0;
    std::u16string buffer_;
    std::vector<WordRun> cut_;
    StopCheck stop_;
};

StretchText::StretchText(const CompareSide& first, const CompareSide& second,
                         const PlaceRange& range)
    : range_(range), watcher_(first.Watcher()) {
    Builder builder(static_cast<std::size_t>(range.FirstCount() + range.SecondCount()),
                    first.Watcher());
    builder.Reserve(first_, static_cast<std::size_t>(range.FirstCount()));
    builder.Reserve(second_, static_cast<std::size_t>(range.SecondCount()));
    for (std::int32_t place = range.first_begin; place < range.first_end; ++place)
        builder.Add(first_, first, place, true);
    for (std::int32_t place = range.second_begin; place < range.second_end; ++place)
        builder.Add(second_, second, place, false);
    builder.Finish(*this);
}

StretchText::StretchText(const CompareSide& first, const CompareSide& second,
                         std::span<const std::int32_t> first_places,
                         std::span<const std::int32_t> second_places)
    : watcher_(first.Watcher()) {
    Builder builder(first_places.size() + second_places.size(), first.Watcher());
    builder.Reserve(first_, first_places.size());
    builder.Reserve(second_, second_places.size());
    for (const std::int32_t place : first_places)
        builder.Add(first_, first, place, true);
    for (const std::int32_t place : second_places)
        builder.Add(second_, second, place, false);
    builder.Finish(*this);
}

std::int32_t StretchText::Weight(const WordRun& run) const {
    const std::optional<std::uint32_t> id = table_->Find(run.hash);
    return id ? Weight(*id) : run.factor;
}

void StretchText::AddWeights(SideText& side) const {
    std::int64_t weight = 0;
    side.weight_before.reserve(side.run_begin.size());
    for (std::size_t place = 0; place + 1 < side.run_begin.size(); ++place) {
        for (std::uint32_t at = side.run_begin[place]; at < side.run_begin[place + 1]; ++at)
            weight += weights_[side.runs[at]];
        side.weight_before.push_back(weight);
    }
}

Sequence StretchText::Of(const SideText& side, std::int32_t begin, std::int32_t end) {
    const auto from = static_cast<std::size_t>(begin);
    const auto to = static_cast<std::size_t>(end);
    Sequence sequence;
    sequence.first_run = side.run_begin[from];
    sequence.runs = std::span(side.runs).subspan(side.run_begin[from],
                                                 side.run_begin[to] - side.run_begin[from]);
    sequence.words =
        std::span(side.words)
            .subspan(side.word_begin[from], side.word_begin[to] - side.word_begin[from]);
    sequence.weight = side.weight_before[to] - side.weight_before[from];
    return sequence;
}

std::int64_t StretchText::WeightOf(std::span<const std::uint32_t> runs) const {
    std::int64_t weight = 0;
    for (const std::uint32_t run : runs)
        weight += Weight(run);
    return weight;
}

}  // namespace zorvane
