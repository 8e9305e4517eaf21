#include "compare/engine/pairing/candidates.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "compare/engine/pairing/cheap_alignment.h"
#include "compare/engine/pairing/heaviest_chain.h"

namespace zorvane {
namespace {

constexpr std::int64_t kSearchedBetweenStops = 64;   // paragraphs between two looks for a stop
constexpr std::int64_t kRunsBetweenStops = 1 << 16;  // of one paragraph
// Bounds for speed: moved by 30 % on 277 real revisions, holders and part change no pair.
constexpr std::int32_t kMostHolders = 64;    // a run in more paragraphs leads nowhere
constexpr std::int32_t kMostVisits = 512;    // entries looked at for one paragraph
constexpr std::int64_t kGoodPart = 600;      // of the best partner's score, in thousandths
constexpr std::int64_t kEqualScore = 20;     // decides among pairs of next to no weight
constexpr std::int64_t kFollowScore = 150;   // decides among copies
constexpr std::size_t kMostEqualPairs = 64;  // of one text, before only its rank counts

// A pair as one number, which sorts by the first ascending and by the second falling.
class Place {
  public:
    Place(std::int32_t first, std::int32_t second)
        : key_(static_cast<std::uint64_t>(first) << 32U | ~static_cast<std::uint32_t>(second)) {}
    std::int32_t first() const { return static_cast<std::int32_t>(key_ >> 32U); }
    std::int32_t second() const {
        return static_cast<std::int32_t>(~static_cast<std::uint32_t>(key_));
    }
    friend auto operator<=>(const Place&, const Place&) = default;

  private:
    std::uint64_t key_;
};

using RunsOf = Sequence (StretchText::*)(std::int32_t, std::int32_t) const;

// For each rare run the paragraphs of one side that hold it.
class RunIndex {
  public:
    RunIndex(const StretchText& text, RunsOf side, std::int32_t count) : text_(text) {
        begin_.assign(static_cast<std::size_t>(text.RunCount()) + 1, 0);
        EachHolder(side, count, [this](std::uint32_t run, std::int32_t) { ++begin_[run + 1]; });
        for (std::size_t i = 1; i < begin_.size(); ++i)
            begin_[i] += begin_[i - 1];
        holders_.resize(begin_.back());
        std::vector<std::uint32_t> next(begin_.begin(), begin_.end() - 1);
        EachHolder(side, count, [&](std::uint32_t run, std::int32_t paragraph) {
            holders_[next[run]++] = paragraph;
        });
    }

    std::span<const std::int32_t> Holders(std::uint32_t run) const {
        return std::span(holders_).subspan(begin_[run], begin_[run + 1] - begin_[run]);
    }

  private:
    template <class Call>
    void EachHolder(RunsOf side, std::int32_t count, Call call) {
        std::vector<std::int32_t> last(static_cast<std::size_t>(text_.RunCount()), -1);
        for (std::int32_t paragraph = 0; paragraph < count; ++paragraph) {
            for (const std::uint32_t run : (text_.*side)(paragraph, paragraph + 1).runs) {
                if (text_.Holders(run) > kMostHolders || last[run] == paragraph)
                    continue;
                last[run] = paragraph;
                call(run, paragraph);
            }
        }
    }

    const StretchText& text_;
    std::vector<std::uint32_t> begin_;
    std::vector<std::int32_t> holders_;
};

// Collects the best partners of each paragraph of one side.
class PartnerFinder {
  public:
    PartnerFinder(const StretchText& text, RunsOf from, RunsOf to, std::int32_t from_count,
                  std::int32_t to_count)
        : text_(text),
          from_(from),
          from_count_(from_count),
          to_count_(to_count),
          index_(text, to, to_count),
          scores_(static_cast<std::size_t>(to_count), 0),
          last_(static_cast<std::size_t>(text.RunCount()), -1) {}

    template <class Call>
    void Run(std::int32_t most, Call call) {
        StopCheck stop(text_.Watcher(), kSearchedBetweenStops);
        for (std::int32_t paragraph = 0; paragraph < from_count_ && stop.KeepGoing(); ++paragraph) {
            Collect(paragraph, stop);
            Choose(paragraph, most, call);
        }
    }

  private:
    // Each run once; a long paragraph repeats most of its own, which a sort would have to carry.
    void CollectRuns(std::int32_t paragraph, StopCheck& stop) {
        runs_.clear();
        std::int64_t met = 0;
        for (const std::uint32_t run : (text_.*from_)(paragraph, paragraph + 1).runs) {
            if (++met % kRunsBetweenStops == 0 && !stop.KeepGoing(kSearchedBetweenStops))
                return;
            const std::int32_t holders = text_.Holders(run);
            if (holders > kMostHolders || last_[run] == paragraph)
                continue;
            last_[run] = paragraph;
            runs_.push_back(static_cast<std::uint64_t>(holders) << 32U | run);
        }
        std::sort(runs_.begin(), runs_.end());
    }

    void Collect(std::int32_t paragraph, StopCheck& stop) {
        CollectRuns(paragraph, stop);
        std::int32_t visits = 0;
        for (const std::uint64_t entry : runs_) {
            const auto run = static_cast<std::uint32_t>(entry);
            for (const std::int32_t partner : index_.Holders(run)) {
                if (scores_[static_cast<std::size_t>(partner)] == 0)
                    partners_.push_back(partner);
                scores_[static_cast<std::size_t>(partner)] += text_.Weight(run) + 1;
                ++visits;
            }
            if (visits > kMostVisits)
                return;
        }
    }

    // The best, of equals those nearest to where the paragraph would stand if all grew alike.
    template <class Call>
    void Choose(std::int32_t paragraph, std::int32_t most, Call call) {
        const std::int64_t expected =
            static_cast<std::int64_t>(paragraph) * to_count_ / std::max(from_count_, 1);
        const auto score = [this](std::int32_t partner) {
            return scores_[static_cast<std::size_t>(partner)];
        };
        const auto better = [&](std::int32_t left, std::int32_t right) {
            if (score(left) != score(right))
                return score(left) > score(right);
            const std::int64_t near = std::abs(left - expected);
            const std::int64_t far = std::abs(right - expected);
            return near != far ? near < far : left < right;
        };
        const auto count = std::min(partners_.size(), static_cast<std::size_t>(most));
        std::partial_sort(partners_.begin(), partners_.begin() + static_cast<std::ptrdiff_t>(count),
                          partners_.end(), better);
        for (std::size_t i = 0; i < count; ++i) {
            if (score(partners_[i]) * 1000 >= score(partners_[0]) * kGoodPart)
                call(paragraph, partners_[i]);
        }
        for (const std::int32_t partner : partners_)
            scores_[static_cast<std::size_t>(partner)] = 0;
        partners_.clear();
    }

    const StretchText& text_;
    RunsOf from_;
    std::int32_t from_count_;
    std::int32_t to_count_;
    RunIndex index_;
    std::vector<std::int64_t> scores_;
    std::vector<std::int32_t> last_;   // for each run, the paragraph that had it last
    std::vector<std::uint64_t> runs_;  // with their holders in front, so that rare ones sort first
    std::vector<std::int32_t> partners_;
};

using Standing = std::vector<std::int32_t>;

// Where one text stands on both sides: each place with each, of many copies the same ranks.
void AddCopies(const Standing& left, const Standing& right, std::vector<Place>& places) {
    if (left.size() * right.size() <= kMostEqualPairs) {
        for (const std::int32_t first : left) {
            for (const std::int32_t second : right)
                places.emplace_back(first, second);
        }
        return;
    }
    const std::size_t ranks = std::min(left.size(), right.size());
    for (std::size_t rank = 0; rank < ranks; ++rank) {
        places.emplace_back(left[rank], right[rank]);
        places.emplace_back(left[left.size() - 1 - rank], right[right.size() - 1 - rank]);
    }
}

void AddEqual(const StretchText& text, std::vector<Place>& places) {
    // Blank texts stand nowhere.
    std::vector<Standing> firsts(text.NumberCount());
    std::vector<Standing> seconds(text.NumberCount());
    for (std::int32_t i = 0; i < text.FirstCount(); ++i) {
        if (text.First(i, i + 1).weight > 0)
            firsts[text.FirstNumber(i)].push_back(i);
    }
    for (std::int32_t i = 0; i < text.SecondCount(); ++i) {
        if (text.Second(i, i + 1).weight > 0)
            seconds[text.SecondNumber(i)].push_back(i);
    }
    for (std::size_t number = 0; number < firsts.size(); ++number)
        AddCopies(firsts[number], seconds[number], places);
}

// Equal paragraphs as a shortest list of differences pairs them: where there are only copies.
void AddShortest(const StretchText& text, std::vector<Place>& places) {
    DifferenceSearch search;
    search.Watch(text.Watcher());
    search.Run(text.FirstNumbers(), text.SecondNumbers(), text.NumberCount());
    for (const AlignedPair& pair : MatchedPairs(search.Changed())) {
        if (text.First(pair.first, pair.first + 1).weight > 0)
            places.emplace_back(pair.first, pair.second);
    }
}

std::vector<Place> FindPlaces(const StretchText& text, std::int32_t most) {
    std::vector<Place> places;
    PartnerFinder(text, &StretchText::First, &StretchText::Second, text.FirstCount(),
                  text.SecondCount())
        .Run(most,
             [&](std::int32_t first, std::int32_t second) { places.emplace_back(first, second); });
    PartnerFinder(text, &StretchText::Second, &StretchText::First, text.SecondCount(),
                  text.FirstCount())
        .Run(most,
             [&](std::int32_t second, std::int32_t first) { places.emplace_back(first, second); });
    AddEqual(text, places);
    AddShortest(text, places);
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

}  // namespace

std::int64_t TotalScore(std::int64_t kept, std::int32_t likeness, bool equal) {
    return kept * (5000 + likeness) / 6000 + (equal ? kEqualScore : 0);
}

std::vector<Candidate> FindCandidates(const StretchText& text, PairScorer& scorer,
                                      const CandidateSwitches& switches) {
    std::vector<Candidate> candidates;
    StopCheck stop(text.Watcher(), kSearchedBetweenStops);
    for (const Place& place : FindPlaces(text, switches.most)) {
        if (!stop.KeepGoing())
            break;
        Candidate candidate{place.first(), place.second(),
                            text.Equal(place.first(), place.second())};
        PairScore score;
        if (candidate.equal)
            score = {text.First(candidate.first, candidate.first + 1).weight, 1000};
        else
            score = scorer.Score(candidate.first, candidate.second);
        if (score.likeness < kLeastLikeness)
            continue;
        candidate.kept = score.kept;
        candidate.score = TotalScore(score.kept, score.likeness, candidate.equal);
        candidates.push_back(candidate);
    }
    return candidates;
}

std::vector<Candidate> BestChain(const std::vector<Candidate>& candidates,
                                 std::int32_t second_count) {
    PrefixMaxima maxima(second_count);
    std::vector<std::int64_t> totals(candidates.size(), 0);
    std::vector<std::int32_t> previous(candidates.size(), -1);
    std::size_t row = 0;        // where the candidates of this first number begin
    std::size_t row_above = 0;  // and those of the number in front
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const Candidate& own = candidates[i];
        if (own.first != candidates[row].first) {
            row_above = row;
            row = i;
        }
        const PrefixMaxima::Best before = maxima.Below(own.second);
        totals[i] = before.score + own.score;
        previous[i] = before.index;
        for (std::size_t k = row_above; k < row && candidates[k].second >= own.second - 1; ++k) {
            const bool follows =
                candidates[k].first == own.first - 1 && candidates[k].second == own.second - 1;
            if (follows && totals[k] + own.score + kFollowScore > totals[i]) {
                totals[i] = totals[k] + own.score + kFollowScore;
                previous[i] = static_cast<std::int32_t>(k);
            }
        }
        maxima.Raise(own.second, {totals[i], static_cast<std::int32_t>(i)});
    }
    std::vector<Candidate> chain;
    for (std::int32_t at = maxima.Below(second_count).index; at >= 0;
         at = previous[static_cast<std::size_t>(at)])
        chain.push_back(candidates[static_cast<std::size_t>(at)]);
    std::reverse(chain.begin(), chain.end());
    return chain;
}

}  // namespace zorvane
